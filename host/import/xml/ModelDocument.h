#pragma once

#include "host/store/image/Model.h"

#include <string>

namespace vex {

/// The document of a model, in one form: what can be an attribute is one, in the order of the
/// properties, the others are elements. Reading it gives the model again, with every id, text,
/// locale and order; of a document that the model was read from only the positions, comments,
/// and what does not count (white space around texts, spellings of locales) are not there.
/// UTF-8. Raises `std::bad_alloc`.
std::string modelDocumentOf(Model const& model);

} // namespace vex

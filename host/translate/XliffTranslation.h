#pragma once

#include "host/translate/TranslationFile.h"

namespace vex {

/// Writes XLIFF 2.0: a group for each object, a unit for each of its texts.
std::string writeXliff(TranslationFile const& file);

/// Reads XLIFF 2: units in groups that bear the id of an object. Texts of a model are plain:
/// inline elements are refused. Raises `KRLDocumentException`.
TranslationFile readXliff(std::string_view text, std::string const& name);

} // namespace vex

#pragma once

#include "host/import/draft/ImportDraft.h"

#include <string>

namespace vex {

/// The document of a settled draft: one form for one draft, to the byte. What is said for all
/// languages are attributes as far as a document allows, elements otherwise.
std::string modelDocumentOf(ImportDraft const& draft);

/// The catalogue that publishes it as "/content/NAME" from the file "NAME.model.xml".
std::string catalogueDocumentOf(ImportDraft const& draft, std::string const& name);

} // namespace vex

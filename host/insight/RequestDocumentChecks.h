#pragma once

#include "host/import/xml/DocumentOutline.h"
#include "host/store/build/Diagnostic.h"

#include <string>

namespace vex {

/// A warning for each element, attribute and text of a request document that nothing
/// reads, with the nearest word that is read; and for a value of an option that is read
/// as another. `file` stands for the document. The findings have no rule.
Diagnostics checkRequestDocument(DocumentOutline const& outline, std::string const& file);

} // namespace vex

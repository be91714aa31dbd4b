#pragma once

#include <string_view>

namespace vex {

class ImportWork;

/// Reads a tabular model, the JSON of a `.bim` file, into a draft: tables as query subjects,
/// columns and measures as query items, cultures as languages, roles as views.
void importTabular(ImportWork& work);

/// The same for JSON in memory.
void importTabularText(std::string_view json, ImportWork& work);

} // namespace vex

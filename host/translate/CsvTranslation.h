#pragma once

#include "host/translate/TranslationFile.h"

namespace vex {

/// Writes CSV of RFC 4180: a header, and a row for each text. What a spreadsheet would take
/// for a formula has a "'" before it.
std::string writeCsv(TranslationFile const& file);

/// Reads it again; columns are known by their heads, in any order, and "," ";" or a tab may
/// stand between them. Raises `KRLDocumentException`.
TranslationFile readCsv(std::string_view text, std::string const& name);

} // namespace vex

#pragma once

#include <string>
#include <vector>

namespace vex {

class ImportAccount;

/// What an import read, mapped and left out, as JSON in indented lines.
struct ImportReport {
    std::string kind;
    std::string source;
    std::vector<std::string> written; // files
};
std::string toJson(ImportReport const& report, ImportAccount const& account);

} // namespace vex

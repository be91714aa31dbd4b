#pragma once

#include "host/protocol/JsonStream.h"

#include <ostream>
#include <string>
#include <string_view>

namespace vex {

/// A path as a URI reference.
std::string toUri(std::string_view path);

/// Where something stands in a file; without a line, the file.
Json sarifPlace(std::string_view file, unsigned long line, unsigned long column);

/// An indented log of one run of this program, with its rules; takes the results one by one.
class SarifLog {
public:
    SarifLog(std::ostream& out, Json const& rules, std::string_view version);

    void add(Json const& result) { m_json.entry(result); }
    /// Comes last.
    void finish();

private:
    JsonStream m_json;
};

} // namespace vex

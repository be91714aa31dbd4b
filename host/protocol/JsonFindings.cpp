#include "host/protocol/JsonFindings.h"

#include "host/insight/FileFindings.h"
#include "host/protocol/JsonStream.h"

#include <nlohmann/json.hpp>

namespace vex {

void writeJson(std::ostream& out, Diagnostics const& found) {
    FindingCounts const counts = countFindings(found);
    JsonStream json(out);
    json.beginObject();
    json.member("errors", counts.errors);
    json.member("warnings", counts.warnings);
    json.member("notes", counts.notes);
    json.beginList("findings");
    for (Diagnostic const& each : found) {
        json.entry({{"severity", toString(each.severity)},
                    {"rule", each.rule},
                    {"file", each.file},
                    {"line", each.line},
                    {"column", each.column},
                    {"text", each.text}});
    }
    json.end();
    json.end();
}

} // namespace vex

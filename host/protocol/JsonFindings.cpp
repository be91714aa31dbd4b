#include "host/protocol/JsonFindings.h"

#include "host/insight/FileFindings.h"
#include "host/protocol/JsonListText.h"

#include <nlohmann/json.hpp>

namespace vex {

std::string toJson(Diagnostics const& found) {
    FindingCounts const counts = countFindings(found);
    JsonListText text(Json{{"errors", counts.errors},
                           {"warnings", counts.warnings},
                           {"notes", counts.notes},
                           {"findings", Json::array()}},
                      "findings", 1);
    for (Diagnostic const& each : found) {
        text.add({{"severity", toString(each.severity)},
                  {"rule", each.rule},
                  {"file", each.file},
                  {"line", each.line},
                  {"column", each.column},
                  {"text", each.text}});
    }
    return std::move(text).finish();
}

} // namespace vex

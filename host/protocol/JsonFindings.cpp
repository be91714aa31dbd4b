#include "host/protocol/JsonFindings.h"

#include "host/insight/FileFindings.h"
#include "host/protocol/JsonText.h"

#include <nlohmann/json.hpp>

namespace vex {

std::string toJson(Diagnostics const& found) {
    FindingCounts const counts = countFindings(found);
    Json findings = Json::array();
    for (Diagnostic const& each : found) {
        findings.push_back({{"severity", toString(each.severity)},
                            {"rule", each.rule},
                            {"file", each.file},
                            {"line", each.line},
                            {"column", each.column},
                            {"text", each.text}});
    }
    return toText(Json{{"errors", counts.errors},
                       {"warnings", counts.warnings},
                       {"notes", counts.notes},
                       {"findings", std::move(findings)}},
                  JsonForm::Indented);
}

} // namespace vex

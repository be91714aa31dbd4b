#include "host/insight/DiagnosticRules.h"
#include "host/protocol/JsonFindings.h"
#include "host/protocol/SarifLog.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

Json resultOf(Diagnostic const& each) {
    auto const* const rule =
        std::find_if(std::begin(diagnosticRules), std::end(diagnosticRules),
                     [&](DiagnosticRule const& row) { return row.name == each.rule; });
    return {{"ruleId", each.rule},
            {"ruleIndex", rule - std::begin(diagnosticRules)},
            {"level", toString(each.severity)},
            {"message", {{"text", each.text}}},
            {"locations",
             Json::array({{{"physicalLocation", sarifPlace(each.file, each.line, each.column)}}})}};
}

Json rules() {
    Json list = Json::array();
    for (DiagnosticRule const& rule : diagnosticRules) {
        list.push_back({{"id", std::string(rule.name)},
                        {"shortDescription", {{"text", std::string(rule.text)}}},
                        {"defaultConfiguration", {{"level", toString(rule.severity)}}}});
    }
    return list;
}

} // namespace

void writeSarif(std::ostream& out, Diagnostics const& found, std::string_view version) {
    SarifLog log(out, rules(), version);
    for (Diagnostic const& each : found) {
        log.add(resultOf(each));
    }
    log.finish();
}

} // namespace vex

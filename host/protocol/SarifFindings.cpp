#include "host/insight/DiagnosticRules.h"
#include "host/protocol/JsonFindings.h"
#include "host/protocol/JsonText.h"

#include <algorithm>
#include <cctype>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

/// A path as a URI reference.
std::string toUri(std::string_view path) {
    constexpr char const* digits = "0123456789ABCDEF";
    constexpr std::string_view unescaped = "-._~/";
    std::string uri;
    for (char const character : path) {
        auto const byte = static_cast<unsigned char>(character);
        bool const isPlain = byte < 0x80 && (std::isalnum(byte) != 0 ||
                                             unescaped.find(character) != std::string_view::npos);
        if (isPlain) {
            uri += character;
        } else {
            uri += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
        }
    }
    return uri;
}

Json resultOf(Diagnostic const& each) {
    auto const* const rule =
        std::find_if(std::begin(diagnosticRules), std::end(diagnosticRules),
                     [&](DiagnosticRule const& row) { return row.name == each.rule; });
    Json place{{"artifactLocation", {{"uri", toUri(each.file)}}}};
    if (each.line != 0) {
        place["region"]["startLine"] = each.line;
    }
    if (each.line != 0 && each.column != 0) {
        place["region"]["startColumn"] = each.column;
    }
    return {{"ruleId", each.rule},
            {"ruleIndex", rule - std::begin(diagnosticRules)},
            {"level", toString(each.severity)},
            {"message", {{"text", each.text}}},
            {"locations", Json::array({{{"physicalLocation", place}}})}};
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

std::string toSarif(Diagnostics const& found, std::string_view version) {
    Json results = Json::array();
    for (Diagnostic const& each : found) {
        results.push_back(resultOf(each));
    }
    Json const driver{{"name", "vexma"}, {"version", std::string(version)}, {"rules", rules()}};
    Json const run{{"tool", {{"driver", driver}}},
                   {"columnKind", "utf16CodeUnits"},
                   {"results", std::move(results)}};
    return toText(Json{{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                       {"version", "2.1.0"},
                       {"runs", Json::array({run})}},
                  JsonForm::Indented);
}

} // namespace vex

#include "apps/vexma/FindingsReport.h"

#include "host/insight/DiagnosticRules.h"

#include <algorithm>
#include <cctype>
#include <iomanip>
#include <map>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t shownOfARule = 10;

/// Texts come from documents; what is no UTF-8 in them is replaced.
void print(Json const& value, Console& console) {
    constexpr int indent = 2;
    console.out() << value.dump(indent, ' ', false, Json::error_handler_t::replace) << '\n';
}

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

Json sarifResult(Diagnostic const& each) {
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

} // namespace

FindingCounts countFindings(Diagnostics const& found) {
    FindingCounts counts;
    for (Diagnostic const& each : found) {
        (each.severity == Severity::Error     ? counts.errors
         : each.severity == Severity::Warning ? counts.warnings
                                              : counts.notes)++;
    }
    return counts;
}

void reportAsText(Diagnostics const& found, bool all, Console& console) {
    std::map<std::string, std::size_t> counts; // in the file at hand, by rule
    for (std::size_t index = 0; index < found.size(); ++index) {
        Diagnostic const& each = found[index];
        bool const isShown =
            all || (each.severity != Severity::Note && ++counts[each.rule] <= shownOfARule);
        if (isShown) {
            console.out() << printable(toString(each), false) << " [" << each.rule << "]\n";
        }
        if (index + 1 < found.size() && found[index + 1].file == each.file) {
            continue;
        }
        for (auto const& [rule, count] : counts) {
            if (count > shownOfARule) {
                console.out() << printable(each.file, false) << ": " << count - shownOfARule
                              << " more [" << rule << "]; --all shows them\n";
            }
        }
        counts.clear();
    }
}

void reportAsJson(Diagnostics const& found, Console& console) {
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
    print({{"errors", counts.errors},
           {"warnings", counts.warnings},
           {"notes", counts.notes},
           {"findings", findings}},
          console);
}

void reportAsSarif(Diagnostics const& found, Console& console) {
    Json rules = Json::array();
    for (DiagnosticRule const& rule : diagnosticRules) {
        rules.push_back({{"id", std::string(rule.name)},
                         {"shortDescription", {{"text", std::string(rule.text)}}},
                         {"defaultConfiguration", {{"level", toString(rule.severity)}}}});
    }
    Json results = Json::array();
    for (Diagnostic const& each : found) {
        results.push_back(sarifResult(each));
    }
    Json const driver{{"name", "vexma"}, {"version", VEX_VERSION}, {"rules", rules}};
    Json const run{
        {"tool", {{"driver", driver}}}, {"columnKind", "utf16CodeUnits"}, {"results", results}};
    print({{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
           {"version", "2.1.0"},
           {"runs", Json::array({run})}},
          console);
}

void reportRules(Console& console) {
    constexpr int nameWidth = 28;
    constexpr int severityWidth = 8;
    for (DiagnosticRule const& rule : diagnosticRules) {
        console.out() << std::left << std::setw(nameWidth) << rule.name << ' '
                      << std::setw(severityWidth) << toString(rule.severity) << ' ' << rule.text
                      << '\n';
    }
}

} // namespace vex

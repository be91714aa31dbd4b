#include "host/insight/DiagnosticRules.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include <gmock/gmock.h>

namespace {

std::string textOf(std::filesystem::path const& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What the sources give as the rule of a finding.
std::set<std::string> rulesInSources() {
    std::regex const call(
        R"re((?:report|stop|refuse|finding|[^.\w]add|indings\.add)\(\s*"([a-z-]+)")re"
        R"re(|Severity::Error, "([a-z-]+)")re");
    std::set<std::string> rules;
    for (char const* const folder : {"/host", "/apps"}) {
        for (auto const& entry :
             std::filesystem::recursive_directory_iterator(VEX_SOURCE_DIR + std::string(folder))) {
            if (entry.path().extension() != ".cpp") {
                continue;
            }
            std::string const text = textOf(entry.path());
            for (std::sregex_iterator at(text.begin(), text.end(), call), end; at != end; ++at) {
                rules.insert((*at)[1].matched ? (*at)[1] : (*at)[2]);
            }
        }
    }
    return rules;
}

std::set<std::string> rulesInTable() {
    std::set<std::string> rules;
    for (vex::DiagnosticRule const& rule : vex::diagnosticRules) {
        rules.insert(std::string(rule.name));
    }
    return rules;
}

TEST(DiagnosticRules, AreThoseThatTheSourcesName) {
    EXPECT_EQ(rulesInSources(), rulesInTable());
}

TEST(DiagnosticRules, StandInTheTableOnce) {
    EXPECT_EQ(rulesInTable().size(), std::size(vex::diagnosticRules));
}

TEST(DiagnosticRules, AreTheRowsOfTheirPage) {
    std::vector<std::string> expected;
    for (vex::DiagnosticRule const& rule : vex::diagnosticRules) {
        expected.push_back("| `" + std::string(rule.name) + "` | " + toString(rule.severity) +
                           " | " + std::string(rule.text) + " |");
    }
    std::ifstream page(VEX_SOURCE_DIR "/docs/validate.md");
    std::vector<std::string> rows;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("| `") && !line.starts_with("| `--")) {
            rows.push_back(line);
        }
    }
    EXPECT_EQ(rows, expected);
}

} // namespace

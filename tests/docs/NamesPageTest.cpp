// docs/names.md against the platform's words and the plug-in's sources.

#include "model/VexClassNames.h"
#include "resources.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string readText(std::filesystem::path const& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

std::set<std::string> allMatches(std::string const& text, std::regex const& pattern) {
    std::set<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at) {
        found.insert((*at)[1]);
    }
    return found;
}

std::string const& namesPage() {
    static std::string const text = readText(VEX_SOURCE_DIR "/docs/names.md");
    return text;
}

std::set<std::string> inBackticks(std::string const& text) {
    return allMatches(text, std::regex("`([^`]+)`"));
}

/// The words that the platform has a number for; those of one sign separate lists.
std::set<std::string> platformWords() {
    constexpr long pastLastWord = 1'000;
    std::set<std::string> words;
    for (long id = 0; id < pastLastWord; ++id) {
        std::string const word = resources::getString(id).toUtf8();
        if (word.size() > 1) {
            words.insert(word);
        }
    }
    return words;
}

/// Names that stand in quotes in the plug-in's sources, the failures' records aside.
std::set<std::string> namesInSources() {
    std::regex const inQuotes("\"(/content/|[A-Za-z]+)\"");
    std::set<std::string> names;
    for (char const* const folder : {"model", "security", "provider"}) {
        for (auto const& file : std::filesystem::recursive_directory_iterator(
                 std::filesystem::path(VEX_SOURCE_DIR) / folder)) {
            std::string const name = file.path().filename();
            if (name == "VexFailure.cpp" || name == "VexConstants.h" || !file.is_regular_file()) {
                continue;
            }
            std::istringstream lines(readText(file.path()));
            for (std::string line; std::getline(lines, line);) {
                if (line.find("//") == std::string::npos &&
                    line.find("#include") == std::string::npos) {
                    names.merge(allMatches(line, inQuotes));
                }
            }
        }
    }
    return names;
}

} // namespace

TEST(NamesPage, ShowsEveryWordOfThePlatform) {
    std::set<std::string> const shown = inBackticks(namesPage());
    for (std::string const& word : platformWords()) {
        EXPECT_TRUE(shown.contains(word)) << word;
    }
}

TEST(NamesPage, ShowsEveryNameInThePluginThatTheRequestAndItsAnswerLack) {
    std::set<std::string> shown = inBackticks(namesPage());
    std::string const documents =
        readText(VEX_SOURCE_DIR "/docs/request.md") + readText(VEX_SOURCE_DIR "/docs/response.md");
    std::set<std::string> const names = namesInSources();
    EXPECT_TRUE(names.contains("refobj"));
    EXPECT_TRUE(names.contains(VexClass::Set));
    for (std::string const& name : names) {
        EXPECT_TRUE(shown.contains(name) || documents.find(name) != std::string::npos) << name;
    }
}

TEST(NamesPage, ShowsNoNameInItsTablesThatNobodyReads) {
    std::set<std::string> known = platformWords();
    known.merge(namesInSources());
    std::set<std::string> const rows = allMatches(namesPage(), std::regex("\n\\| `([^`]+)` \\|"));
    EXPECT_GT(rows.size(), platformWords().size() - 2);
    for (std::string const& name : rows) {
        EXPECT_TRUE(known.contains(name)) << name;
    }
}

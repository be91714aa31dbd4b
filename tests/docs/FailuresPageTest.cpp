#include "VexMessageTexts.h"
#include "model/VexFailure.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// The rows of the page's tables that begin with a failure's number.
std::vector<std::string> numberedRows() {
    std::ifstream page(VEX_SOURCE_DIR "/docs/failures.md");
    std::vector<std::string> rows;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("| 1")) {
            rows.push_back(line);
        }
    }
    return rows;
}

std::size_t countStarting(std::vector<std::string> const& rows, std::string const& start) {
    return static_cast<std::size_t>(std::count_if(
        rows.begin(), rows.end(), [&](std::string const& row) { return row.starts_with(start); }));
}

constexpr std::size_t failureCount = static_cast<std::size_t>(VexFailure::AccessWithoutRoles) + 1;

std::string rowStart(VexFailureRecord const& record) {
    std::string const line = record.line == 0 ? "-" : std::to_string(record.line);
    return "| " + std::to_string(record.id) + " | " + record.source + " | " + line + " | `" +
           record.function + "` |";
}

} // namespace

TEST(FailuresPage, ShowsTheTextsOfEveryNumberOnce) {
    std::vector<std::string> const rows = numberedRows();
    std::size_t count = 0;
    VexMessageText const* const texts = VexMessageTexts(count);
    for (std::size_t index = 0; index < count; ++index) {
        for (char const* const text : {texts[index].text, texts[index].plainText}) {
            if (text != nullptr) {
                std::string const row =
                    "| " + std::to_string(texts[index].id) + " | " + text + " |";
                EXPECT_EQ(std::count(rows.begin(), rows.end(), row), 1) << row;
            }
        }
    }
}

TEST(FailuresPage, ShowsWhereEveryFailureComesFrom) {
    std::vector<std::string> const rows = numberedRows();
    for (std::size_t number = 0; number < failureCount; ++number) {
        std::string const start = rowStart(FindFailure(static_cast<VexFailure>(number)));
        std::size_t same = 0; // failures that hosts cannot tell apart
        for (std::size_t other = 0; other < failureCount; ++other) {
            same += rowStart(FindFailure(static_cast<VexFailure>(other))) == start ? 1U : 0U;
        }
        EXPECT_EQ(countStarting(rows, start), same) << start;
    }
}

TEST(FailuresPage, ShowsNoOtherFailure) {
    std::size_t count = 0;
    VexMessageText const* const texts = VexMessageTexts(count);
    auto const plain = static_cast<std::size_t>(std::count_if(
        texts, texts + count, [](VexMessageText const& row) { return row.plainText != nullptr; }));
    EXPECT_EQ(numberedRows().size(), count + plain + failureCount);
}

#include "host/catalogue/RowIndex.h"

#include <set>

#include <gtest/gtest.h>

namespace {

using vex::NotFound;

struct Row {
    I18NString key;
    int value;
};
using Index = vex::RowIndex<Row, &Row::key>;

/// The values of all rows that have the key.
std::set<int> valuesOf(Index const& index, std::vector<Row> const& rows, char const* key) {
    std::set<int> values;
    for (std::uint32_t place = index.findFirst(rows, key); place != NotFound;
         place = index.findNext(place)) {
        EXPECT_TRUE(values.insert(rows[place].value).second);
    }
    return values;
}

TEST(RowIndex, FindsEachRowOfAKeyOnceAndTheFirstOneFirst) {
    std::vector<Row> const rows{{"a", 1}, {"b", 2}, {"a", 3}, {"a", 4}, {"", 5}};
    Index const index;
    EXPECT_EQ(valuesOf(index, rows, "a"), (std::set<int>{1, 3, 4}));
    EXPECT_EQ(valuesOf(index, rows, "b"), (std::set<int>{2}));
    EXPECT_EQ(valuesOf(index, rows, ""), (std::set<int>{5}));
    EXPECT_EQ(valuesOf(index, rows, "A"), (std::set<int>{}));
    EXPECT_EQ(index.findFirst(rows, "a"), 0U);
}

TEST(RowIndex, FindsNothingWhereThereAreNoRows) {
    EXPECT_EQ(Index().findFirst({}, "a"), NotFound);
}

TEST(RowIndex, FindsRowsThatWereAddedSinceItWasAsked) {
    std::vector<Row> rows{{"a", 1}};
    Index const index;
    EXPECT_EQ(index.findFirst(rows, "b"), NotFound);
    rows.push_back({"b", 2});
    EXPECT_EQ(index.findFirst(rows, "b"), 1U);
}

TEST(RowIndex, IsWorkedOutAnewForACopy) {
    std::vector<Row> const rows{{"a", 1}, {"b", 2}};
    std::vector<Row> const others{{"c", 3}, {"a", 4}};
    Index index;
    EXPECT_EQ(index.findFirst(rows, "a"), 0U);
    Index copy(index);
    EXPECT_EQ(copy.findFirst(others, "a"), 1U);
    copy = index;
    EXPECT_EQ(copy.findFirst(rows, "b"), 1U);
}

} // namespace

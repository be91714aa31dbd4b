#include "resources.h"

#include <climits>
#include <map>

#include <gtest/gtest.h>

namespace {

std::map<long, std::string> const words{
    {16, ","},          {46, " "},
    {55, "Collection"}, {119, "calculation"},
    {126, "path:"},     {128, "roleId"},
    {182, "hidden"},    {194, "filter"},
    {197, "folder"},    {201, "function"},
    {209, "excluded"},  {227, "included"},
    {228, "kind"},      {236, "roleBased"},
    {278, "name"},      {279, "namespace"},
    {325, "package"},   {327, "querySubject"},
    {328, "queryItem"}, {329, "queryItemFolder"},
    {330, "item"},      {350, "member"},
    {356, "shortcut"},  {360, "securityView"},
};

TEST(Resources, HoldTheWordsOfTheSystemAndNoOther) {
    for (long id = -1'000; id <= 1'000; ++id) {
        auto const found = words.find(id);
        EXPECT_EQ(resources::getString(id).toUtf8(), found == words.end() ? "" : found->second)
            << id;
    }
}

TEST(Resources, AreEmptyForNumbersFarOutside) {
    EXPECT_TRUE(resources::getString(LONG_MIN).empty());
    EXPECT_TRUE(resources::getString(LONG_MAX).empty());
}

TEST(Resources, AreTheSameTextAtEachUse) {
    EXPECT_EQ(&resources::getString(278), &resources::getString(278));
}

} // namespace

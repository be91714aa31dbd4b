#include "Vex_Handle_Collection.h"

#include <unordered_set>

#include <gtest/gtest.h>

namespace {

TEST(VexHandle, IsAValueWithZeroNamingNothing) {
    EXPECT_FALSE(VEX_HANDLE().IsNotNull());
    EXPECT_FALSE(ConvertFromInt(0).IsNotNull());
    EXPECT_TRUE(ConvertFromInt(0) == VEX_HANDLE());
    EXPECT_TRUE(VEX_HANDLE() == 0);
    VEX_HANDLE const handle(4'097);
    EXPECT_TRUE(handle.IsNotNull());
    EXPECT_TRUE(handle != 0);
    EXPECT_EQ(Convert2Int(handle), 4'097);
    EXPECT_TRUE(ConvertFromInt(Convert2Int(handle)) == handle);
    EXPECT_TRUE(handle != VEX_HANDLE(4'098));
    std::unordered_set<VEX_HANDLE> const set{handle, VEX_HANDLE(4'097)};
    EXPECT_EQ(set.size(), 1U);
}

TEST(VexHandle, SurvivesTheTripThroughANegativeInt) {
    VEX_HANDLE const high(0xFFFF'FFFFU);
    EXPECT_EQ(Convert2Int(high), -1);
    EXPECT_TRUE(ConvertFromInt(-1) == high);
}

TEST(VexHandleCollection, GivesTheNullHandlePastTheEnd) {
    Vex_Handle_Collection handles;
    EXPECT_TRUE(handles.empty());
    EXPECT_FALSE(handles[0].IsNotNull());
    handles.push_back(VEX_HANDLE(7));
    EXPECT_TRUE(handles[0] == VEX_HANDLE(7));
    EXPECT_FALSE(handles[1].IsNotNull());
    VEX_HANDLE* const more = handles.extend(2);
    more[1] = VEX_HANDLE(9);
    EXPECT_EQ(handles.size(), 3U);
    EXPECT_FALSE(handles[1].IsNotNull());
    EXPECT_TRUE(handles[2] == VEX_HANDLE(9));
    Vex_Handle_Collection other;
    other.swap(handles);
    EXPECT_EQ(other.size(), 3U);
    EXPECT_TRUE(handles.empty());
}

} // namespace

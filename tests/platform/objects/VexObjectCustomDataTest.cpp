#include "tests/platform/objects/PlatformFakes.h"

#include <gtest/gtest.h>

namespace {

TEST(VexObjectCustomData, HoldsNothingAtFirst) {
    FakeSession session;
    VexObjectCustomData const data(session);
    EXPECT_FALSE(data.HasCustomData("plug-in"));
    EXPECT_EQ(data.GetCustomDataProperty("key", "plug-in"), "");
}

TEST(VexObjectCustomData, KeepsPropertiesWithTheSession) {
    FakeSession session;
    VexObjectCustomData(session).SetCustomDataProperty("key", "value", false, "plug-in");
    VexObjectCustomData const later(session);
    EXPECT_TRUE(later.HasCustomData("plug-in"));
    EXPECT_EQ(later.GetCustomDataProperty("key", "plug-in"), "value");
    FakeSession other;
    EXPECT_FALSE(VexObjectCustomData(other).HasCustomData("plug-in"));
}

TEST(VexObjectCustomData, KeepsNamespacesAndKeysApart) {
    FakeSession session;
    VexObjectCustomData data(session);
    data.SetCustomDataProperty("key", "one", true, "a");
    data.SetCustomDataProperty("key", "two", false, "b");
    data.SetCustomDataProperty("other", "three", false, "a");
    EXPECT_EQ(data.GetCustomDataProperty("key", "a"), "one");
    EXPECT_EQ(data.GetCustomDataProperty("key", "b"), "two");
    EXPECT_EQ(data.GetCustomDataProperty("other", "a"), "three");
    EXPECT_FALSE(data.HasCustomData("c"));
    EXPECT_EQ(data.GetCustomDataProperty("other", "b"), "");
}

TEST(VexObjectCustomData, ReplacesAnEarlierValue) {
    FakeSession session;
    VexObjectCustomData data(session);
    data.SetCustomDataProperty("key", "one", false, "a");
    data.SetCustomDataProperty("key", "two", false, "a");
    EXPECT_EQ(data.GetCustomDataProperty("key", "a"), "two");
    data.RemoveCustomDataProperty("key", "a");
    EXPECT_FALSE(data.HasCustomData("a"));
}

TEST(VexObjectCustomData, TellsAnEmptyValueFromNone) {
    FakeSession session;
    VexObjectCustomData data(session);
    data.SetCustomDataProperty("key", "", false, "a");
    EXPECT_TRUE(data.HasCustomData("a"));
    EXPECT_EQ(data.GetCustomDataProperty("key", "a"), "");
}

TEST(VexObjectCustomData, RemovesOneProperty) {
    FakeSession session;
    VexObjectCustomData data(session);
    data.SetCustomDataProperty("key", "one", false, "a");
    data.SetCustomDataProperty("other", "two", false, "a");
    data.RemoveCustomDataProperty("key", "a");
    data.RemoveCustomDataProperty("missing", "a");
    data.RemoveCustomDataProperty("other", "b");
    EXPECT_EQ(data.GetCustomDataProperty("key", "a"), "");
    EXPECT_EQ(data.GetCustomDataProperty("other", "a"), "two");
    EXPECT_TRUE(data.HasCustomData("a"));
}

TEST(VexObjectCustomData, TakesAValueThatItHandedOut) {
    VexCustomDataStore store;
    store.Set("key", "one", "a");
    store.Set("key", store.Get("key", "a"), "a");
    EXPECT_EQ(store.Get("key", "a"), "one");
}

} // namespace

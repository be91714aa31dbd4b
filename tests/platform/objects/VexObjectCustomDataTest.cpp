#include "tests/platform/objects/PlatformFakes.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A host's own place: notes what is kept, and whether it is to last.
class NotingStore final : public VexCustomDataStore {
public:
    bool HasNamespace(I18NString const& nameSpace) const override { return nameSpace == "known"; }
    I18NString Get(I18NString const& key, I18NString const& nameSpace) const override {
        return key + " of " + nameSpace;
    }
    void Set(I18NString const& key, I18NString const&, bool persistent,
             I18NString const&) override {
        m_set.emplace_back(key, persistent);
    }
    void Remove(I18NString const& key, I18NString const&) override { m_removed.push_back(key); }

    std::vector<std::pair<I18NString, bool>> m_set;
    std::vector<I18NString> m_removed;
};

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

TEST(VexObjectCustomData, StandsWhereTheHostKeepsIt) {
    NotingStore store;
    FakeSession session(store);
    VexObjectCustomData data(session);
    EXPECT_TRUE(data.HasCustomData("known"));
    EXPECT_FALSE(data.HasCustomData("unknown"));
    EXPECT_EQ(data.GetCustomDataProperty("key", "a"), "key of a");
    data.SetCustomDataProperty("short", "x", false, "a");
    data.SetCustomDataProperty("long", "x", true, "a");
    data.RemoveCustomDataProperty("gone", "a");
    EXPECT_EQ(store.m_set,
              (std::vector<std::pair<I18NString, bool>>{{"short", false}, {"long", true}}));
    EXPECT_EQ(store.m_removed, std::vector<I18NString>{"gone"});
}

TEST(VexObjectCustomData, TakesAValueThatItHandedOut) {
    VexSessionCustomData store;
    store.Set("key", "one", false, "a");
    store.Set("key", store.Get("key", "a"), false, "a");
    EXPECT_EQ(store.Get("key", "a"), "one");
}

} // namespace

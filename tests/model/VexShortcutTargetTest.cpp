// From a shortcut to the object that it stands for.

#include "model/VexShortcutTarget.h"

#include "VexObject.h"
#include "model/VexFailure.h"
#include "tests/support/ExpectFailure.h"
#include "tests/support/TestModel.h"
#include "tests/support/TestSession.h"

#include <gtest/gtest.h>

namespace {

constexpr char Model[] = R"(
<model><namespace id="n" name="Sales">
  <querySubject id="q" name="Orders"/><filter id="x" name="Open"/>
  <shortcut id="one" name="One" refobj="[Sales].[Orders]"/>
  <shortcut id="space" name="Space" refobj="[Sales]"/>
  <shortcut id="two" name="Two" refobj="[Sales].[Orders]">
    <property name="refobj">[Sales].[Open]</property></shortcut>
  <shortcut id="lateTarget" name="Late" refobj="">
    <property name="refobj">[Sales].[Open]</property></shortcut>
  <shortcut id="halfDangling" refobj="[Sales].[Orders]">
    <property name="refobj">[No]</property></shortcut>
  <shortcut id="dangling" refobj="[No]"><property name="refobj">[Sales].[Open]</property></shortcut>
  <shortcut id="malformed" refobj="Sales"/>
  <shortcut id="empty" refobj=""/>
  <shortcut id="none" name="[Sales].[Orders]"/>
</namespace></model>)";

class ShortcutTarget : public testing::Test {
protected:
    // "class id" of what the shortcut leads to.
    std::string follow(char const* id) {
        VEX_HANDLE handle = model.byId(id);
        I18NString targetClass("as before");
        FindShortcutReference(session, "its name", handle, targetClass);
        return targetClass.toUtf8() + " " + idOf(handle);
    }
    std::string lastTarget(char const* id) {
        return idOf(FindShortcutTarget(model, model.byId(id), VexTargetRule::LastDecides,
                                       VexFailure::WrittenShortcutDangling));
    }
    static std::string idOf(VEX_HANDLE handle) {
        I18NString id("null");
        if (handle.IsNotNull()) {
            VexObject(handle).GetId(id);
        }
        return id.toUtf8();
    }

    TestModel model{Model};
    TestSession session{model};
};

TEST_F(ShortcutTarget, IsTheObjectOfTheReference) {
    EXPECT_EQ(follow("one"), "querySubject q");
    EXPECT_EQ(follow("space"), "namespace n");
}

TEST_F(ShortcutTarget, IsThatOfTheFirstReferenceWithAValue) {
    EXPECT_EQ(follow("two"), "querySubject q");
    EXPECT_EQ(follow("lateTarget"), "filter x");
    EXPECT_EQ(follow("halfDangling"), "querySubject q");
}

TEST_F(ShortcutTarget, IsThatOfTheLastReferenceWhereTheLastDecides) {
    EXPECT_EQ(lastTarget("two"), "x");
    EXPECT_EQ(lastTarget("lateTarget"), "x");
    EXPECT_EQ(lastTarget("one"), "q");
    EXPECT_EQ(lastTarget("none"), "null");
}

TEST_F(ShortcutTarget, IsNullAndKeepsTheClassWithoutAReference) {
    EXPECT_EQ(follow("none"), "as before null");
    EXPECT_EQ(follow("empty"), "as before null");
}

TEST_F(ShortcutTarget, IsRefusedWhenNothingAnswersToTheReference) {
    for (char const* const id : {"dangling", "malformed"}) {
        expectFailure([&] { follow(id); }, 1171122674, "VexMDMaProvider", 550,
                      "VexMDMaProvider::FindShortcutReference", {"its name"});
    }
}

TEST_F(ShortcutTarget, MustAnswerForEachReferenceWhereTheLastDecides) {
    for (char const* const id : {"dangling", "halfDangling"}) {
        expectFailure([&] { lastTarget(id); }, 1170588191, "VexMDMaProvider", 2080,
                      "VexMDMaProvider::processShortCutCollection");
    }
}

TEST_F(ShortcutTarget, IsNullForTheNullHandle) {
    VEX_HANDLE handle;
    I18NString targetClass("as before");
    FindShortcutReference(session, "its name", handle, targetClass);
    EXPECT_FALSE(handle.IsNotNull());
    EXPECT_EQ(targetClass.toUtf8(), "as before");
}

} // namespace

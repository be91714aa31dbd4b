#include "VexException.h"
#include "tests/security/EngineCase.h"
#include "tests/support/ExpectFailure.h"

#include <string>

#include <gtest/gtest.h>

namespace {

char const twoViews[] = R"(
    <securityView id="v1"><set kind="included"><item>n</item><item>a</item></set></securityView>
    <securityView id="v2"><set kind="included"><item>o</item></set></securityView>)";

constexpr unsigned noViews = 1170839636;
constexpr unsigned noRequestedView = 1170551942;

void expectLoadFailure(EngineCase& on, unsigned id) {
    expectFailure([&] { on.includes("n"); }, id, "VexMDAccessEngine", 0,
                  "VexMDAccessEngine::populateAccessInfo");
}

} // namespace

TEST(VexMDAccessEngine, UnrestrictedItIncludesEverythingAndNeverReadsTheModel) {
    EngineCase on("", {}, {}, true);
    EXPECT_TRUE(on.includes("n"));
    EXPECT_TRUE(on.includes(""));
    EXPECT_TRUE(on.includesBeyondViews("unknown"));
    EXPECT_EQ(on.model().calls().total(), 0);
}

TEST(VexMDAccessEngine, UnrestrictedItGivesAllObjectsBack) {
    EngineCase on("", {}, {}, true);
    Vex_Handle_Collection objects = on.model().byIds({"o", "n"});
    objects.push_back(VEX_HANDLE());
    Vex_Handle_Collection const visible = on.engine().FindVisibleObjects(objects);
    ASSERT_EQ(visible.size(), 3U);
    EXPECT_EQ(visible[0], on.model().byId("o"));
    EXPECT_EQ(visible[1], on.model().byId("n"));
    EXPECT_EQ(visible[2], 0);
    EXPECT_EQ(on.model().calls().total(), 0);
}

TEST(VexMDAccessEngine, BuildingItReadsNothing) {
    EngineCase on(twoViews, {"v1"});
    EXPECT_EQ(on.model().calls().total(), 0);
}

TEST(VexMDAccessEngine, AModelWithoutViewsIsRefusedAtEveryQuestion) {
    EngineCase on("", {"v1"});
    expectLoadFailure(on, noViews);
    expectLoadFailure(on, noViews);
}

TEST(VexMDAccessEngine, ViewsThatTheModelLacksAreRefused) {
    EngineCase on(twoViews, {"v3", "V1", ""});
    expectLoadFailure(on, noRequestedView);
    expectLoadFailure(on, noRequestedView);
}

TEST(VexMDAccessEngine, WithoutRequestedViewsItRefuses) {
    EngineCase on(twoViews, {});
    expectLoadFailure(on, noRequestedView);
}

TEST(VexMDAccessEngine, WithoutRoleBasedViewsTheRequestedViewsDecide) {
    EngineCase on(twoViews, {"v1", "missing"});
    EXPECT_TRUE(on.includes("n"));
    EXPECT_TRUE(on.includes("a"));
    EXPECT_FALSE(on.includes("o"));
    EXPECT_FALSE(on.includes(""));
    EXPECT_TRUE(on.includesBeyondViews("o"));
}

TEST(VexMDAccessEngine, RequestedViewsAddUp) {
    EngineCase on(twoViews, {"v2", "v1"});
    EXPECT_TRUE(on.includes("n"));
    EXPECT_TRUE(on.includes("o"));
}

TEST(VexMDAccessEngine, OfARequestedViewOnlyIncludedSetsCount) {
    EngineCase on(R"(<securityView id="v1">
                       <set kind="included"><item>n</item><item>o</item></set>
                       <set kind="excluded"><item>n</item></set>
                       <set kind="hidden"><item>o</item></set>
                     </securityView>)",
                  {"v1"});
    EXPECT_TRUE(on.includes("n"));
    EXPECT_TRUE(on.includes("o"));
}

TEST(VexMDAccessEngine, SetsWithoutAKindOrOfAnotherKindAreSkipped) {
    EngineCase on(R"(<securityView id="v1">
                       <set><item>a</item></set>
                       <set kind=""><item>b</item></set>
                       <set kind="Included"><item>c</item></set>
                       <set kind="other"><item>d</item></set>
                       <set kind="included"><item>e</item></set>
                       <set kind="included"><item>f</item><item>e</item></set>
                     </securityView>)",
                  {"v1"});
    for (char const* const id : {"a", "b", "c", "d"}) {
        EXPECT_FALSE(on.includes(id)) << id;
    }
    EXPECT_TRUE(on.includes("e"));
    EXPECT_TRUE(on.includes("f"));
}

TEST(VexMDAccessEngine, SetsAndEntriesCountHoweverDeepTheyLie) {
    EngineCase on(R"(<securityView id="v1"><group>
                       <set kind="included"><group><item>n</item></group></set>
                     </group></securityView>)",
                  {"v1"});
    EXPECT_TRUE(on.includes("n"));
}

TEST(VexMDAccessEngine, WhatASetHoldsThroughSetsInsideItIsReadOnce) {
    EngineCase on(R"(<securityView id="v1">
                       <set kind="included"><item>a</item>
                         <set kind="included"><item>b</item>
                           <set kind="excluded"><item>c</item></set>
                           <set kind="included"><item>d</item></set>
                         </set>
                         <item>e</item>
                       </set>
                       <set kind="hidden"><item>f</item>
                         <group><set kind="included"><item>g</item></set></group>
                       </set>
                     </securityView>)",
                  {"v1"});
    for (char const* const id : {"a", "b", "c", "d", "e", "g"}) {
        EXPECT_TRUE(on.includes(id)) << id;
    }
    EXPECT_FALSE(on.includes("f"));
    int const kinds = 6;
    int const entries = 6;
    EXPECT_EQ(on.model().calls().count(Call::GetValue), kinds + entries);
}

TEST(VexMDAccessEngine, AnEntryWithoutValueStandsForTheEmptyId) {
    EngineCase on(R"(<securityView id="v1"><set kind="included"><item/></set></securityView>)",
                  {"v1"});
    EXPECT_TRUE(on.includes(""));
    EXPECT_FALSE(on.includes("n"));
}

TEST(VexMDAccessEngine, AViewWithoutIdIsRequestedByTheEmptyId) {
    EngineCase on(R"(<securityView><set kind="included"><item>n</item></set></securityView>)",
                  {""});
    EXPECT_TRUE(on.includes("n"));
}

TEST(VexMDAccessEngine, ViewsAreFoundAnywhereBelowTheRoot) {
    EngineCase on(R"(<deep><securityView id="v1"><set kind="included"><item>n</item></set>
                     </securityView></deep>)",
                  {"v1"});
    EXPECT_TRUE(on.includes("n"));
}

TEST(VexMDAccessEngine, TheModelIsReadOnce) {
    EngineCase on(twoViews, {"v1"});
    on.includes("n");
    int const reading = on.model().calls().total();
    EXPECT_GT(reading, 0);
    on.includes("o");
    on.includesBeyondViews("x");
    EXPECT_EQ(on.model().calls().total(), reading);
}

TEST(VexMDAccessEngine, ALoadThatFailsAnywhereIsRepeatedAtTheNextQuestion) {
    EngineCase counted(twoViews, {"v1"});
    counted.includes("n");
    int const calls = counted.model().calls().total();
    for (int nth = 1; nth <= calls; ++nth) {
        EngineCase on(twoViews, {"v1"});
        on.model().calls().failAt(nth);
        expectInjectedFailure([&] { on.includes("n"); });
        EXPECT_TRUE(on.includes("n")) << nth;
        EXPECT_FALSE(on.includes("o")) << nth;
    }
}

TEST(VexMDAccessEngine, VisibleObjectsKeepTheirOrder) {
    EngineCase on(twoViews, {"v1", "v2"});
    Vex_Handle_Collection objects = on.model().byIds({"o", "m", "n", "o"});
    Vex_Handle_Collection const visible = on.engine().FindVisibleObjects(objects);
    ASSERT_EQ(visible.size(), 3U);
    EXPECT_EQ(visible[0], on.model().byId("o"));
    EXPECT_EQ(visible[1], on.model().byId("n"));
    EXPECT_EQ(visible[2], on.model().byId("o"));
}

TEST(VexMDAccessEngine, ObjectsWithoutAnIdAreJudgedByTheEmptyId) {
    EngineCase on(twoViews, {"v1"});
    Vex_Handle_Collection objects;
    objects.push_back(VEX_HANDLE());
    EXPECT_TRUE(on.engine().FindVisibleObjects(objects).empty());
}

TEST(VexMDAccessEngine, WhereTheIdsAreReadyTheyAreNotRead) {
    TestModel model("<model id='m'><securityViews>" + std::string(twoViews) +
                    "</securityViews></model>");
    model.offerTextSets();
    TestSession session(model);
    VexMDAccessEngine engine(&session, {"v1", "v2"}, {}, I18NLocale("en"), false);
    EXPECT_TRUE(engine.IsIncluded("n", false));
    EXPECT_TRUE(engine.IsIncluded("o", false));
    EXPECT_FALSE(engine.IsIncluded("b", false));
    EXPECT_EQ(model.calls().count(Call::FindTextSet), 2); // for each view in force
    EXPECT_EQ(model.calls().count(Call::GetValue), 0);
}

TEST(VexMDAccessEngine, TheKindOfASetIsWhatTheNullLocaleFinds) {
    EngineCase on(R"(<securityView id="v1">
                       <set kind="included"><item>n</item></set>
                     </securityView>
                     <securityView id="v2">
                       <set><property name="kind" locale="de">included</property>
                         <item>a</item></set>
                       <set><property name="kind" locale="de">excluded</property>
                         <property name="kind" locale="en_US">included</property>
                         <item>b</item></set>
                       <set><property name="kind">hidden</property>
                         <property name="kind">included</property><item>c</item></set>
                       <set><kind><item>d</item></kind></set>
                     </securityView>)",
                  {"v1", "v2"});
    EXPECT_TRUE(on.includes("n"));
    EXPECT_TRUE(on.includes("a"));
    EXPECT_TRUE(on.includes("b"));
    EXPECT_FALSE(on.includes("c"));
    EXPECT_FALSE(on.includes("d"));
}

TEST(VexMDAccessEngine, AHostThatFailsWithItsSetsIsAskedAgainAtTheNextQuestion) {
    std::string const views = R"(<securityView id="v1">
                       <set kind="included"><item>n</item><item>a</item></set></securityView>
                     <securityView id="w" roleBased="1"><member roleId="r"/>
                       <set kind="included"><item>n</item></set>
                       <set kind="hidden"><item>a</item></set></securityView>)";
    int failures = 0;
    for (int nth = 1;; ++nth) {
        TestModel model("<model id='m'><securityViews>" + views + "</securityViews></model>");
        model.offerTextSets();
        TestSession session(model);
        VexMDAccessEngine engine(&session, {"v1"}, {"r"}, I18NLocale("en"), false);
        model.calls().failAt(nth);
        try {
            engine.IsIncluded("n", false);
            break;
        } catch (VexException const& e) {
            EXPECT_EQ(e.GetId(), CallCounter::InjectedFailure);
            ++failures;
        }
        EXPECT_TRUE(engine.IsIncluded("n", false)) << nth;
        EXPECT_FALSE(engine.IsIncluded("a", false)) << nth;
        EXPECT_FALSE(engine.IsIncluded("o", false)) << nth;
    }
    EXPECT_GT(failures, 10);
}

#include "plugin/VexAccessAction.h"

#include "tests/plugin/PluginCase.h"
#include "tests/support/Casts.h"
#include "tests/support/ExpectFailure.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

char const failureLine[] =
    "\n\n *** FAILURE: VemAction::validateParameter at invalid VexVariant type *** \n\n";

constexpr unsigned withoutSource = 1444335572;
constexpr unsigned withoutViewsOrRoles = 1170699671;

class VexAccessActionTest : public testing::Test {
protected:
    VexAccessActionTest() {
        m_session.setViews({"v"});
        m_session.setRoles({"clerk"});
    }

    // The answer: 1 or 0, as the second appended value.
    long ask(char const* id, long mode = 0) {
        m_in = {VexVariant(0L), VexVariant(&m_path), VexVariant(m_model.byId(id)),
                VexVariant(mode)};
        call();
        EXPECT_EQ(m_out.size(), 2U);
        EXPECT_EQ(m_out[0].GetType(), VexVariant::Long);
        EXPECT_EQ(static_cast<long>(m_out[0]), 1);
        EXPECT_EQ(m_out[1].GetType(), VexVariant::Long);
        return static_cast<long>(m_out[1]);
    }

    void call() {
        VexParams in;
        for (VexVariant const& value : m_in) {
            in.AddParam(value);
        }
        m_out.clear();
        m_action.doAccessibility(in, m_out);
    }

    void expectRefusal() {
        testing::internal::CaptureStdout();
        expectFailure([&] { call(); }, 1444379511, "VexAccessAction", 0,
                      "VexAction::validateParameter");
        std::fflush(stdout);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), failureLine);
        EXPECT_EQ(m_out.size(), 0U);
    }

    void expectNoSecurity(unsigned id) {
        expectFailure([&] { ask("x"); }, id, "VexAccessAction", 0,
                      "VexAccessAction::RetrieveSecurityInfo");
        EXPECT_EQ(m_out.size(), 0U);
    }

    int count(Call call) const { return m_model.calls().count(call); }

    TestModel m_model{casts::plainShop()};
    TestSession m_session{m_model};
    VexAccessAction m_action{m_session};
    I18NString m_path{"/content/m"};
    std::vector<VexVariant> m_in;
    VexParams m_out;
};

} // namespace

TEST_F(VexAccessActionTest, AModelPathThatPointsToNothingIsRefused) {
    m_in = {VexVariant(0L), VexVariant(static_cast<I18NString*>(nullptr)),
            VexVariant(m_model.byId("x")), VexVariant(0L)};
    expectRefusal();
    EXPECT_EQ(m_model.calls().total(), 0);
}

TEST_F(VexAccessActionTest, AnIncludedObjectAnswersOneAndAnotherZero) {
    EXPECT_EQ(ask("x"), 1);
    EXPECT_EQ(ask("y"), 0);
}

TEST_F(VexAccessActionTest, ModeOnePassesOverTheListsOfTheViewsAndNoOtherModeDoes) {
    EXPECT_EQ(ask("y", 1), 1);
    for (long const mode : {0L, 2L, -1L, std::numeric_limits<long>::min() + 1}) {
        EXPECT_EQ(ask("y", mode), 0) << mode;
    }
}

TEST_F(VexAccessActionTest, AnObjectWithoutIdOrANullHandleIsJudgedByTheEmptyId) {
    m_in = {VexVariant(0L), VexVariant(&m_path), VexVariant(VEX_HANDLE()), VexVariant(0L)};
    call();
    EXPECT_EQ(static_cast<long>(m_out[1]), 0);
    m_in[3] = VexVariant(1L);
    call();
    EXPECT_EQ(static_cast<long>(m_out[1]), 1);
}

TEST_F(VexAccessActionTest, ResultsAreAppendedToWhatIsThere) {
    VexParams out;
    out.AddParam(VexVariant(7L));
    VexParams in;
    for (VexVariant const& value :
         {VexVariant(0L), VexVariant(&m_path), VexVariant(m_model.byId("x")), VexVariant(0L)}) {
        in.AddParam(value);
    }
    m_action.doAccessibility(in, out);
    ASSERT_EQ(out.size(), 3U);
    EXPECT_EQ(static_cast<long>(out[0]), 7);
    EXPECT_EQ(static_cast<long>(out[1]), 1);
    EXPECT_EQ(static_cast<long>(out[2]), 1);
}

TEST_F(VexAccessActionTest, EachParameterOfAnotherTypeIsRefused) {
    TestRequest node("<a/>");
    std::vector<VexVariant> const good = {VexVariant(0L), VexVariant(&m_path),
                                          VexVariant(m_model.byId("x")), VexVariant(0L)};
    VexVariant const all[] = {VexVariant(), VexVariant(1L), VexVariant(&m_path),
                              VexVariant(VEX_HANDLE(1)), VexVariant(&node.node())};
    for (std::size_t index = 0; index < good.size(); ++index) {
        for (VexVariant const& value : all) {
            if (value.GetType() != good[index].GetType()) {
                m_in = good;
                m_in[index] = value;
                expectRefusal();
            }
        }
    }
    EXPECT_EQ(m_model.calls().total(), 0);
}

TEST_F(VexAccessActionTest, MissingParametersAreRefusedLikeOnesOfAnotherType) {
    m_in = {VexVariant(0L), VexVariant(&m_path), VexVariant(m_model.byId("x"))};
    expectRefusal();
    while (!m_in.empty()) {
        m_in.pop_back();
        expectRefusal();
    }
}

TEST_F(VexAccessActionTest, TheFirstWrongParameterEndsTheCallWithOneLine) {
    m_in = {VexVariant(&m_path), VexVariant(), VexVariant(), VexVariant()};
    expectRefusal();
}

TEST_F(VexAccessActionTest, ASecondQuestionOnThePathReadsNeitherSecurityNorModelAgain) {
    ask("x");
    int const views = count(Call::GetAvailableViews);
    int const searches = count(Call::GetElementsByTagName);
    EXPECT_EQ(views, 1);
    ask("y");
    EXPECT_EQ(count(Call::GetAvailableViews), views);
    EXPECT_EQ(count(Call::GetRoles), 1);
    EXPECT_EQ(count(Call::GetModelService), 1);
    EXPECT_EQ(count(Call::GetElementsByTagName), searches);
}

TEST_F(VexAccessActionTest, AnotherPathReadsSecurityAndModelAfresh) {
    ask("x");
    int const searches = count(Call::GetElementsByTagName);
    m_path = "/content/other";
    m_session.setViews({"unknown"});
    expectFailure([&] { ask("x"); }, 1170551942, "VexMDAccessEngine", 0,
                  "VexMDAccessEngine::populateAccessInfo");
    EXPECT_EQ(count(Call::GetAvailableViews), 2);
    EXPECT_GT(count(Call::GetElementsByTagName), searches);
    m_path = "/content/m";
    m_session.setViews({"v"});
    EXPECT_EQ(ask("x"), 1);
    EXPECT_EQ(count(Call::GetAvailableViews), 3);
}

TEST_F(VexAccessActionTest, AMarkedPathIsAskedForWithoutItsMarkAndStaysRestricted) {
    m_path = "path:/elsewhere/m";
    EXPECT_EQ(ask("y"), 0);
    ASSERT_EQ(m_session.askedPaths().size(), 1U);
    EXPECT_EQ(m_session.askedPaths()[0], "/elsewhere/m");
}

TEST_F(VexAccessActionTest, APathWithAndOneWithoutTheMarkAreTheSameOnceStored) {
    ask("x");
    m_path = "path:/content/m";
    ask("x");
    EXPECT_EQ(m_session.askedPaths().size(), 1U);
}

TEST_F(VexAccessActionTest, AContentPathIsAskedForAsItIs) {
    ask("x");
    ASSERT_EQ(m_session.askedPaths().size(), 1U);
    EXPECT_EQ(m_session.askedPaths()[0], "/content/m");
}

TEST_F(VexAccessActionTest, OutsideTheContentEverythingIsIncludedAndNobodyAsked) {
    m_path = "/public/m";
    m_session.dropSource();
    EXPECT_EQ(ask("y"), 1);
    EXPECT_EQ(ask("x"), 1);
    EXPECT_EQ(count(Call::GetModelService), 0);
    EXPECT_EQ(count(Call::GetElementsByTagName), 0);
}

// covers quirk: outside-content-for-good
TEST_F(VexAccessActionTest, OncePathsLayOutsideTheContentNoLaterPathIsRestricted) {
    EXPECT_EQ(ask("y"), 0);
    m_path = "/public/m";
    EXPECT_EQ(ask("y"), 1);
    m_path = "/content/m";
    EXPECT_EQ(ask("y"), 1);
    m_path = "path:/content/m2";
    EXPECT_EQ(ask("y"), 1);
    EXPECT_EQ(m_session.askedPaths().size(), 1U);
}

TEST_F(VexAccessActionTest, TheEmptyPathAsFirstOneCountsAsUnchangedAndStandsOutside) {
    m_path = "";
    EXPECT_EQ(ask("y"), 1);
}

TEST_F(VexAccessActionTest, AnUnknownPathIsRefused) {
    m_session.dropSource();
    expectNoSecurity(withoutSource);
}

TEST_F(VexAccessActionTest, AHostWithoutSecurityInformationIsRefused) {
    m_session.dropModelService();
    expectNoSecurity(withoutSource);
}

TEST_F(VexAccessActionTest, AUserWithoutViewsIsRefusedBeforeTheRolesAreAskedFor) {
    m_session.setViews({});
    expectNoSecurity(withoutViewsOrRoles);
    EXPECT_EQ(count(Call::GetRoles), 0);
}

// covers quirk: access-refuses-without-roles
TEST_F(VexAccessActionTest, AUserWithoutRolesIsRefused) {
    m_session.setRoles({});
    expectNoSecurity(withoutViewsOrRoles);
}

TEST_F(VexAccessActionTest, AFailedRetrievalIsTriedAgain) {
    m_session.setRoles({});
    expectNoSecurity(withoutViewsOrRoles);
    expectNoSecurity(withoutViewsOrRoles);
    m_session.setRoles({"clerk"});
    EXPECT_EQ(ask("x"), 1);
    EXPECT_EQ(count(Call::GetAvailableViews), 3);
}

TEST_F(VexAccessActionTest, AfterAFailureOnANewPathTheOldAnswersStayForIt) {
    EXPECT_EQ(ask("x"), 1);
    int const searches = count(Call::GetElementsByTagName);
    m_path = "/content/other";
    m_session.dropSource();
    expectNoSecurity(withoutSource);
    m_session.restoreSource();
    m_session.setViews({"unknown"});
    EXPECT_EQ(ask("x"), 1);
    EXPECT_EQ(count(Call::GetAvailableViews), 2);
    EXPECT_EQ(count(Call::GetElementsByTagName), searches);
}

TEST_F(VexAccessActionTest, AModelWithoutViewsIsRefused) {
    TestModel model("<model id=\"m\"><namespace id=\"x\"/></model>");
    TestSession session(model);
    session.setViews({"v"});
    session.setRoles({"clerk"});
    VexAccessAction action(session);
    VexParams in;
    for (VexVariant const& value :
         {VexVariant(0L), VexVariant(&m_path), VexVariant(model.byId("x")), VexVariant(0L)}) {
        in.AddParam(value);
    }
    for (int attempt = 0; attempt < 2; ++attempt) {
        expectFailure([&] { action.doAccessibility(in, m_out); }, 1170839636, "VexMDAccessEngine",
                      0, "VexMDAccessEngine::populateAccessInfo");
        EXPECT_EQ(m_out.size(), 0U);
    }
}

TEST_F(VexAccessActionTest, WhatTheHostRaisesComesThroughAndNothingIsReported) {
    ask("x");
    int const calls = m_model.calls().total();
    for (int nth = 1; nth <= calls; ++nth) {
        VexAccessAction action(m_session);
        VexParams in;
        for (VexVariant const& value :
             {VexVariant(0L), VexVariant(&m_path), VexVariant(m_model.byId("x")), VexVariant(0L)}) {
            in.AddParam(value);
        }
        VexParams out;
        m_model.calls().failAt(nth);
        expectInjectedFailure([&] { action.doAccessibility(in, out); });
        EXPECT_EQ(out.size(), 0U) << nth;
        action.doAccessibility(in, out);
        EXPECT_EQ(static_cast<long>(out[1]), 1) << nth;
    }
}

#include "host/insight/Verification.h"

#include "VexMessageTexts.h"
#include "host/import/xml/ModelLoader.h"
#include "host/insight/FindingRoom.h"

#include <gtest/gtest.h>

namespace {

using vex::DifferenceCause;
using vex::VerifyKind;
using vex::VerifyOutcome;

vex::UserVerification found(std::vector<VerifyKind> const& kinds) {
    vex::UserVerification user;
    user.user = "ann";
    user.objects = 7;
    for (VerifyKind const kind : kinds) {
        user.findings.push_back({.kind = kind});
    }
    return user;
}

VerifyOutcome outcomeOf(std::vector<vex::UserVerification> users) {
    return vex::Verification{"m.xml", std::move(users), {}}.outcome();
}

TEST(Verification, IsCleanWhenEachUsersIs) {
    EXPECT_EQ(outcomeOf({}), VerifyOutcome::Clean);
    EXPECT_EQ(outcomeOf({found({}), found({})}), VerifyOutcome::Clean);
    EXPECT_EQ(outcomeOf({found({}), found({VerifyKind::Leak})}), VerifyOutcome::Leaking);
}

TEST(Verification, ComesToTheWorstThatWasFound) {
    EXPECT_EQ(outcomeOf({found({VerifyKind::Required, VerifyKind::JoinKey})}),
              VerifyOutcome::Clean);
    EXPECT_EQ(outcomeOf({found({VerifyKind::ShownPastViews, VerifyKind::Required})}),
              VerifyOutcome::ShownPastViews);
    EXPECT_EQ(
        outcomeOf({found({VerifyKind::ShownPastViews}), vex::tellUnfinished("ben", "too large")}),
        VerifyOutcome::Unfinished);
    EXPECT_EQ(outcomeOf({vex::tellUnfinished("ben", "too large"), found({VerifyKind::Leak})}),
              VerifyOutcome::Leaking);
    EXPECT_EQ(outcomeOf({found({VerifyKind::Unexplained})}), VerifyOutcome::Leaking);
    EXPECT_EQ(outcomeOf({vex::tellRefusalByOne("nora", "No view.")}), VerifyOutcome::Leaking);
    EXPECT_EQ(outcomeOf({found({}), vex::tellRefusal("nora", "No view.")}), VerifyOutcome::Clean);
}

TEST(Verification, IsNotCleanWhenThereWasNothingToVerify) {
    vex::Verification refused{"m.xml", {vex::tellRefusal("nora", "No view.")}, {}};
    refused.addNobodyCompared();
    EXPECT_EQ(refused.outcome(), VerifyOutcome::NothingVerified);
    EXPECT_EQ(refused.comparedUsers(), 0U);
    vex::Verification unrestricted{"m.xml", {found({})}, {}};
    unrestricted.addNobodyCompared();
    EXPECT_EQ(unrestricted.outcome(), VerifyOutcome::Clean);
    unrestricted.addUnrestricted("nobody is restricted");
    EXPECT_TRUE(unrestricted.isUnrestricted());
    EXPECT_EQ(unrestricted.outcome(), VerifyOutcome::NothingVerified);
}

TEST(Verification, IsNotCleanWhereNobodyWhoIsRestrictedWasCompared) {
    EXPECT_TRUE((vex::Verification{"m.xml", {found({})}, {}}.isClean()));
    EXPECT_FALSE((vex::Verification{"m.xml", {}, {}}.isClean()));
    EXPECT_FALSE(
        (vex::Verification{"m.xml", {vex::tellRefusal("nora", "No view.")}, {}}.isClean()));
    vex::Verification unrestricted{"m.xml", {found({})}, {}};
    unrestricted.addUnrestricted("nobody is restricted");
    unrestricted.findings[0].isAccepted = true;
    EXPECT_EQ(unrestricted.outcome(), VerifyOutcome::Clean);
    EXPECT_FALSE(unrestricted.isClean());
}

/// How a call ended: refused with that failure, or without a failure by that kind.
vex::CallEnd endBy(vex::CallEnd::Kind kind, unsigned failure = 0) {
    vex::CallEnd end{.kind = kind, .text = "so it is"};
    if (kind == vex::CallEnd::Kind::Raised) {
        end.failure.emplace().id = failure;
    }
    return end;
}

TEST(Verification, TakesOnlyTheRefusalOfBothForWantOfAViewForNothingToCompare) {
    using Kind = vex::CallEnd::Kind;
    vex::CallEnd const answered = endBy(Kind::Answered);
    vex::CallEnd const noView = endBy(Kind::Raised, VexFailureId::NoViewOrRole);
    vex::CallEnd const other = endBy(Kind::Raised, VexFailureId::NameNotFound);
    vex::CallEnd const odd = endBy(Kind::NotHandled);
    vex::CallEnd const stopped = endBy(Kind::Stopped);
    EXPECT_FALSE(vex::tellEnds("ann", answered, answered).has_value());
    auto const outcome = [](vex::CallEnd const& trees, vex::CallEnd const& checks) {
        auto told = vex::tellEnds("ann", trees, checks);
        return told ? outcomeOf({found({}), *std::move(told)}) : VerifyOutcome::Clean;
    };
    EXPECT_EQ(outcome(noView, noView), VerifyOutcome::Clean);
    for (vex::CallEnd const& each : {noView, other}) {
        EXPECT_EQ(outcome(each, answered), VerifyOutcome::Leaking); // one says yes, one says no
        EXPECT_EQ(outcome(answered, each), VerifyOutcome::Leaking);
    }
    EXPECT_EQ(outcome(other, other), VerifyOutcome::NotVerified);
    EXPECT_EQ(outcome(other, noView), VerifyOutcome::NotVerified);
    EXPECT_EQ(outcome(noView, other), VerifyOutcome::NotVerified);
    for (vex::CallEnd const& each : {answered, noView, other, odd}) {
        EXPECT_EQ(outcome(odd, each), VerifyOutcome::NotVerified);
        EXPECT_EQ(outcome(each, odd), VerifyOutcome::NotVerified);
        EXPECT_EQ(outcome(stopped, each), VerifyOutcome::Unfinished);
        EXPECT_EQ(outcome(each, stopped), VerifyOutcome::Unfinished);
    }
}

TEST(Verification, IsNotFinishedWhereAnAnswerIsMissing) {
    vex::Verification verification{
        "m.xml", {found({}), vex::tellNotVerified("ben", "code 77")}, {}};
    verification.addNobodyCompared();
    EXPECT_FALSE(verification.isFinished());
    EXPECT_EQ(verification.outcome(), VerifyOutcome::NotVerified);
    EXPECT_EQ(verification.comparedUsers(), 1U);
    EXPECT_EQ(verification.count(VerifyKind::NobodyCompared), 0U);
}

TEST(Verification, CountsWhatIsAcceptedApart) {
    vex::UserVerification user = found({VerifyKind::Leak, VerifyKind::Leak});
    user.findings[0].isAccepted = true;
    EXPECT_EQ(user.count(VerifyKind::Leak), 1U);
    EXPECT_EQ(user.accepted(), 1U);
    user.findings[1].isAccepted = true;
    EXPECT_EQ(outcomeOf({user}), VerifyOutcome::Clean);
}

TEST(Verification, CountsUsersWithTheSameRoles) {
    vex::UserVerification user = found({});
    user.alike = {"bea", "cid"};
    vex::Verification const all{"m.xml", {user, vex::tellRefusal("nora", "No view.")}, {}};
    EXPECT_EQ(all.userCount(), 4U);
    EXPECT_EQ(all.comparedUsers(), 3U);
}

TEST(Verification, CountsInWords) {
    EXPECT_EQ(vex::counted(1, "leak"), "1 leak");
    EXPECT_EQ(vex::counted(2, "join key"), "2 join keys");
    EXPECT_EQ(vex::counted(3, rowOf(VerifyKind::ShownPastViews).noun), "3 shown past the views");
}

TEST(Verification, TellsWhatACheckFoundByWhatObjectsAreKnownBy) {
    auto const model = vex::loadModelText(R"(<model defaultLocale="en"><locales>
      <locale>en</locale><locale>de</locale></locales><namespace id="n" name="Sales">
      <folder id="f"><property name="name" locale="en">Facts</property>
      <property name="name" locale="de">Fakten</property></folder>
      <filter name="Open"/></namespace></model>)",
                                          "m.model.xml");
    VEX_HANDLE const folder = model->findById("f");
    VEX_HANDLE const filter = model->GetObjectByReference("[Sales].[Open]", 0);
    vex::TreeCheck check;
    check.objects = 12;
    check.leaks = {{folder, "note", filter, "[Sales].[Open]"},
                   {folder, "left", filter, "[Open]", true}};
    check.differences = {{filter, true, DifferenceCause::Start},
                         {folder, false, DifferenceCause::NotGoneInto},
                         {folder, true, DifferenceCause::Unexplained}};
    check.hiddenContainers = {{folder, 3, filter}};
    vex::AcceptedFindings accepted;
    vex::AcceptedIndex index(accepted);
    vex::FindingRoom room(vex::FindingRoom::UsualOfAKind, index);
    vex::UserVerification told;
    tellCheck(told, check, *model, I18NLocale("de"), room);
    EXPECT_TRUE(told.isCompared());
    ASSERT_EQ(told.findings.size(), 6U);
    vex::VerifyFinding const& leak = told.findings[0];
    EXPECT_EQ(leak.kind, VerifyKind::Leak);
    EXPECT_EQ(leak.property, "note");
    EXPECT_EQ(leak.named.key(), "[Sales].[Open]");
    EXPECT_EQ(leak.text, "the folder \"Fakten\" (f) names [Sales].[Open] in its note, and the "
                         "filter \"Open\" is hidden");
    EXPECT_EQ(told.findings[1].kind, VerifyKind::JoinKey);
    EXPECT_EQ(told.findings[2].kind, VerifyKind::ShownPastViews);
    EXPECT_EQ(told.findings[2].cause, "start");
    EXPECT_TRUE(told.findings[2].isInTree);
    EXPECT_EQ(told.findings[3].kind, VerifyKind::Required);
    EXPECT_EQ(told.findings[4].kind, VerifyKind::Unexplained);
    EXPECT_EQ(told.findings[5].kind, VerifyKind::HiddenContainer);
    EXPECT_EQ(told.findings[5].objects, 3U);
    EXPECT_EQ(told.findings[5].text,
              "the folder \"Fakten\" (f) is hidden, and the _path of 3 objects shown in it names "
              "it, such as the filter \"Open\"");
}

} // namespace

#include "host/insight/AcceptedFindings.h"

#include <gtest/gtest.h>

namespace {

using vex::AcceptedFinding;
using vex::AcceptedFindings;
using vex::VerifyKind;

vex::Verification twoLeaks() {
    vex::UserVerification ann;
    ann.user = "ann";
    ann.objects = 7;
    for (char const* const id : {"a", "b"}) {
        ann.findings.push_back({.kind = VerifyKind::Leak,
                                .object = {id, "", "filter", ""},
                                .property = "expression",
                                .reference = "[S].[Cost]"});
    }
    return {"m.xml", {ann}, {}};
}

AcceptedFinding entryFor(std::optional<std::string> user, std::optional<std::string> object) {
    AcceptedFinding entry;
    entry.kind = "leak";
    entry.user = std::move(user);
    entry.object = std::move(object);
    return entry;
}

TEST(AcceptedFindings, AreThoseThatHaveAllValuesThatAreGiven) {
    vex::Verification found = twoLeaks();
    AcceptedFindings accepted{entryFor("ann", "a"), entryFor("ben", "b")};
    accept(found, accepted);
    EXPECT_TRUE(found.users[0].findings[0].isAccepted);
    EXPECT_FALSE(found.users[0].findings[1].isAccepted);
    EXPECT_TRUE(accepted[0].isUsed);
    EXPECT_FALSE(accepted[1].isUsed);
}

TEST(AcceptedFindings, MayLeaveOutWhatDoesNotMatter) {
    vex::Verification found = twoLeaks();
    AcceptedFindings accepted{entryFor(std::nullopt, std::nullopt)};
    accept(found, accepted);
    EXPECT_EQ(found.outcome(), vex::VerifyOutcome::Clean);
}

TEST(AcceptedFindings, HoldForUsersAlikeWhenTheyDoForEach) {
    vex::Verification found = twoLeaks();
    found.users[0].alike = {"bea"};
    AcceptedFindings accepted{entryFor("ann", "a")};
    accept(found, accepted);
    EXPECT_FALSE(found.users[0].findings[0].isAccepted);
    accepted.push_back(entryFor("bea", "a"));
    accept(found, accepted);
    EXPECT_TRUE(found.users[0].findings[0].isAccepted);
}

TEST(AcceptedFindings, NeverHoldACheckThatDidNotFinish) {
    vex::Verification found{"m.xml", {vex::tellUnfinished("ann", "too large")}, {}};
    AcceptedFinding everything;
    everything.user = "ann";
    AcceptedFindings accepted{everything};
    accept(found, accepted);
    EXPECT_EQ(found.outcome(), vex::VerifyOutcome::Unfinished);
    EXPECT_TRUE(acceptAll(found, {}).empty());
}

TEST(AcceptedFindings, OfAllThatIsFoundAcceptAllOfIt) {
    vex::Verification found = twoLeaks();
    found.users[0].alike = {"bea"};
    found.users[0].findings.push_back({.kind = VerifyKind::Required}); // needs no accepting
    found.addUnrestricted("nobody is restricted");
    AcceptedFindings accepted = acceptAll(found, {});
    EXPECT_EQ(accepted.size(), 5U);
    accept(found, accepted);
    EXPECT_EQ(found.outcome(), vex::VerifyOutcome::Clean);
}

} // namespace

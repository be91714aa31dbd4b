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

TEST(AcceptedFindings, NeverHoldWhatNobodyVerified) {
    vex::Verification odd{"m.xml", {vex::tellNotVerified("ann", "code 77")}, {}};
    vex::Verification nobody{"m.xml", {vex::tellRefusal("nora", "No view.")}, {}};
    nobody.addNobodyCompared();
    for (vex::Verification* const found : {&odd, &nobody}) {
        vex::VerifyOutcome const outcome = found->outcome();
        AcceptedFindings accepted{AcceptedFinding()}; // whatever it is
        accept(*found, accepted);
        EXPECT_EQ(found->outcome(), outcome);
        EXPECT_TRUE(acceptAll(*found, {}).empty());
    }
}

/// Ann has leaks, ben's check came to no end, nora may see nothing.
vex::Verification ofThree() {
    vex::Verification found = twoLeaks();
    found.users.push_back(vex::tellUnfinished("ben", "too large"));
    found.users.push_back(vex::tellRefusal("nora", "No view."));
    return found;
}

TEST(AcceptedFindings, AreNoLongerFoundOnlyWhereSomebodyWasCompared) {
    vex::Verification found = ofThree();
    auto const isGone = [&](std::optional<std::string> user) {
        return vex::ComparedUsers(found).isNoLongerFound(entryFor(std::move(user), "gone"));
    };
    EXPECT_TRUE(isGone("ann"));
    EXPECT_FALSE(isGone("ben"));
    EXPECT_FALSE(isGone("nora"));
    EXPECT_TRUE(isGone("left")); // the catalogue has no such user any more
    EXPECT_FALSE(isGone(std::nullopt));
    found.users.erase(found.users.begin() + 1);
    EXPECT_TRUE(isGone(std::nullopt));
    found.isOfAllUsers = false;
    EXPECT_TRUE(isGone("ann"));
    EXPECT_FALSE(isGone("left"));
    EXPECT_FALSE(isGone(std::nullopt));
}

TEST(AcceptedFindings, OfThoseWhoWereNotComparedStayInABaseline) {
    vex::Verification found = ofThree();
    found.isOfAllUsers = false;
    AcceptedFindings accepted{entryFor("ben", "b"), entryFor("cid", "c"), entryFor("ann", "gone"),
                              entryFor("ann", "a"), entryFor(std::nullopt, "x")};
    accept(found, accepted);
    std::vector<std::pair<std::string, std::string>> kept;
    for (AcceptedFinding const& entry : acceptAll(found, accepted)) {
        kept.emplace_back(entry.user.value_or(""), *entry.object);
    }
    EXPECT_EQ(kept, (std::vector<std::pair<std::string, std::string>>{
                        {"ben", "b"}, {"cid", "c"}, {"ann", "a"}, {"", "x"}, {"ann", "b"}}));
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

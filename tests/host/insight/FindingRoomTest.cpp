#include "host/insight/FindingRoom.h"

#include <gtest/gtest.h>

namespace {

using vex::AcceptedFinding;
using vex::AcceptedFindings;
using vex::VerifyFinding;
using vex::VerifyKind;

VerifyFinding findingOf(VerifyKind kind, std::string const& id, std::size_t textLength = 10) {
    VerifyFinding finding;
    finding.kind = kind;
    finding.object.id = id;
    finding.text = std::string(textLength, 'a');
    return finding;
}

vex::UserVerification compared(std::string const& user) {
    vex::UserVerification told;
    told.user = user;
    told.objects = 9;
    return told;
}

class FindingRoom : public testing::Test {
protected:
    /// A verification of ann with these findings; what is past the limit met `accepted`.
    vex::Verification verify(std::vector<VerifyFinding> const& findings,
                             AcceptedFindings& accepted) const {
        vex::AcceptedIndex index(accepted);
        vex::FindingRoom room(2, index);
        vex::UserVerification ann = compared("ann");
        for (VerifyFinding const& each : findings) {
            room.add(ann, each);
        }
        vex::Verification whole{"m.xml", {ann}, {}};
        accept(whole, accepted);
        return whole;
    }

    std::vector<VerifyFinding> const m_threeLeaks{findingOf(VerifyKind::Leak, "a"),
                                                  findingOf(VerifyKind::Leak, "b"),
                                                  findingOf(VerifyKind::Leak, "c")};
};

TEST_F(FindingRoom, KeepsSoManyOfEachKindAndCountsAll) {
    AcceptedFindings nothing;
    std::vector<VerifyFinding> findings = m_threeLeaks;
    findings.push_back(findingOf(VerifyKind::Required, "d"));
    vex::Verification const found = verify(findings, nothing);
    EXPECT_EQ(found.users[0].findings.size(), 3U);
    EXPECT_EQ(found.count(VerifyKind::Leak), 3U);
    EXPECT_EQ(found.count(VerifyKind::Required), 1U);
    EXPECT_EQ(found.leftOut().open, 1U);
    EXPECT_EQ(found.outcome(), vex::VerifyOutcome::Leaking);
}

TEST_F(FindingRoom, LeavesNothingCleanThatIsPastTheLimitAndNotAccepted) {
    AcceptedFinding ofA;
    ofA.object = "a";
    AcceptedFindings accepted{ofA};
    std::vector<VerifyFinding> findings = m_threeLeaks;
    findings.push_back(findingOf(VerifyKind::Leak, "d"));
    vex::Verification const found = verify(findings, accepted);
    EXPECT_EQ(found.accepted(), 1U);
    EXPECT_EQ(found.count(VerifyKind::Leak), 3U);
    EXPECT_EQ(found.leftOut().open, 1U);
    EXPECT_FALSE(found.isClean());
}

TEST_F(FindingRoom, OfWhatIsAcceptedIsNoneOfTheOthers) {
    AcceptedFinding ofA;
    ofA.object = "a";
    AcceptedFindings accepted{ofA};
    vex::Verification const found = verify(m_threeLeaks, accepted);
    EXPECT_EQ(found.users[0].findings.size(), 3U);
    EXPECT_EQ(found.leftOut().open + found.leftOut().accepted, 0U);
}

TEST_F(FindingRoom, AcceptsWhatIsPastTheLimitLikeAnythingElse) {
    AcceptedFinding anyLeak;
    anyLeak.kind = "leak";
    AcceptedFinding ofC;
    ofC.object = "c";
    AcceptedFindings accepted{anyLeak, ofC};
    vex::Verification const found = verify(m_threeLeaks, accepted);
    EXPECT_TRUE(found.isClean());
    EXPECT_EQ(found.accepted(), 3U);
    EXPECT_EQ(found.leftOut().accepted, 1U);
    EXPECT_TRUE(accepted[1].isUsed);
    EXPECT_FALSE(vex::ComparedUsers(found).isNoLongerFound(accepted[1]));
}

TEST_F(FindingRoom, PutsWhatIsPastTheLimitIntoNoBaseline) {
    AcceptedFindings nothing;
    vex::Verification found = verify(m_threeLeaks, nothing);
    AcceptedFindings baseline = acceptAll(found, nothing);
    EXPECT_EQ(baseline.size(), 2U);
    accept(found, baseline);
    EXPECT_EQ(found.count(VerifyKind::Leak), 1U);
    EXPECT_FALSE(found.isClean());
}

TEST_F(FindingRoom, IsTakenSeveralTimesByALongFinding) {
    AcceptedFindings nothing;
    vex::Verification const found =
        verify({findingOf(VerifyKind::Leak, "a"), findingOf(VerifyKind::Leak, "b", 1'500),
                findingOf(VerifyKind::Leak, "c")},
               nothing);
    ASSERT_EQ(found.users[0].findings.size(), 2U);
    EXPECT_EQ(found.users[0].findings[1].object.id, "c");
    EXPECT_EQ(found.count(VerifyKind::Leak), 3U);
}

TEST_F(FindingRoom, IsThatOfAllUsersAndIsGivenBackForThoseWhoAreNotFinished) {
    AcceptedFindings nothing;
    vex::AcceptedIndex index(nothing);
    vex::FindingRoom room(2, index);
    vex::UserVerification ann = compared("ann");
    room.add(ann, m_threeLeaks[0]);
    room.add(ann, m_threeLeaks[1]);
    vex::UserVerification ben = compared("ben");
    room.add(ben, m_threeLeaks[2]);
    EXPECT_TRUE(ben.findings.empty());
    EXPECT_EQ(ben.count(VerifyKind::Leak), 1U);
    room.giveBack(ann);
    vex::UserVerification cid = compared("cid");
    room.add(cid, m_threeLeaks[2]);
    EXPECT_EQ(cid.findings.size(), 1U);
}

} // namespace

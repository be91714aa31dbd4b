#include "host/protocol/JunitVerification.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using vex::VerifyKind;

vex::Verification withLeaks(std::size_t count) {
    vex::UserVerification ann;
    ann.user = "a<n>n";
    ann.objects = 7;
    for (std::size_t number = 0; number < count; ++number) {
        ann.findings.push_back(
            {.kind = VerifyKind::Leak, .text = "leak & " + std::to_string(number)});
    }
    return {"m.xml", {ann, vex::tellRefusal("nora", "No \"view\".")}, {}};
}

TEST(JunitVerification, HasATestForEachKindOfEachUser) {
    std::string const text = vex::toJunit(withLeaks(0), 10);
    EXPECT_THAT(text, HasSubstr("<testsuites name=\"vexma verify\" tests=\"9\" failures=\"0\">"));
    EXPECT_THAT(text, HasSubstr("<testsuite name=\"a&lt;n&gt;n\" tests=\"6\" failures=\"0\" "
                                "skipped=\"0\">"));
    EXPECT_THAT(text, HasSubstr("<skipped message=\"every request is refused: No "
                                "&quot;view&quot;.\"/>"));
}

TEST(JunitVerification, FailsTheTestOfWhatWasFoundAndCapsIt) {
    std::string const text = vex::toJunit(withLeaks(3), 2);
    EXPECT_THAT(text, HasSubstr("<failure type=\"leak\" message=\"3: A text of a visible object"));
    EXPECT_THAT(text, HasSubstr("leak &amp; 0\nleak &amp; 1\nand 1 more; --all shows them\n"));
    EXPECT_THAT(text, Not(HasSubstr("leak &amp; 2")));
}

TEST(JunitVerification, CountsWhatFailsNoTest) {
    vex::Verification found = withLeaks(0);
    found.users[0].findings.push_back({.kind = VerifyKind::HiddenContainer});
    EXPECT_THAT(vex::toJunit(found, 10),
                HasSubstr("    <properties>\n      <property name=\"join-key\" value=\"0\"/>\n"
                          "      <property name=\"hidden-container\" value=\"1\"/>\n"
                          "      <property name=\"required\" value=\"0\"/>\n"
                          "    </properties>\n    <testcase"));
}

TEST(JunitVerification, FailsForWhoeverWasNotVerified) {
    vex::Verification found = withLeaks(0);
    found.users.push_back(vex::tellNotVerified("dan", "code 77"));
    std::string const text = vex::toJunit(found, 10);
    EXPECT_THAT(text, HasSubstr("<testsuite name=\"dan\" tests=\"1\" failures=\"1\""));
    EXPECT_THAT(text, HasSubstr("<failure type=\"not-verified\""));
}

TEST(JunitVerification, FailsWhenNobodyIsRestricted) {
    vex::Verification found = withLeaks(0);
    found.addUnrestricted("nobody is restricted");
    EXPECT_THAT(vex::toJunit(found, 10), HasSubstr("<failure type=\"unrestricted\""));
}

TEST(JunitVerification, LetsOneOfUsersAlikeFailForEach) {
    vex::Verification found = withLeaks(1);
    found.users[0].alike = {"bea"};
    EXPECT_THAT(vex::toJunit(found, 10), HasSubstr("<testsuite name=\"bea\" tests=\"6\" "
                                                   "failures=\"1\""));
}

} // namespace

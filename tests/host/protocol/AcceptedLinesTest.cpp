#include "host/protocol/AcceptedLines.h"

#include "host/store/image/HostException.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

std::string complaintAbout(char const* text) {
    try {
        vex::readAccepted(text, "known.jsonl");
    } catch (vex::HostException const& problem) {
        return problem.what();
    }
    return "";
}

TEST(AcceptedLines, AreAnEntryEachButCommentsAndEmptyOnes) {
    vex::AcceptedFindings const accepted = vex::readAccepted(
        "# known\n\n{\"kind\": \"leak\", \"object\": \"a\", \"because\": \"the name is public\"}\n"
        "{\"user\": \"ann\", \"cause\": \"start\"}",
        "known.jsonl");
    ASSERT_EQ(accepted.size(), 2U);
    EXPECT_EQ(accepted[0].kind, "leak");
    EXPECT_EQ(accepted[0].object, "a");
    EXPECT_EQ(accepted[0].because, "the name is public");
    EXPECT_FALSE(accepted[0].user);
    EXPECT_EQ(accepted[1].user, "ann");
}

TEST(AcceptedLines, AreWrittenAsTheyAreRead) {
    char const* const text = "{\"kind\":\"leak\",\"user\":\"ann\",\"names\":\"[S].[\\\"x\\\"]\"}\n"
                             "{\"object\":\"a\",\"because\":\"known\"}\n";
    EXPECT_EQ(vex::writeAccepted(vex::readAccepted(text, "known.jsonl")), text);
}

TEST(AcceptedLines, ThatCannotBeReadAreNamedWithWhatMayStandThere) {
    EXPECT_EQ(complaintAbout("{\"kind\": \"leak\"}\nleak"), "known.jsonl:2: this is no JSON");
    EXPECT_THAT(complaintAbout("[1]"), HasSubstr("known.jsonl:1: an entry is a JSON object"));
    EXPECT_THAT(complaintAbout("{\"knid\": \"leak\"}"), HasSubstr("there is no \"knid\"; write "
                                                                  "kind, user, object"));
    EXPECT_THAT(complaintAbout("{\"kind\": \"leek\"}"), HasSubstr("the kinds are leak, "));
    EXPECT_THAT(complaintAbout("{\"kind\": 7}"), HasSubstr("\"kind\" needs a text"));
    EXPECT_THAT(complaintAbout("{\"because\": \"everything\"}"), HasSubstr("accept everything"));
}

} // namespace

#include "tests/host/insight/FindingsOf.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vex::notesOf;
using vex::warningsOf;

std::string view(std::string const& id, std::string const& attributes, std::string const& content) {
    return "<securityView id='" + id + "' " + attributes + '>' + content + "</securityView>\n";
}

constexpr char const* setOfA = "<set kind='included'><item>a</item></set>";
constexpr char const* namespaceA = "<namespace id='a' name='A'/>\n";

TEST(ViewChecks, FindASetEntryThatNamesNoObject) {
    EXPECT_THAT(
        warningsOf(view("v", "", "<set kind='included'>\n<item>none</item>\n<item/></set>")),
        ElementsAre("set-entry-without-object@3", "set-entry-without-object@4"));
}

TEST(ViewChecks, FindAViewWithoutEntries) {
    EXPECT_THAT(warningsOf(view("v", "", "") + view("w", "", "<set kind='included'/>")),
                ElementsAre("view-without-set@2", "view-without-set@3"));
}

TEST(ViewChecks, LeaveAnEmptyDefaultViewAlone) {
    EXPECT_THAT(warningsOf(view("v", "roleBased='1'", "")), IsEmpty());
}

TEST(ViewChecks, FindAKindThatIsNone) {
    EXPECT_THAT(warningsOf(namespaceA + view("v", "", "<set kind='Included'><item>a</item></set>")),
                ElementsAre("unknown-set-kind@3"));
}

TEST(ViewChecks, FindASecondMember) {
    EXPECT_THAT(warningsOf(namespaceA + view("v", "roleBased='true'",
                                             "<member roleId='r'/>\n<member roleId='s'/>" +
                                                 std::string(setOfA))),
                ElementsAre("ignored-member@4"));
}

TEST(ViewChecks, FindADefaultViewThatALaterOneReplaces) {
    EXPECT_THAT(warningsOf(namespaceA + view("v", "roleBased='true'", setOfA) +
                           view("w", "roleBased='true'", setOfA)),
                ElementsAre("replaced-default-view@3"));
}

TEST(ViewChecks, NoteWhatNoViewIncludes) {
    EXPECT_THAT(notesOf("<namespace id='a' name='A'>\n<x id='b' name='B'/>\n<x name='C'/>\n"
                        "<shortcut name='S' refobj='[A].[B]'/></namespace>" +
                        view("v", "", setOfA)),
                ElementsAre("object-in-no-view@3", "object-in-no-view@4"));
}

TEST(ViewChecks, CountAnObjectThatIsOnlyExcludedAsInNoView) {
    EXPECT_THAT(notesOf(namespaceA + view("v", "", "<set kind='excluded'><item>a</item></set>")),
                ElementsAre("object-in-no-view@2"));
}

TEST(ViewChecks, NoteNothingInAModelWithoutViews) {
    EXPECT_THAT(notesOf(namespaceA), IsEmpty());
}

} // namespace

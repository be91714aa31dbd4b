#include "tests/host/insight/FindingsOf.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vex::findingsOf;
using vex::notesOf;
using vex::warningsOf;

std::string item(std::string const& english, std::string const& german,
                 std::string const& japanese) {
    return "<x><property name='name' locale='en'>" + english +
           "</property><property name='name' locale='de'>" + german +
           "</property><property name='name' locale='ja'>" + japanese + "</property></x>\n";
}

/// "line text" of each name that leads a start path elsewhere.
std::vector<std::string> caughtIn(std::string const& elements) {
    std::vector<std::string> caught;
    for (vex::Diagnostic const& each :
         findingsOf("<namespace name='N'>" + elements + "</namespace>")) {
        if (each.rule == "astray-name") {
            caught.push_back(std::to_string(each.line) + ' ' + each.text);
        }
    }
    return caught;
}

TEST(NameChecks, FindTheNameInALanguageThatStandsAtTheMembersOwnPlace) {
    EXPECT_THAT(caughtIn(item("A", "Aa", "Aaa") + item("B", "Bb", "Bbb") + item("C", "Cc", "Ccc") +
                         item("D", "Dd", "Ddd")),
                ElementsAre("3 a start path with the name \"Bb\" (de) leads to \"A\", the first "
                            "beside it; paths reach it by \"B\"",
                            "4 a start path with the name \"Ccc\" (ja) leads to \"A\", the first "
                            "beside it; paths reach it by \"C\""));
}

TEST(NameChecks, FindANameForAllLanguagesThatNoPathReaches) {
    auto const caught = caughtIn("<x name='A'/>\n<x name='B'/>");
    ASSERT_EQ(caught.size(), 1U);
    EXPECT_THAT(caught[0], HasSubstr("\"B\" (en), \"B\" (de), \"B\" (ja) leads to \"A\""));
    EXPECT_THAT(caught[0], HasSubstr("no path reaches it; start at it by id"));
}

TEST(NameChecks, CountWhatTheyFindInOneWarningForTheModel) {
    std::vector<std::string> counts;
    for (std::string const elements :
         {"<x name='A'/><x name='B'/>", "<x name='A'/><x name='B'/><x name='C'/>",
          "<x name='A'/>"}) {
        for (vex::Diagnostic const& each :
             findingsOf("<namespace name='N'>" + elements + "</namespace>")) {
            if (each.rule == "unreachable-by-path") {
                EXPECT_EQ(each.severity, vex::Severity::Warning);
                EXPECT_EQ(each.line, 1U);
                EXPECT_THAT(each.text, HasSubstr("vexma --id"));
                counts.push_back(each.text.substr(0, each.text.find(" a start path")));
            }
        }
    }
    EXPECT_THAT(counts, ElementsAre("the name of 1 object leads", "the names of 2 objects lead"));
}

TEST(NameChecks, FindANameThatAnotherMemberHasInTheLanguageOfItsPlace) {
    EXPECT_THAT(caughtIn(item("A", "Aa", "Aaa") + item("B", "Dd", "Bbb") + item("C", "Cc", "C") +
                         item("D", "Dd", "Ddd")),
                ElementsAre(HasSubstr("3 "), HasSubstr("4 "), HasSubstr("5 ")));
}

TEST(NameChecks, LeaveTheNameOfTheFirstMemberToIt) {
    EXPECT_THAT(caughtIn(item("A", "B", "B") + item("C", "B", "D")), IsEmpty());
}

TEST(NameChecks, LookAtMembersOfOneClassTogether) {
    EXPECT_THAT(caughtIn(item("A", "Aa", "Aaa") + "<y name='B'/>"), IsEmpty());
}

TEST(NameChecks, LeaveWhatStandsOutsideOfNamespacesAlone) {
    EXPECT_THAT(findingsOf("<z>" + item("A", "Aa", "Aaa") + item("B", "Bb", "Bbb") + "</z>"),
                IsEmpty());
}

TEST(TranslationChecks, FindTheLanguagesWithoutName) {
    auto const found =
        findingsOf("<namespace>\n<property name='name' locale='en'>A</property></namespace>");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].rule, "untranslated-name");
    EXPECT_EQ(found[0].text, "\"A\" has no name in de, ja");
}

TEST(TranslationChecks, FindAValueWithoutText) {
    EXPECT_THAT(warningsOf(item("A", "", "A")), ElementsAre("untranslated-name@2"));
}

TEST(TranslationChecks, NoteOtherPropertiesThatSomeLanguagesLack) {
    EXPECT_THAT(notesOf("<namespace name='A'>\n<x name='B'>"
                        "<property name='tip' locale='de'>T</property></x></namespace>"),
                ElementsAre("untranslated-property@3"));
}

TEST(TranslationChecks, TakeAValueForAllLanguagesAsATranslation) {
    EXPECT_THAT(findingsOf("<namespace name='A'><property name='name' locale='de'>B</property>"
                           "</namespace>"),
                IsEmpty());
}

} // namespace

#include "host/insight/RequestDocumentChecks.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// "line: text" of each finding.
std::vector<std::string> problemsOf(std::string const& xml) {
    std::vector<std::string> problems;
    for (vex::Diagnostic const& each : vex::checkRequestDocument(vex::outlineOf(xml), "r.xml")) {
        EXPECT_EQ(each.severity, vex::Severity::Warning);
        EXPECT_EQ(each.file, "r.xml");
        problems.push_back(std::to_string(each.line) + ": " + each.text);
    }
    return problems;
}

TEST(RequestDocumentChecks, FindNothingInWhatIsRead) {
    EXPECT_THAT(problemsOf("<?xml version='1.0'?><Envelope><Metadata xmlns='x' xml:space='default' "
                           "Depth=' -2' start_at='[A]' start_atPath='' start_atRef='' "
                           "authoringLocale='en' xml:lang='en' securityView='v' function=''>\n"
                           "<Property name='*/@name' other='*/x'/><Constraint c='./@a=[b]'/>"
                           "<Functions scope='package'/></Metadata></Envelope>"),
                IsEmpty());
}

TEST(RequestDocumentChecks, NameTheNearestAttribute) {
    EXPECT_THAT(
        problemsOf("<Metadata Dept='2'\n start_ad='[A]' colour='x'/>"),
        ElementsAre(
            "2: nothing reads the attribute \"Dept\" of the element \"Metadata\"; did you mean "
            "Depth?",
            "2: nothing reads the attribute \"start_ad\" of the element \"Metadata\"; did you mean "
            "start_at?",
            "2: nothing reads the attribute \"colour\" of the element \"Metadata\""));
}

TEST(RequestDocumentChecks, NameTheNearestElement) {
    EXPECT_THAT(problemsOf("<Metadata>\n<Propery name='*/@name'/>\n<Sort by='name'/>\n"
                           "<metadata><Property n='*/x'/></metadata></Metadata>"),
                ElementsAre("2: nothing reads the element \"Propery\"; did you mean Property?",
                            "3: nothing reads the element \"Sort\"",
                            "4: nothing reads the element \"metadata\"; did you mean Metadata?"));
}

TEST(RequestDocumentChecks, FindElementsThatSayNothing) {
    EXPECT_THAT(problemsOf("<Metadata>\n<Property>*/@name</Property>\n<Functions/></Metadata>"),
                ElementsAre("2: the element \"Property\" has no attribute, so it says nothing",
                            "2: nothing reads the text \"*/@name\" in the element \"Property\"; "
                            "write it as an attribute",
                            "3: the element \"Functions\" has no attribute, so it says nothing"));
}

TEST(RequestDocumentChecks, FindADepthThatIsNoNumber) {
    EXPECT_THAT(problemsOf("<Metadata Depth='two'/>"),
                ElementsAre("1: the Depth \"two\" is no whole number; it is read as far as it is "
                            "one, and as 0, everything, where it is none"));
    EXPECT_THAT(problemsOf("<Metadata Depth='2.5'/>"), testing::SizeIs(1));
    EXPECT_THAT(problemsOf("<Metadata Depth=''/>"), IsEmpty());
}

TEST(RequestDocumentChecks, FindAnOptionThatIsOverruled) {
    EXPECT_THAT(problemsOf("<R><Metadata Depth='1'/>\n<Metadata Depth='1'/>"
                           "<Metadata Depth='2'/></R>"),
                ElementsAre("2: the attribute \"Depth\" stands here for the second time, as \"2\"; "
                            "the first counts, \"1\""));
}

TEST(RequestDocumentChecks, QuoteNoMoreThanTheBeginning) {
    EXPECT_THAT(problemsOf("<Metadata>" + std::string(1'000, 'x') + "</Metadata>"),
                ElementsAre("1: nothing reads the text \"" + std::string(40, 'x') +
                            "...\" in the element \"Metadata\"; write it as an attribute"));
}

TEST(RequestDocumentChecks, FindFiftyAtMost) {
    std::string elements;
    for (int count = 0; count < 1'000; ++count) {
        elements += "<Sort/>";
    }
    std::vector<std::string> const problems = problemsOf("<Metadata>" + elements + "</Metadata>");
    ASSERT_EQ(problems.size(), 51U);
    EXPECT_EQ(problems.back(), "1: what follows was not looked at; correct this first");
}

TEST(DocumentOutline, TellsElementsInOrderWithWhatIsAroundThem) {
    auto const outline = vex::outlineOf("<a>\n<b x='1' y='&lt;'> t <c/>u </b></a>");
    ASSERT_EQ(outline.size(), 3U);
    EXPECT_EQ(outline[0].container, vex::OutlinedElement::None);
    EXPECT_EQ(outline[1].tag, "b");
    EXPECT_EQ(outline[1].container, 0U);
    EXPECT_EQ(outline[1].position.line, 2U);
    EXPECT_EQ(outline[1].text, "t u");
    EXPECT_EQ(outline[1].attributes[1].second, "<");
    EXPECT_EQ(outline[2].container, 1U);
}

TEST(DocumentOutline, EndsWhereADocumentCannotBeRead) {
    EXPECT_THAT(vex::outlineOf(""), IsEmpty());
    EXPECT_THAT(vex::outlineOf("<!DOCTYPE a><a/>"), IsEmpty());
    EXPECT_THAT(vex::outlineOf("<a><b></a>"), testing::SizeIs(2));
}

} // namespace

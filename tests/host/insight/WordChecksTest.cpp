#include "host/insight/KnownWords.h"
#include "tests/host/insight/FindingsOf.h"

#include <fstream>
#include <regex>

#include <gmock/gmock.h>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vex::findingsOf;
using vex::warningsOf;

std::string inNamespace(std::string const& content) {
    return "<namespace name='A'>\n" + content + "</namespace>";
}

TEST(WordChecks, FindAMisspeltClassThatHasAMeaning) {
    auto const found = findingsOf(inNamespace("<querySubjct name='B'/>"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].rule, "misspelt-class");
    EXPECT_EQ(found[0].line, 3U);
    EXPECT_EQ(found[0].text, "the class is \"querySubjct\"; did you mean querySubject?");
}

TEST(WordChecks, FindAPropertyElementThatBecameAnObject) {
    EXPECT_THAT(warningsOf(inNamespace("<propery name='x'>y</propery>")),
                ElementsAre("misspelt-class@3"));
}

TEST(WordChecks, FindAMisspeltPropertyThatHasAMeaning) {
    auto const found =
        findingsOf(inNamespace("<x name='B' screentip='y'>\n<property name='usgae'>fact</property>"
                               "</x>"));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].text, "the x \"B\" has the property \"screentip\"; did you mean screenTip?");
    EXPECT_EQ(found[1].text, "the x \"B\" has the property \"usgae\"; did you mean usage?");
}

TEST(WordChecks, FindAWordThatIsAlmostOneUsedOften) {
    std::string often;
    for (int count = 0; count < 10; ++count) {
        often += "<measure name='M" + std::to_string(count) + "' currency='EUR'/>";
    }
    EXPECT_THAT(warningsOf(inNamespace(often + "\n<mesure name='N' currency='EUR'/>\n"
                                               "<measure name='O' curency='EUR'/>")),
                ElementsAre("misspelt-class@4", "misspelt-property@5"));
    EXPECT_THAT(warningsOf(inNamespace("<measure name='M'/><mesure name='N'/>")), IsEmpty());
}

TEST(WordChecks, LeaveWordsOfTheModelsOwnAlone) {
    EXPECT_THAT(warningsOf(inNamespace("<folders name='B' rule='a' mind='b' colour='c'/>")),
                IsEmpty());
    std::string own;
    for (int count = 0; count < 10; ++count) { // often enough to be meant
        own += "<folded name='M" + std::to_string(count) + "'/>";
    }
    EXPECT_THAT(warningsOf(inNamespace(own)), IsEmpty());
}

TEST(WordChecks, FindADatatypeAndAUsageThatAreUnknown) {
    auto const textOf = [](std::string const& attributes) {
        auto const found = findingsOf(inNamespace("<queryItem name='B' " + attributes + "/>"));
        return found.size() == 1 ? found[0].text : std::to_string(found.size());
    };
    EXPECT_EQ(textOf("datatype='in32'"),
              "the datatype of the queryItem \"B\" is \"in32\"; did you mean int32?");
    EXPECT_THAT(textOf("datatype='money'"),
                AllOf(HasSubstr("\"money\"; known are string, "), HasSubstr(", dateTime, ")));
    EXPECT_EQ(textOf("usage='facts'"),
              "the usage of the queryItem \"B\" is \"facts\"; did you mean fact?");
    EXPECT_EQ(
        textOf("usage='both'"),
        "the usage of the queryItem \"B\" is \"both\"; known are attribute, identifier, fact");
}

TEST(WordChecks, LeaveDatatypesOfOtherClassesAlone) {
    EXPECT_THAT(warningsOf(inNamespace("<x name='B' datatype='money' usage='both'/>")), IsEmpty());
}

/// The values that the schema lists for an attribute.
std::vector<std::string> valuesInSchema(std::string const& attribute) {
    std::ifstream file(VEX_SOURCE_DIR "/schema/model.rng");
    std::string const text{std::istreambuf_iterator<char>(file), {}};
    std::size_t const begin = text.find("<attribute name=\"" + attribute + '"');
    std::string const part = text.substr(begin, text.find("</attribute>", begin) - begin);
    std::regex const value("<value>([^<]*)</value>");
    std::vector<std::string> values;
    for (std::sregex_iterator at(part.begin(), part.end(), value), end; at != end; ++at) {
        values.push_back((*at)[1]);
    }
    return values;
}

std::vector<std::string> texts(std::span<I18NString const> words) {
    std::vector<std::string> list;
    for (I18NString const& word : words) {
        list.push_back(word.toUtf8());
    }
    return list;
}

TEST(KnownWords, AreTheValuesThatTheSchemaLists) {
    EXPECT_EQ(texts(vex::KnownWords::datatypes()), valuesInSchema("datatype"));
    EXPECT_EQ(texts(vex::KnownWords::usages()), valuesInSchema("usage"));
}

} // namespace

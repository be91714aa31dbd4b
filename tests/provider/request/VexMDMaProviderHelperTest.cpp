// What a request document says.

#include "provider/request/VexMDMaProviderHelper.h"

#include "KRLIDOM_Helper.h"
#include "KRLIDOM_Reader.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using Texts = std::list<std::string>;
using TextMap = std::map<std::string, std::string>;

// A request document and what was read from it.
class Request {
public:
    explicit Request(std::string const& xml, char const* element = "Metadata")
        : m_document(KRLIDOM_Reader::parse(xml, "request")),
          m_helper(KRLIDOM_Helper::findFirstElement(m_document.document(), element)) {
        m_helper.ProcessClientRequest();
    }

    std::string option(char const* name) const {
        return m_helper.GetAttributeValueForAttribute(name).toUtf8();
    }
    Texts attributeRequests() const { return texts(m_helper.GetAttributeRequests()); }
    Texts collections(char const* className) const {
        std::list<I18NString> names;
        m_helper.GetCollectionsForClass(className, names);
        return texts(names);
    }
    TextMap constraints(char const* className) const {
        std::map<I18NString, I18NString> found;
        m_helper.GetConstraintsForClass(className, found);
        TextMap result;
        for (auto const& [key, value] : found) {
            result.emplace(key.toUtf8(), value.toUtf8());
        }
        return result;
    }

private:
    static Texts texts(std::list<I18NString> const& strings) {
        Texts result;
        for (I18NString const& string : strings) {
            result.push_back(string.toUtf8());
        }
        return result;
    }

    KRLIDOM_OwnedDocument m_document;
    VexMDMaProviderHelper m_helper;
};

std::string withConstraint(std::string const& text) {
    return "<Metadata><Constraint test='" + text + "'/></Metadata>";
}

TEST(RequestDocument, GivesTheAttributesOfMetadataAsOptions) {
    Request const request("<Metadata Depth='2' start_at='[Sales]' securityView='v1'/>");
    EXPECT_EQ(request.option("Depth"), "2");
    EXPECT_EQ(request.option("start_at"), "[Sales]");
    EXPECT_EQ(request.option("securityView"), "v1");
}

TEST(RequestDocument, GivesNothingForAnOptionThatIsAbsentOrEmpty) {
    Request const request("<Metadata function=''/>");
    EXPECT_EQ(request.option("Depth"), "");
    EXPECT_EQ(request.option("function"), "");
    EXPECT_EQ(request.option("depth"), "");
}

TEST(RequestDocument, KeepsTheFirstValueOfAnOption) {
    Request const request("<r><Metadata Depth='1'/><Metadata Depth='2' start_at='[b]'/></r>");
    EXPECT_EQ(request.option("Depth"), "1");
    EXPECT_EQ(request.option("start_at"), "[b]");
}

TEST(RequestDocument, TakesAFunctionsElementWithAttributesForAFunctionRequest) {
    Request const request("<Metadata><Functions kind='x'/></Metadata>");
    EXPECT_EQ(request.option("function"), "1");
    EXPECT_EQ(request.option("kind"), "x");
}

// covers quirk: functions-mark-rides-on-attributes
TEST(RequestDocument, TakesAFunctionsElementWithoutAttributesForNothing) {
    EXPECT_EQ(Request("<Metadata><Functions/></Metadata>").option("function"), "");
}

TEST(RequestDocument, PrefersTheMarkToAFunctionAttributeOfTheFunctionsElement) {
    EXPECT_EQ(Request("<Metadata><Functions function='x'/></Metadata>").option("function"), "1");
}

TEST(RequestDocument, PrefersTheFunctionOptionOfMetadataWhenThatComesFirst) {
    Request const request("<Metadata function='f'><Functions a='1'/></Metadata>");
    EXPECT_EQ(request.option("function"), "f");
}

TEST(RequestDocument, TellsPropertyRequestsFromCollectionRequestsByTheAtSign) {
    Request const request("<Metadata><Property a='./@name'/><Property a='./querySubject'/>"
                          "<Property a='mail@x'/><Property a='/@defaultLocale'/></Metadata>");
    EXPECT_EQ(request.attributeRequests(), (Texts{"./@name", "mail@x", "/@defaultLocale"}));
    EXPECT_EQ(request.collections("model"), (Texts{"querySubject", "shortcut", "namespace"}));
}

TEST(RequestDocument, KeepsRepeatedRequests) {
    Request const request("<Metadata><Property a='./@x'/><Property a='./@x'/></Metadata>");
    EXPECT_EQ(request.attributeRequests(), (Texts{"./@x", "./@x"}));
}

TEST(RequestDocument, TakesEachAttributeOfAPropertyForARequest) {
    Request const request("<Metadata><Property a='./@x' b='./@y'/></Metadata>");
    Texts found = request.attributeRequests();
    found.sort(); // a map of attributes has its own order
    EXPECT_EQ(found, (Texts{"./@x", "./@y"}));
}

TEST(RequestDocument, ReadsAllOfTheDocumentWhereverMetadataStands) {
    Request const request("<Property a='./@root'><Other><Metadata Depth='3'>"
                          "<Unknown a='1'><Property a='./@inside'/></Unknown></Metadata></Other>"
                          "<Property a='./@after'/></Property>");
    EXPECT_EQ(request.option("Depth"), "3");
    EXPECT_EQ(request.option("a"), "");
    EXPECT_EQ(request.attributeRequests(), (Texts{"./@root", "./@inside", "./@after"}));
}

TEST(RequestDocument, SkipsTextAndComments) {
    Request const request("<Metadata Depth='1'>text<!-- c --><Property a='./@x'/>more</Metadata>");
    EXPECT_EQ(request.attributeRequests(), Texts{"./@x"});
}

TEST(RequestDocument, TellsElementNamesByTheirCase) {
    Request const request("<Metadata><metadata Depth='1'/><property a='./@x'/>"
                          "<FUNCTIONS a='1'/><constraint c='./@x=[1]'/></Metadata>");
    EXPECT_EQ(request.option("Depth"), "");
    EXPECT_EQ(request.option("function"), "");
    EXPECT_EQ(request.attributeRequests(), Texts{});
    EXPECT_EQ(request.constraints("any"), TextMap{});
}

TEST(RequestDocument, ReadsTheWholeDocumentFromADocumentNode) {
    auto const document = KRLIDOM_Reader::parse("<r><Metadata Depth='4'/></r>", "request");
    VexMDMaProviderHelper helper(document.document());
    helper.ProcessClientRequest();
    EXPECT_EQ(helper.GetAttributeValueForAttribute("Depth").toUtf8(), "4");
}

TEST(RequestDocument, ReadsANodeWithWhatIsBelowAndAfterItAlone) {
    auto const document = KRLIDOM_Reader::parse(
        "<r x='1'><Metadata a='before'/><Metadata b='here'><Metadata c='below'/></Metadata>"
        "<Metadata d='after'/></r>",
        "request");
    KRLIDOM_Node const second =
        document.document().getDocumentElement().getFirstChild().getNextSibling();
    VexMDMaProviderHelper helper(second);
    helper.ProcessNode(second);
    EXPECT_EQ(helper.GetAttributeValueForAttribute("a").toUtf8(), "");
    EXPECT_EQ(helper.GetAttributeValueForAttribute("b").toUtf8(), "here");
    EXPECT_EQ(helper.GetAttributeValueForAttribute("c").toUtf8(), "below");
    EXPECT_EQ(helper.GetAttributeValueForAttribute("d").toUtf8(), "after");
}

TEST(RequestDocument, ReadsNothingFromTheNullNode) {
    VexMDMaProviderHelper helper{KRLIDOM_Node()};
    helper.ProcessClientRequest();
    helper.ProcessNode(KRLIDOM_Node());
    EXPECT_EQ(helper.GetAttributeRequests().size(), 0U);
}

TEST(ConstraintText, GivesAKeyAndTheValueInBrackets) {
    EXPECT_EQ(Request(withConstraint("./@usage=[fact]")).constraints("c"),
              (TextMap{{"usage", "fact"}}));
    EXPECT_EQ(Request(withConstraint("./@usage=[]")).constraints("c"), (TextMap{{"usage", ""}}));
}

TEST(ConstraintText, DropsTheOpeningCharacterWhateverItIs) {
    EXPECT_EQ(Request(withConstraint("./@a=xfact]")).constraints("c"), (TextMap{{"a", "fact"}}));
}

TEST(ConstraintText, EndsAtTheFirstClosingBracket) {
    EXPECT_EQ(Request(withConstraint("./@a=[x]y]")).constraints("c"), (TextMap{{"a", "x"}}));
}

TEST(ConstraintText, SplitsAtTheFirstEqualsSign) {
    EXPECT_EQ(Request(withConstraint("./@a=[b=c]")).constraints("c"), (TextMap{{"a", "b=c"}}));
}

TEST(ConstraintText, KeepsTheFirstValueOfAKey) {
    Request const request("<Metadata><Constraint c='./@a=[1]'/><Constraint c='./@a=[2]'/>"
                          "</Metadata>");
    EXPECT_EQ(request.constraints("c"), (TextMap{{"a", "1"}}));
}

TEST(ConstraintText, IsStoredAsItIsCutWhenNoBracketCloses) {
    EXPECT_EQ(Request(withConstraint("./@a=[fact")).constraints("c"), (TextMap{{"a", "fact"}}));
    EXPECT_EQ(Request(withConstraint("./@a=")).constraints("c"), (TextMap{{"a", ""}}));
    EXPECT_EQ(Request(withConstraint("./@a=]xy")).constraints("c"), (TextMap{{"a", "xy"}}));
}

TEST(ConstraintText, IsKeyAndValueAtOnceWithoutAnEqualsSign) {
    EXPECT_EQ(Request(withConstraint("./@abc")).constraints("c"), (TextMap{{"abc", "/@abc"}}));
    EXPECT_EQ(Request(withConstraint("./@ab]c")).constraints("c"), (TextMap{{"ab]c", "/@ab"}}));
}

} // namespace

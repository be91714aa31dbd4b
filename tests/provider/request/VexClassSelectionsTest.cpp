#include "provider/request/VexClassSelections.h"

#include "KRLIDOM_Reader.h"
#include "provider/request/VexMDMaProviderHelper.h"

#include <map>
#include <string>

#include <gtest/gtest.h>

namespace {

constexpr char const* selectingRequest = R"(<Metadata>
  <Property name="./@A"/><Property name="*/@B"/><Property name="c70/@C"/><Property name="c7/@D"/>
  <Property name="a/b/@E"/><Property name="./x"/><Property name="c70/y"/><Property name="a/b/z"/>
</Metadata>)";

} // namespace

// More classes than are kept one by one; the selectingRequest names some, and a host may give a
// class any name.
TEST(VexClassSelections, AreThoseOfTheRequestForEachOfManyClasses) {
    KRLIDOM_OwnedDocument const document = KRLIDOM_Reader::parse(selectingRequest, "request");
    VexMDMaProviderHelper helper(document.document().getDocumentElement());
    helper.ProcessClientRequest();
    VexClassSelections selections(helper);
    struct Selected {
        std::string properties;
        std::string collections;
    };
    std::map<std::string, Selected> const named{
        {"c70", {"A B C ", "x y shortcut namespace "}},
        {"c7", {"A B D ", "x shortcut namespace "}},
        {"a", {"A B ", "x b/z shortcut namespace "}},
        {"a/b", {"A B E ", "x z shortcut namespace "}},
        {".", {"A B A ", "x x shortcut namespace "}},
    };
    for (int round = 0; round < 2; ++round) {
        for (int number = -4; number < 200; ++number) {
            constexpr char const* odd[] = {"", "a", "a/b", "."};
            std::string const className =
                number < 0 ? odd[number + 4] : "c" + std::to_string(number);
            auto const expected = named.find(className);
            Selected found;
            for (auto const& property : selections.propertiesOf(className.c_str()).properties) {
                found.properties += property.name.toUtf8() + " ";
            }
            for (I18NString const& name : selections.collectionsOf(className.c_str()).names) {
                found.collections += name.toUtf8() + " ";
            }
            bool const isNamed = expected != named.end();
            EXPECT_EQ(found.properties, isNamed ? expected->second.properties : "A B ")
                << className;
            EXPECT_EQ(found.collections,
                      isNamed ? expected->second.collections : "x shortcut namespace ")
                << className;
        }
    }
    EXPECT_EQ(&selections.propertiesOf("c100"), &selections.propertiesOf("c101"));
    EXPECT_NE(&selections.propertiesOf("c70"), &selections.propertiesOf("c101"));
}

TEST(VexClassSelections, AClassThatTheRequestNamesIsItsOwnHoweverLateItIsMet) {
    KRLIDOM_OwnedDocument const document = KRLIDOM_Reader::parse(selectingRequest, "request");
    VexMDMaProviderHelper helper(document.document().getDocumentElement());
    helper.ProcessClientRequest();
    VexClassSelections selections(helper);
    for (int number = 100; number < 300; ++number) {
        selections.propertiesOf(("c" + std::to_string(number)).c_str());
        selections.collectionsOf(("c" + std::to_string(number)).c_str());
    }
    EXPECT_EQ(selections.propertiesOf("c70").properties.size(), 3U);
    EXPECT_EQ(selections.propertiesOf("a/b").properties.size(), 3U);
    EXPECT_EQ(selections.propertiesOf("b").properties.size(), 2U);
    EXPECT_EQ(selections.collectionsOf("c70").names.size(), 4U);
    EXPECT_EQ(selections.collectionsOf("b").names.size(), 3U);
}

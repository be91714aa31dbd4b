#include "provider/request/VexClassSelections.h"

#include "KRLIDOM_Reader.h"
#include "provider/request/VexMDMaProviderHelper.h"

#include <string>

#include <gtest/gtest.h>

namespace {

constexpr char const* request = R"(<Metadata>
  <Property name="./@A"/><Property name="*/@B"/><Property name="c70/@C"/><Property name="c7/@D"/>
  <Property name="a/b/@E"/><Property name="./x"/><Property name="c70/y"/><Property name="a/b/z"/>
</Metadata>)";

} // namespace

// More classes than are kept one by one; the request names some, and a host may give a class
// any name.
TEST(VexClassSelections, AreThoseOfTheRequestForEachOfManyClasses) {
    KRLIDOM_OwnedDocument const document = KRLIDOM_Reader::parse(request, "request");
    VexMDMaProviderHelper helper(document.document().getDocumentElement());
    helper.ProcessClientRequest();
    VexClassSelections selections(helper);
    for (int round = 0; round < 2; ++round) {
        for (int number = -4; number < 200; ++number) {
            constexpr char const* odd[] = {"", "a", "a/b", "."};
            I18NString const className(number < 0 ? std::string(odd[number + 4]).c_str()
                                                  : ("c" + std::to_string(number)).c_str());
            std::list<I18NString> names;
            helper.GetPropertiesForClass(className, names);
            VexPropertySelection const& selected = selections.propertiesOf(className);
            ASSERT_EQ(selected.properties.size(), names.size()) << className.c_str();
            auto name = names.begin();
            for (VexSelectedProperty const& property : selected.properties) {
                EXPECT_EQ(property.name, *name++) << className.c_str();
            }
            helper.GetCollectionsForClass(className, names);
            EXPECT_EQ(selections.collectionsOf(className).names, names) << className.c_str();
        }
    }
    EXPECT_EQ(&selections.propertiesOf("c100"), &selections.propertiesOf("c101"));
    EXPECT_NE(&selections.propertiesOf("c70"), &selections.propertiesOf("c101"));
}

TEST(VexClassSelections, AClassThatTheRequestNamesIsItsOwnHoweverLateItIsMet) {
    KRLIDOM_OwnedDocument const document = KRLIDOM_Reader::parse(request, "request");
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

#include "host/import/draft/DocumentText.h"

#include "host/import/xml/XmlText.h"

#include <gtest/gtest.h>

namespace {

I18NLocale german() {
    return I18NLocale(I18NString("de"));
}

vex::ImportDraft draftWith(std::string const& property, std::string const& value) {
    vex::ImportDraft draft;
    draft.model.setDefaultLocale(I18NLocale(I18NString("en")));
    std::size_t const space = draft.model.add(vex::ModelDraft::Root, "namespace", {"space"});
    draft.model.set(space, property, value);
    draft.model.settle({});
    return draft;
}

TEST(ModelDocumentText, HasOneFormForOneDraft) {
    vex::ImportDraft draft;
    draft.model.setDefaultLocale(I18NLocale(I18NString("en")));
    std::size_t const space = draft.model.add(vex::ModelDraft::Root, "namespace", {"space"});
    draft.model.set(space, "name", "Sales");
    draft.model.translate(space, "name", german(), " Vertrieb ");
    draft.views.push_back({.key = {"role", "[r]"}, .name = "r", .included = {space}});
    draft.views[0].id = draft.model.settle({&draft.views[0].key})[0];
    EXPECT_EQ(modelDocumentOf(draft), R"(<?xml version="1.0" encoding="UTF-8"?>
<model id="model" defaultLocale="en">
  <locales>
    <locale>en</locale>
  </locales>
  <namespace id="space" name="Sales">
    <property name="name" locale="de">Vertrieb</property>
  </namespace>
  <securityViews>
    <securityView id="role:[r]" name="r">
      <set kind="included">
        <item>space</item>
      </set>
    </securityView>
  </securityViews>
</model>
)");
}

TEST(ModelDocumentText, WritesWhatNoAttributeCanBeAsAnElement) {
    EXPECT_NE(modelDocumentOf(draftWith("a b", "x"))
                  .find("<namespace id=\"space\">\n    <property name=\"a b\">x</property>"),
              std::string::npos);
    EXPECT_NE(modelDocumentOf(draftWith("id", "x")).find("<property name=\"id\">x</property>"),
              std::string::npos);
}

TEST(ModelDocumentText, KeepsLineEndsAndMarksThatXmlWouldTurnIntoOthers) {
    EXPECT_NE(modelDocumentOf(draftWith("e", "a\n\t\"<&>\r"))
                  .find(R"(e="a&#10;&#9;&quot;&lt;&amp;&gt;&#13;")"),
              std::string::npos);
}

TEST(CatalogueDocumentText, PublishesTheModelUnderItsName) {
    vex::ImportDraft draft = draftWith("name", "Sales");
    draft.views.push_back({.key = {"role"}, .name = "r", .included = {}, .id = "v"});
    draft.grants.push_back({"r", 0});
    draft.addUser("ann", "r");
    draft.addUser("ann", "s");
    draft.addUser("ann", "r");
    EXPECT_EQ(catalogueDocumentOf(draft, "a & b"), R"(<?xml version="1.0" encoding="UTF-8"?>
<catalog>
  <model path="/content/a &amp; b" file="a &amp; b.model.xml">
    <grant role="r" view="v"/>
  </model>
  <user name="ann">
    <role>r</role>
    <role>s</role>
  </user>
</catalog>
)");
}

} // namespace

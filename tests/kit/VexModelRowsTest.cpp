#include "VexModelRows.h"

#include "KRLException.h"
#include "VexObject.h"
#include "tests/kit/Complaint.h"

#include <functional>
#include <sstream>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

void describeProperties(VexObject const& object, std::ostream& out);

/// All that an object says of itself in the languages "en", "de_AT" and none.
void describe(VEX_HANDLE handle, std::ostream& out) {
    VexObject const object(handle);
    I18NString text;
    object.GetName(text);
    out << '(' << text.c_str();
    text.clear();
    out << " id=" << (object.GetId(text) ? text.c_str() : "-");
    text.clear();
    out << " role=" << (object.GetRole(text) ? text.c_str() : "-");
    text.clear();
    out << " class=" << (object.GetClass(text) ? text.c_str() : "-");
    text.clear();
    out << " value=" << (object.GetValue(text, true) ? text.c_str() : "-");
    for (char const* const name : {"en", "de_AT", ""}) {
        I18NLocale const locale(name);
        VexObject const property(object.GetPropertyByName("name", &locale));
        text.clear();
        out << ' ' << name << '=' << (property.GetValue(text, true) ? text.c_str() : "-");
    }
    describeProperties(object, out);
    Vex_Handle_Collection members;
    object.childObjects(members, nullptr, nullptr);
    for (VEX_HANDLE const member : members) {
        describe(member, out);
    }
    out << ')';
}

void describeProperties(VexObject const& object, std::ostream& out) {
    Vex_Handle_Collection properties;
    object.Properties(properties, nullptr, nullptr, false);
    for (VEX_HANDLE const handle : properties) {
        VexObject const property(handle);
        I18NString name;
        property.GetName(name);
        I18NString value;
        I18NString role;
        Vex_Handle_Collection members;
        property.childObjects(members, nullptr, nullptr);
        property.GetValue(value, true);
        property.GetRole(role);
        out << " [" << name.c_str() << ':' << value.c_str() << ':' << role.c_str() << ':'
            << members.size();
        describeProperties(property, out);
        out << ']';
    }
}

std::string described(VexModel const& model) {
    std::ostringstream out;
    describe(model.store().GetRootObject(), out);
    return out.str();
}

TEST(ModelRows, SayWhatADocumentOfTheSameContentSays) {
    VexModelRows rows("en");
    rows.addLocale("en");
    rows.addLocale("de-AT");
    VexModelRows::Row const sales = rows.add(VexModelRows::Root, "namespace", "n");
    rows.addProperty(sales, "name", "Sales", "en");
    rows.addProperty(sales, "name", "Vertrieb", "de");
    VexModelRows::Row const views = rows.add(VexModelRows::Root, "securityView", "v");
    VexModelRows::Row const orders = rows.add(sales, "querySubject");
    rows.setId(orders, "q");
    rows.setRole(orders, "r");
    rows.setClass(orders, "c");
    rows.addProperty(orders, "name", "Orders");
    rows.addProperty(orders, "tag", "one", "", "tag role");
    rows.addProperty(orders, "tag", "two");
    VexModelRows::Row const set = rows.add(views, "set");
    rows.addProperty(set, "kind", "included");
    rows.setText(rows.add(set, "item"), "q");
    rows.add(orders, "queryItem", "i");
    rows.add(sales, "filter", "x");
    EXPECT_EQ(rows.size(), 8U);

    auto const document = VexModel::readText(
        R"(<model defaultLocale="en"><locales><locale>en</locale><locale>de_AT</locale></locales>
        <namespace id="n"><property name="name" locale="en">Sales</property>
        <property name="name" locale="de">Vertrieb</property>
        <querySubject id="q" role="r" class="c"><property name="name">Orders</property>
        <property name="tag" role="tag role">one</property><property name="tag">two</property>
        <queryItem id="i"/></querySubject><filter id="x"/></namespace>
        <securityView id="v"><set kind="included"><item>q</item></set></securityView></model>)",
        "document");
    std::shared_ptr<VexModel const> const model = rows.load();
    EXPECT_EQ(described(*model), described(*document));
    EXPECT_EQ(model->elementCount(), 8U);
    EXPECT_EQ(model->locales()[1].getName(), "de_AT");
    EXPECT_EQ(model->defaultLocale().getName(), "en");
}

TEST(ModelRows, HaveFiltersAndTheId) {
    VexModelRows rows("en");
    VexModelRows::Row const shop = rows.add(VexModelRows::Root, "namespace", "n");
    rows.add(shop, "folder", "f");
    VexModelRows::Row const item = rows.add(shop, "queryItem", "i");
    rows.setRole(item, "key");
    std::shared_ptr<VexModel const> const model = rows.load();
    VexObject const object(model->findById("n"));
    I18NString const className("queryItem");
    I18NString const role("key");
    I18NString const other("other");
    Vex_Handle_Collection found;
    object.childObjects(found, &className, nullptr);
    object.childObjects(found, nullptr, &role);
    EXPECT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0], model->findById("i"));
    EXPECT_EQ(found[1], model->findById("i"));
    object.childObjects(found, &className, &other);
    object.Properties(found, &other, nullptr, false);
    EXPECT_EQ(found.size(), 2U);
    I18NString id;
    EXPECT_TRUE(VexObject(object.GetPropertyByName("ID", nullptr)).GetValue(id, true));
    EXPECT_EQ(id, "n");
}

TEST(ModelRows, HaveTheIdsOfTheirViewsReady) {
    VexModelRows rows("en");
    VexModelRows::Row const view = rows.add(VexModelRows::Root, "securityView", "v");
    VexModelRows::Row const set = rows.add(view, "set");
    rows.addProperty(set, "kind", "included");
    rows.setText(rows.add(set, "item"), "n");
    std::shared_ptr<VexModel const> const model = rows.load();
    auto const ready =
        VexObject(model->store().GetRootObject()).FindTextSet("set", "kind", "included", "item");
    ASSERT_NE(ready, nullptr);
    EXPECT_EQ(ready->size(), 1U);
    EXPECT_TRUE(ready->contains("n"));
}

TEST(ModelRows, CanGoOnAfterLoading) {
    VexModelRows rows("en");
    std::shared_ptr<VexModel const> const first = rows.load();
    rows.add(VexModelRows::Root, "namespace", "n");
    std::shared_ptr<VexModel const> const second = rows.load();
    EXPECT_EQ(first->elementCount(), 1U);
    EXPECT_EQ(second->elementCount(), 2U);
    EXPECT_FALSE(first->findById("n").IsNotNull());
}

TEST(ModelRows, NameTheRowThatNoModelCanHold) {
    VexModelRows rows("en");
    rows.add(VexModelRows::Root, "namespace", "n");
    VexModelRows::Row const twice = rows.add(VexModelRows::Root, "namespace", "n");
    EXPECT_THAT(complaintOf([&] { rows.load("shops"); }),
                AllOf(HasSubstr("shops"), HasSubstr("row 2"), HasSubstr("\"n\"")));
    rows.setId(twice, "m");
    EXPECT_EQ(rows.load()->elementCount(), 3U);
    rows.addProperty(twice, "name", "x", "no language");
    EXPECT_THAT(complaintOf([&] { rows.load(); }), HasSubstr("row 2"));
}

TEST(ModelRows, RefuseADefaultLocaleThatIsNone) {
    EXPECT_THAT(complaintOf([] { VexModelRows("no language").load(); }), HasSubstr("the model"));
}

TEST(ModelRows, RefuseTextThatXmlCannotHold) {
    VexModelRows rows("en");
    rows.addProperty(rows.add(VexModelRows::Root, "namespace", "n"), "name", "a\x01");
    EXPECT_THAT(complaintOf([&] { rows.load(); }), HasSubstr("row 1"));
}

TEST(ModelRows, RefuseMoreRowsInsideEachOtherThanAModelHolds) {
    VexModelRows rows("en");
    VexModelRows::Row row = VexModelRows::Root;
    for (int depth = 2; depth <= 512; ++depth) {
        row = rows.add(row, "folder");
    }
    EXPECT_EQ(rows.load()->elementCount(), 512U);
    rows.add(row, "folder");
    EXPECT_THAT(complaintOf([&] { rows.load(); }), HasSubstr("row 512"));
}

TEST(ModelRows, RefuseARowThatIsNotThere) {
    VexModelRows rows("en");
    for (auto const& call : std::vector<std::function<void()>>{
             [&] { rows.add(1, "folder"); }, [&] { rows.addProperty(1, "name", "x"); },
             [&] { rows.setText(7, "x"); }, [&] { rows.setId(7, "x"); }}) {
        EXPECT_THAT(complaintOf(call), HasSubstr("add it first"));
    }
    EXPECT_EQ(rows.size(), 1U);
}

} // namespace

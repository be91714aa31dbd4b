#include "model/VexNameSearch.h"

#include "VexObject.h"
#include "tests/support/TestModel.h"

#include <gtest/gtest.h>

namespace {

using Unnamed = VexNameSearch::Unnamed;

class VexNameSearchTest : public testing::Test {
protected:
    std::string found(char const* name, Unnamed unnamed, I18NLocale const* locale = nullptr) {
        I18NString const wanted(name);
        Vex_Handle_Collection const objects = m_model.byIds({"a", "b", "c", "d", "e"});
        VexNameSearch search(objects, wanted, locale, unnamed);
        std::string ids;
        while (search.next()) {
            I18NString id;
            VexObject(search.object()).GetId(id);
            ids += id.toUtf8();
        }
        return ids;
    }

    TestModel m_model{R"(
        <model id="m">
          <folder id="a"/>
          <folder id="b" name="Orders"/>
          <folder id="c"/>
          <folder id="d"><property name="name" locale="en">Orders</property>
            <property name="name" locale="de">Auftraege</property></folder>
          <folder id="e"/>
        </model>)"};
};

} // namespace

TEST_F(VexNameSearchTest, FindsEveryObjectOfTheName) {
    EXPECT_EQ(found("Orders", Unnamed::Empty), "bd");
    EXPECT_EQ(found("orders", Unnamed::Empty), "");
}

TEST_F(VexNameSearchTest, AsksForTheNameInTheLocale) {
    I18NLocale const german("de");
    EXPECT_EQ(found("Auftraege", Unnamed::Empty, &german), "d");
    EXPECT_EQ(found("Orders", Unnamed::Empty, &german), "b");
}

TEST_F(VexNameSearchTest, TakesAnObjectWithoutANameForOneNamedEmpty) {
    EXPECT_EQ(found("", Unnamed::Empty), "ace");
}

TEST_F(VexNameSearchTest, TakesAnObjectWithoutANameForTheOneBeforeWhenToldTo) {
    EXPECT_EQ(found("Orders", Unnamed::LikeTheOneBefore), "bcde");
    EXPECT_EQ(found("", Unnamed::LikeTheOneBefore), "a");
}

TEST_F(VexNameSearchTest, AsksForNoNameBehindTheOneThatIsFound) {
    I18NString const wanted("Orders");
    Vex_Handle_Collection const objects = m_model.byIds({"a", "c", "b", "a", "d", "e"});
    VexNameSearch search(objects, wanted, nullptr, Unnamed::Empty);
    m_model.calls().reset();
    EXPECT_TRUE(search.next());
    EXPECT_EQ(search.object(), m_model.byId("b"));
    EXPECT_EQ(m_model.calls().count(Call::GetPropertyByName), 3);
}

TEST_F(VexNameSearchTest, EndsInAnEmptyListAndStaysThere) {
    I18NString const wanted;
    Vex_Handle_Collection const none;
    VexNameSearch search(none, wanted, nullptr, Unnamed::Empty);
    EXPECT_FALSE(search.next());
    EXPECT_FALSE(search.next());
}

#include "host/insight/Explanation.h"

#include "KRLException.h"
#include "host/import/xml/ModelLoader.h"
#include "host/store/image/Budget.h"
#include "tests/host/insight/HandMadeTree.h"

#include <gtest/gtest.h>

namespace {

using vex::ObjectFate;

class ExplanationTest : public testing::Test {
protected:
    ExplanationTest() {
        m_objects.push_back(m_model->findById("q"));
        m_objects.push_back(m_model->findById("f"));
        m_access.views = {{"v1", "clerk", VexViewRole::RoleHeld, true},
                          {"v9", "", VexViewRole::DefaultView, false}};
        m_access.objects = {
            {"q", true, VexAccessReason::RoleIncludes, {{0, true, false, false}}},
            {"f", false, VexAccessReason::DefaultExcludes, {{1, false, true, true}}}};
    }

    vex::Explanation tell(std::optional<std::string> const& refusal = std::nullopt) const {
        vex::AnsweredTree const tree = vex::treeOf(
            *m_model, {{"n"}, {"q", ObjectFate::Written, 0}, {"f", ObjectFate::LeftOut, 0}});
        return vex::tellAccess(*m_model, m_model->defaultLocale(), m_objects, m_access, tree,
                               refusal);
    }

    std::shared_ptr<vex::Model const> m_model =
        vex::loadModelText(R"(<model defaultLocale="en"><namespace id="n" name="Sales">
          <querySubject id="q" name="Orders"/><folder id="f" name="Facts"/></namespace>
          <securityViews><securityView id="v1" name="Clerks"/></securityViews></model>)",
                           "m.model.xml");
    Vex_Handle_Collection m_objects;
    VexAccessExplanation m_access;
};

TEST_F(ExplanationTest, TellsOfEachObjectWhatItIsKnownByAndTheRule) {
    vex::Explanation const told = tell();
    ASSERT_EQ(told.objects.size(), 2U);
    vex::ToldObject const& orders = told.objects[0];
    EXPECT_EQ(vex::describeObject(orders.label), "querySubject \"Orders\" (q)");
    EXPECT_EQ(orders.label.reference, "[Sales].[Orders]");
    EXPECT_TRUE(orders.accessible);
    EXPECT_EQ(orders.rule, VexAccessReason::RoleIncludes);
    EXPECT_EQ(orders.verdict, "shown: role clerk includes it (view v1 Clerks)");
    EXPECT_FALSE(told.objects[1].accessible);
}

TEST_F(ExplanationTest, IsChargedToTheCall) {
    {
        vex::Budget const call({.bytes = 400});
        EXPECT_THROW(tell(), KRLLimitException);
    }
    vex::Budget const call({.bytes = 4'000});
    EXPECT_NO_THROW(tell());
    EXPECT_GT(call.bytesHeld(), 400U);
}

TEST_F(ExplanationTest, TellsHowTreesTreatAnObject) {
    vex::Explanation const told = tell();
    EXPECT_EQ(told.objects[0].tree,
              std::vector<std::string>{"written in the namespace \"Sales\" (n)"});
    EXPECT_EQ(told.objects[1].tree, std::vector<std::string>{"left out"});
}

TEST_F(ExplanationTest, TellsOfEachObjectWhyThereIsNoTree) {
    vex::Explanation const told = tell("no namespace");
    EXPECT_EQ(told.objects[0].tree, std::vector<std::string>{"there is none: no namespace"});
    EXPECT_EQ(told.objects[1].tree, std::vector<std::string>{"there is none: no namespace"});
}

TEST_F(ExplanationTest, TellsWhichViewsNameAnObjectAndHow) {
    vex::Explanation const told = tell();
    ASSERT_EQ(told.objects[1].mentions.size(), 1U);
    vex::ToldMention const& mention = told.objects[1].mentions[0];
    EXPECT_EQ(mention.view, "v9");
    EXPECT_FALSE(mention.included);
    EXPECT_TRUE(mention.excluded);
    EXPECT_TRUE(mention.hidden);
    EXPECT_EQ(mention.text, "v9 excludes, hides it");
}

TEST_F(ExplanationTest, TellsWhatEachViewIs) {
    vex::Explanation const told = tell();
    ASSERT_EQ(told.views.size(), 2U);
    EXPECT_EQ(told.views[0].id, "v1");
    EXPECT_EQ(told.views[0].name, "Clerks");
    EXPECT_EQ(told.views[0].title, "v1 Clerks");
    EXPECT_TRUE(told.views[0].inForce);
    EXPECT_EQ(told.views[0].role, VexViewRole::RoleHeld);
    EXPECT_EQ(told.views[0].firstMemberRole, "clerk");
    EXPECT_EQ(told.views[0].part, "in force; role based, and the user holds role clerk");
}

TEST_F(ExplanationTest, KnowsAViewThatTheModelLacksByItsIdAlone) {
    vex::Explanation const told = tell();
    EXPECT_EQ(told.views[1].name, "");
    EXPECT_EQ(told.views[1].title, "v9");
}

} // namespace

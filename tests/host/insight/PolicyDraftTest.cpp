#include "host/insight/PolicyDraft.h"

#include "tests/naive/ModelGenerator.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace {

/// A model document, and what is drafted of it.
class PolicyDrafts : public testing::Test {
protected:
    PolicyDrafts() {
        std::string pattern = testing::TempDir() + "draftXXXXXX";
        m_folder = ::mkdtemp(pattern.data());
        m_file = m_folder + "/m.xml";
    }
    ~PolicyDrafts() override { std::filesystem::remove_all(m_folder); }

    vex::PolicyDraft draft(std::string const& xml, bool hasTraits = true) {
        std::ofstream(m_file) << xml;
        m_model = vex::loadModel(m_file);
        return vex::draftPolicy(*m_model, hasTraits);
    }

    /// The policy of a shop whose only view lists these ids.
    std::string textOf(std::vector<std::string> const& ids) {
        std::string items;
        for (std::string const& id : ids) {
            items += "<item>" + id + "</item>";
        }
        vex::PolicyDraft const made = draft(shop("<set kind='included'>" + items + "</set>"));
        EXPECT_EQ(made.problem, "");
        EXPECT_EQ(vex::findDifference(*m_model, m_file, made.text), "");
        return made.text;
    }

    static std::string shop(std::string const& view, std::string const& attributes = "") {
        return R"(<model id="m" defaultLocale="en"><locales><locale>de</locale></locales>
            <namespace id="n" name="Shop">
            <querySubject id="q" name="Orders"><queryItem id="i1" name="Number" usage="identifier"/>
            <queryItem id="i2" name="Cost" usage="fact"/><queryItem id="i3" name="Day"/>
            <queryItem id="i4" name="Net" usage="fact"/></querySubject>
            <folder id="f" name="More"><querySubject id="r" name="Returns">
            <queryItem id="j1" name="Number"/><queryItem id="j2" name="Lost" usage="fact"/>
            </querySubject></folder></namespace><securityViews><securityView id="v")" +
               attributes + ">" + view + "</securityView></securityViews></model>";
    }

    std::string m_folder;
    std::string m_file;
    std::shared_ptr<vex::Model const> m_model;
};

TEST_F(PolicyDrafts, SayInFewRulesWhatManyEntriesList) {
    EXPECT_EQ(textOf({"n", "q", "i1", "i2", "i3", "i4", "f", "r", "j1", "j2"}),
              "views:\n  \"v\":\n    include: \"[Shop]/**\"\n");
    EXPECT_EQ(textOf({"n", "q", "i1", "i2", "i3", "i4"}),
              "views:\n  \"v\":\n    include: \"[Shop].[Orders]/**\"\n");
    EXPECT_EQ(textOf({"n", "q", "i1", "i3", "f", "r", "j1"}),
              "views:\n  \"v\":\n    include: \"[Shop]/**\"\n    except: \"**@usage=fact\"\n");
    EXPECT_EQ(textOf({"n", "q", "i1"}),
              "views:\n  \"v\":\n    include: \"[Shop].[Orders].[Number]\"\n");
}

TEST_F(PolicyDrafts, KeepContainersOutThatAreNotListed) {
    EXPECT_EQ(textOf({"i1"}), "views:\n  \"v\":\n    include: \"[Shop].[Orders].[Number]\"\n"
                              "    except: [\"[Shop]\", \"[Shop].[Orders]\"]\n");
    EXPECT_EQ(textOf({}), "views:\n  \"v\":\n");
}

TEST_F(PolicyDrafts, CarryNamesRolesAndTheOtherSets) {
    vex::PolicyDraft const made = draft(
        shop("<property name='name' locale='en'>All \"here\"</property>"
             "<property name='name' locale='de'>Alles</property><member roleId='chief'/>"
             "<set kind='included'><item>n</item></set><set kind='excluded'><item>q</item></set>"
             "<set kind='excluded'><item>j2</item></set><set kind='hidden'><item>i3</item></set>",
             " roleBased='1'"));
    EXPECT_EQ(made.text, "views:\n  \"v\":\n    name: {de: \"Alles\", en: \"All \\\"here\\\"\"}\n"
                         "    roleBased: true\n    members: \"chief\"\n    include: \"[Shop]\"\n"
                         "    exclude: [\"[Shop].[Orders]\", \"[Shop].[Returns].[Lost]\"]\n"
                         "    hide: \"[Shop].[Orders].[Day]\"\n");
    EXPECT_EQ(vex::findDifference(*m_model, m_file, made.text), "");
    EXPECT_EQ(made.entries, 4U);
    EXPECT_EQ(made.selectors, 4U);
}

TEST_F(PolicyDrafts, NameByIdWhatSharesItsReference) {
    vex::PolicyDraft const made =
        draft(R"(<model><namespace id="n" name="N"><queryItem id="a/b" name="]"/>
                 <queryItem id="c" name="]"/><queryItem id="d" name="]]"/></namespace>
                 <securityView id="v"><set kind="included"><item>n</item><item>a/b</item>
                 <item>d</item></set></securityView></model>)");
    EXPECT_EQ(made.text, "views:\n  \"v\":\n    include: [\"#\\\"a/b\\\"\", \"[N].[]]]]]\"]\n");
    EXPECT_EQ(vex::findDifference(*m_model, m_file, made.text), "");
}

TEST_F(PolicyDrafts, HoldNamesOfAnyCharacters) {
    vex::PolicyDraft const made = draft(
        "<model><namespace id='n' name='a&#x2028;&#x85;&#xFEFF;\\&quot;'><queryItem id=' &#9;x@/' "
        "name=' '/><queryItem id='&#x1F6B2;' name='&#x1F6B2;'/></namespace><securityView id='#v: '>"
        "<set kind='included'><item>&#x1F6B2;</item></set></securityView></model>");
    EXPECT_EQ(made.text, "views:\n  \"#v: \":\n    include: \"[a\\u2028\\u0085\\uFEFF\\\\\\\"].["
                         "\xF0\x9F\x9A\xB2]\"\n    except: \"[a\\u2028\\u0085\\uFEFF\\\\\\\"]\"\n");
    EXPECT_EQ(vex::findDifference(*m_model, m_file, made.text), "");
}

TEST_F(PolicyDrafts, TellWhatTheyLeaveOutAndWhatRulesCannotSay) {
    vex::PolicyDraft const made =
        draft(shop("<set kind='included'><item>q</item><item>gone</item></set>"
                   "<set kind='odd'><item>q</item></set>"));
    EXPECT_EQ(made.leftOut, (std::vector<std::string>{
                                "the view \"v\" has the entry \"gone\", an id that no object has",
                                "the view \"v\" has a set of the kind \"odd\""}));
    EXPECT_EQ(vex::findDifference(*m_model, m_file, made.text), "");
    vex::PolicyDraft const refused = draft(shop("<set kind='included'><item>m</item></set>"));
    EXPECT_EQ(refused.text, "");
    EXPECT_NE(refused.problem.find("lists \"m\", the model itself"), std::string::npos);
    EXPECT_NE(draft("<model/>").problem, "");
}

TEST_F(PolicyDrafts, ThatDifferAreFoundOut) {
    draft(shop("<set kind='included'><item>n</item><item>q</item></set>"));
    EXPECT_EQ(vex::findDifference(*m_model, m_file, "views: {v: {include: '[Shop].[Orders]'}}"),
              "");
    for (char const* const other :
         {"views: {v: {include: '[Shop]/*'}}", "views: {v: {include: '[Shop]'}}",
          "views: {v: {include: '[Shop].[Orders]', hide: '#f'}}",
          "views: {v: {include: '[Shop].[Orders]', roleBased: true}}",
          "views: {v: {include: '[Shop].[Orders]', name: Other}}"}) {
        EXPECT_NE(vex::findDifference(*m_model, m_file, other), "") << other;
    }
}

TEST_F(PolicyDrafts, OfAnyModelComeToTheSameViews) {
    std::size_t drafted = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        naive::Random random(seed);
        vex::PolicyDraft const made =
            draft(naive::generateModel(random, 10 + static_cast<int>(seed)), seed % 3 != 0);
        if (made.problem.empty()) {
            ++drafted;
            EXPECT_EQ(vex::findDifference(*m_model, m_file, made.text), "")
                << "seed " << seed << "\n"
                << made.text;
        }
    }
    EXPECT_GT(drafted, 50U);
}

} // namespace

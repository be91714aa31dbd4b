#include "host/insight/ModelFindings.h"

#include "host/import/xml/ModelLoader.h"
#include "host/insight/ObjectText.h"

#include <gtest/gtest.h>

namespace {

class ModelFindingsTest : public testing::Test {
protected:
    static std::shared_ptr<vex::Model const> load(bool keepPositions) {
        vex::LoadOptions options;
        options.keepPositions = keepPositions;
        return vex::loadModelText(R"(<model defaultLocale="en">
<namespace id="n" name="Sales">
  <folder id="f" name="Facts" note="plain"/>
</namespace>
<folder id="outside"/><filter/>
</model>)",
                                  "m.model.xml", options);
    }

    std::shared_ptr<vex::Model const> m_model = load(true);
    std::string const m_file = "m.xml";
    vex::Diagnostics m_found;
    vex::FindingLimit m_limit;
    vex::ModelFindings m_findings{*m_model, m_file, m_found, m_limit};
};

TEST_F(ModelFindingsTest, GiveAFindingTheSeverityOfItsRuleAndTheElementsPlace) {
    m_findings.add("dangling-refobj", m_model->findById("f"), [] { return "it is lost"; });
    ASSERT_EQ(m_found.size(), 1U);
    EXPECT_EQ(m_found[0].severity, vex::Severity::Warning);
    EXPECT_EQ(m_found[0].rule, "dangling-refobj");
    EXPECT_EQ(m_found[0].file, "m.xml");
    EXPECT_EQ(m_found[0].line, 3U);
    EXPECT_EQ(m_found[0].text, "it is lost");
}

TEST_F(ModelFindingsTest, HaveNoPlaceInAModelThatKeptNone) {
    auto const bare = load(false);
    vex::ModelFindings findings(*bare, m_file, m_found, m_limit);
    findings.add("duplicate-reference", bare->findById("f"), [] { return "twice"; });
    EXPECT_EQ(m_found[0].line, 0U);
    EXPECT_EQ(m_found[0].column, 0U);
}

TEST_F(ModelFindingsTest, StandInTheOrderInWhichTheyWereAdded) {
    m_findings.add("object-in-no-view", m_model->findById("f"), [] { return "first"; });
    m_findings.add("dangling-refobj", m_model->findById("n"), [] { return "second"; });
    ASSERT_EQ(m_found.size(), 2U);
    EXPECT_EQ(m_found[0].text, "first");
    EXPECT_EQ(m_found[0].severity, vex::Severity::Note);
    EXPECT_EQ(m_found[1].text, "second");
}

TEST_F(ModelFindingsTest, FindTheElementsOfAClassInTheModelOrBelowAnElement) {
    Vex_Handle_Collection const all = m_findings.elementsOf("folder");
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(vex::idOf(all[0]), "f");
    EXPECT_EQ(vex::idOf(all[1]), "outside");
    EXPECT_EQ(vex::ModelFindings::elementsBelow(m_model->findById("n"), "folder").size(), 1U);
    EXPECT_EQ(m_findings.elementsOf("shortcut").size(), 0U);
}

TEST_F(ModelFindingsTest, ReadAPropertyOrNothing) {
    VEX_HANDLE const folder = m_model->findById("f");
    EXPECT_EQ(vex::ModelFindings::valueOf(folder, "note", nullptr), "plain");
    EXPECT_EQ(vex::ModelFindings::valueOf(folder, "name", &m_model->defaultLocale()), "Facts");
    EXPECT_EQ(vex::ModelFindings::valueOf(folder, "missing", nullptr), "");
}

TEST_F(ModelFindingsTest, DescribeAnElementByReferenceElseIdElseClass) {
    EXPECT_EQ(m_findings.describe(m_model->findById("f")), "[Sales].[Facts]");
    EXPECT_EQ(m_findings.describe(m_model->findById("outside")), "\"outside\"");
    EXPECT_EQ(m_findings.describe(m_findings.elementsOf("filter")[0]), "filter");
}

TEST_F(ModelFindingsTest, PutNamesInQuotes) {
    EXPECT_EQ(m_findings.nameOf(m_model->findById("f")), "\"Facts\"");
    EXPECT_EQ(m_findings.nameOf(m_model->findById("outside")), "\"\"");
    EXPECT_EQ(vex::inQuotes("a \"b\""), "\"a \"b\"\"");
}

} // namespace

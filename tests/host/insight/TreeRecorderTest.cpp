#include "host/insight/TreeRecorder.h"

#include "KRLException.h"
#include "KRLIDOM_Element.h"
#include "KRLIDOM_OwnedDocument.h"
#include "host/import/xml/ModelLoader.h"
#include "host/insight/AnswerEstimate.h"

#include <gtest/gtest.h>

namespace {

using vex::AnsweredObject;
using vex::AnsweredTree;
using vex::ObjectFate;

std::shared_ptr<vex::Model const> const& recordedModel() {
    static auto const loaded = vex::loadModelText(
        R"(<model defaultLocale="en"><namespace id="n" name="A"><folder id="f" name="F">
             <filter id="x" name="X"/></folder><folder id="unnamed"><filter id="y" name="Y"/>
             <filter id="z" name="Z"/></folder></namespace></model>)",
        "m.model.xml");
    return loaded;
}

VexTreeReport reportOn(char const* id, std::size_t container = VexTreeReport::None) {
    VexTreeReport report;
    report.object = recordedModel()->findById(id);
    report.container = container;
    report.size.elements = 1;
    return report;
}

VexTreeReport leftOut(VexTreeReport report, VexTreeTreatment treatment) {
    report.treatment = treatment;
    report.size = {};
    return report;
}

class TreeRecorder : public testing::Test {
protected:
    I18NLocale m_locale{"en"};
    vex::TreeRecorder m_recorder{m_locale, {.elements = 5}};
};

TEST_F(TreeRecorder, KeepsEachObjectWithItsFateInOrder) {
    m_recorder.beginTree();
    m_recorder.report(reportOn("n"));
    m_recorder.report(leftOut(reportOn("f", 0), VexTreeTreatment::NotIncluded));
    m_recorder.report(reportOn("x", 1));
    m_recorder.report(leftOut(reportOn("y", 0), VexTreeTreatment::NothingToStandFor));
    AnsweredTree const tree = m_recorder.take();
    ASSERT_EQ(tree.size(), 4U);
    EXPECT_EQ(tree[0].fate, ObjectFate::Written);
    EXPECT_EQ(tree[0].container, AnsweredObject::None);
    EXPECT_EQ(tree[1].fate, ObjectFate::LeftOut);
    EXPECT_EQ(tree[1].container, 0U);
    EXPECT_EQ(tree[2].object, recordedModel()->findById("x"));
    EXPECT_EQ(tree[2].container, 1U);
    EXPECT_EQ(tree[3].fate, ObjectFate::NothingToStandFor);
}

TEST_F(TreeRecorder, CountsWhatHasNoNameAsLeftOutWithAllThatIsInIt) {
    m_recorder.beginTree();
    m_recorder.report(reportOn("unnamed"));
    m_recorder.report(reportOn("y", 0));
    m_recorder.report(leftOut(reportOn("z", 1), VexTreeTreatment::NotIncluded));
    AnsweredTree const tree = m_recorder.take();
    EXPECT_EQ(tree[0].fate, ObjectFate::WithoutName);
    EXPECT_EQ(tree[1].fate, ObjectFate::WithItsContainer);
    EXPECT_EQ(tree[2].fate, ObjectFate::WithItsContainer);
}

TEST_F(TreeRecorder, KeepsWhatIsBehindShortcutsAndHowItWasDecided) {
    m_recorder.beginTree();
    VexTreeReport shortcut = reportOn("n");
    shortcut.target = recordedModel()->findById("f");
    m_recorder.report(shortcut);
    VexTreeReport behind = reportOn("x", 0);
    behind.shortcut = 0;
    behind.passesOverViewLists = true;
    m_recorder.report(behind);
    AnsweredTree const tree = m_recorder.take();
    EXPECT_EQ(tree[0].target, recordedModel()->findById("f"));
    EXPECT_FALSE(tree[0].behindShortcut);
    EXPECT_TRUE(tree[1].behindShortcut);
    EXPECT_TRUE(tree[1].passesOverViewLists);
}

TEST_F(TreeRecorder, KeepsOneTreeBehindTheOther) {
    for (int tree = 0; tree < 2; ++tree) {
        m_recorder.beginTree();
        m_recorder.report(reportOn("n"));
        m_recorder.report(reportOn("f", 0));
    }
    AnsweredTree const trees = m_recorder.take();
    ASSERT_EQ(trees.size(), 4U);
    EXPECT_EQ(trees[2].container, AnsweredObject::None);
    EXPECT_EQ(trees[3].container, 2U);
}

TEST_F(TreeRecorder, EndsAnAnswerThatIsTooLarge) {
    m_recorder.beginTree(); // "Response" and "Result" count
    m_recorder.report(reportOn("n"));
    m_recorder.report(leftOut(reportOn("f", 0), VexTreeTreatment::NotIncluded));
    m_recorder.report(reportOn("x", 1));
    m_recorder.report(reportOn("y", 1));
    EXPECT_THROW(m_recorder.report(reportOn("z", 1)), KRLLimitException);
    m_recorder.beginTree(); // each answer has the limit for itself
    m_recorder.report(reportOn("n"));
}

TEST(AnswerEstimate, AddsUpTheTreeAndWhatStandsBesideIt) {
    vex::AnswerEstimate estimate(10);
    VexTreeReport report;
    report.size = {1, 2, 30};
    estimate.report(report);
    estimate.reportOutside({3, 0, 0});
    EXPECT_EQ(estimate.elements(), 4U);
    EXPECT_FALSE(estimate.isMore());
}

/// A document of elements that have attributes of that many characters, and what is
/// estimated for it.
void expectBytesToSuffice(std::size_t elements, std::size_t attributes, std::size_t length) {
    KRLIDOM_OwnedDocument const made("Response");
    KRLIDOM_Document const document = made.document();
    vex::AnswerEstimate estimate(elements + 1);
    estimate.reportOutside({1, 0, 0});
    for (std::size_t element = 0; element < elements; ++element) {
        KRLIDOM_Element const object = document.createElement("queryItem");
        for (std::size_t number = 0; number < attributes; ++number) {
            object.setAttribute(("a" + std::to_string(number)).c_str(),
                                std::string(length, 'x').c_str());
        }
        document.getDocumentElement().appendChild(object);
        VexTreeReport report;
        report.size = {1, attributes, attributes * length};
        estimate.report(report);
    }
    EXPECT_GE(estimate.bytes(), made.byteCount()) << elements << ' ' << attributes << ' ' << length;
    constexpr std::size_t spare = 16 * 1024; // of small documents
    EXPECT_LE(estimate.bytes(), 3 * made.byteCount() + spare) << elements << ' ' << attributes;
}

TEST(AnswerEstimate, HasNoFewerBytesThanTheDocumentTakes) {
    for (std::size_t const elements : {1U, 14U, 98U, 432U, 3000U}) {
        for (std::size_t const attributes : {0U, 1U, 3U, 8U}) {
            for (std::size_t const length : {0U, 1U, 14U, 40U, 200U}) {
                expectBytesToSuffice(elements, attributes, length);
            }
        }
    }
}

TEST(AnswerEstimate, EndsPastTheLimitOfElements) {
    vex::AnswerEstimate estimate(2);
    estimate.reportOutside({2, 0, 0});
    EXPECT_FALSE(estimate.isMore());
    EXPECT_THROW(estimate.report(reportOn("n")), KRLLimitException);
    EXPECT_TRUE(estimate.isMore());
}

/// Goes behind shortcuts once: "s" stands for the folder "f".
class OnceRecorder : public testing::Test {
protected:
    VexTreeReport shortcutAt(int level) const {
        VexTreeReport report = reportOn("n", 0);
        report.target = recordedModel()->findById("f");
        report.level = level;
        return report;
    }
    void take(VexTreeReport report) {
        report.members =
            m_recorder.wantsMembers(report) ? VexTreeMembers::Below : VexTreeMembers::Refused;
        m_recorder.report(report);
    }

    I18NLocale m_locale{"en"};
    vex::TreeRecorder m_recorder{m_locale, {.elements = 50}, vex::TreeExtent::Once};
};

TEST_F(OnceRecorder, WantsTheMembersOfATargetOnce) {
    m_recorder.beginTree();
    take(reportOn("n"));
    take(shortcutAt(2));
    take(shortcutAt(2));
    EXPECT_EQ(m_recorder.tree()[1].members, vex::MembersMet::Here);
    EXPECT_EQ(m_recorder.tree()[2].members, vex::MembersMet::Elsewhere);
    EXPECT_FALSE(m_recorder.findTooDeep());
}

TEST_F(OnceRecorder, ContinuesWhatStandsTooDeepInATreeOfItsOwn) {
    m_recorder.beginTree();
    take(reportOn("n"));
    take(shortcutAt(vex::ExpansionMemory::DeepestShortcut + 1));
    ASSERT_EQ(m_recorder.findTooDeep(), 1U);
    m_recorder.continueTree(1);
    VexTreeReport start = shortcutAt(1);
    start.container = VexTreeReport::None;
    take(start);
    VexTreeReport member = reportOn("x", 0);
    member.shortcut = 0;
    take(member);
    EXPECT_FALSE(m_recorder.findTooDeep());
    AnsweredTree const tree = m_recorder.take();
    ASSERT_EQ(tree.size(), 3U);
    EXPECT_EQ(tree[1].members, vex::MembersMet::Here);
    EXPECT_EQ(tree[2].container, 1U);
}

TEST_F(OnceRecorder, EndsWhenATreeContinuesSomethingElse) {
    m_recorder.beginTree();
    take(reportOn("n"));
    take(shortcutAt(vex::ExpansionMemory::DeepestShortcut + 1));
    m_recorder.continueTree(1);
    EXPECT_THROW(m_recorder.report(reportOn("f")), KRLLimitException);
}

TEST(FullRecorder, SaysSo) {
    I18NLocale const locale("en");
    vex::TreeRecorder recorder(locale, {.elements = 50, .entries = 1});
    recorder.beginTree();
    recorder.report(reportOn("n"));
    EXPECT_THROW(recorder.report(leftOut(reportOn("f", 0), VexTreeTreatment::NotIncluded)),
                 KRLLimitException);
    EXPECT_TRUE(recorder.isFull());
}

} // namespace

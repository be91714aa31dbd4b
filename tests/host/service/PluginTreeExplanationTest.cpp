#include "KRLIDOM_OwnedDocument.h"
#include "host/service/PluginException.h"
#include "host/service/PluginProxy.h"
#include "tests/host/service/BadPlugins.h"
#include "tests/host/service/ExplainBreaker.h"
#include "tests/host/service/SmallModel.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::PluginException;
using vex::PluginFault;
using vex::PluginProxy;

class Reports final : public VexTreeObserver {
public:
    void report(VexTreeReport const& report) override {
        if (raises) {
            throw KRLLimitException("enough");
        }
        objects.push_back(report.object);
    }
    void reportOutside(VexTreeSize const& size) override { outside = size; }

    bool raises = false;
    std::vector<VEX_HANDLE> objects;
    VexTreeSize outside;
};

void explain(PluginProxy& plugin, char const* modelPath, Reports& reports) {
    vex::HostSession session{smallModel(), I18NLocale(), nullptr, nullptr};
    KRLIDOM_OwnedDocument const request("Metadata");
    KRLIDOM_Node node = request.document();
    plugin.explainTree(session, modelPath, node, nullptr, reports);
}

class PluginTreeExplanation : public testing::Test {
protected:
    PluginTreeExplanation() { m_plugin.Initialize(); }

    PluginProxy m_plugin{badPluginFile("RuleBreakerThatExplains"), "RuleBreaker"};
    Reports m_reports;
};

TEST_F(PluginTreeExplanation, IsThePlugins) {
    explain(m_plugin, "/content/m", m_reports);
    EXPECT_EQ(m_reports.objects.size(), 1U);
    EXPECT_EQ(m_reports.outside.elements, 2U);
}

TEST_F(PluginTreeExplanation, LetsThePlatformsExceptionsThrough) {
    EXPECT_THROW(explain(m_plugin, explainBreaker::throwPlatform, m_reports), KRLException);
    m_reports.raises = true;
    EXPECT_THROW(explain(m_plugin, "/content/m", m_reports), KRLLimitException);
}

TEST_F(PluginTreeExplanation, StopsOtherExceptions) {
    try {
        explain(m_plugin, explainBreaker::throwStandard, m_reports);
        ADD_FAILURE() << "nothing was raised";
    } catch (PluginException const& problem) {
        EXPECT_EQ(problem.getFault(), PluginFault::ForeignException);
    }
}

TEST(PluginWithoutTreeExplanation, SaysSo) {
    PluginProxy plugin(badPluginFile("RuleBreaker"), "RuleBreaker");
    plugin.Initialize();
    Reports reports;
    try {
        explain(plugin, "/content/m", reports);
        ADD_FAILURE() << "nothing was raised";
    } catch (PluginException const& problem) {
        EXPECT_EQ(problem.getFault(), PluginFault::NotOffered);
        EXPECT_THAT(problem.what(), HasSubstr("vex.explain-tree/1"));
    }
}

} // namespace

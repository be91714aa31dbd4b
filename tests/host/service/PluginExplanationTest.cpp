#include "host/service/PluginException.h"
#include "host/service/PluginProxy.h"
#include "tests/host/service/BadPlugins.h"
#include "tests/host/service/ExplainBreaker.h"
#include "tests/host/service/RuleBreaker.h"
#include "tests/host/service/SmallModel.h"

#include <functional>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::PluginException;
using vex::PluginFault;
using vex::PluginProxy;

/// A session, and a plug-in that explains.
class PluginExplanation : public testing::Test {
protected:
    PluginExplanation() { m_plugin.Initialize(); }

    void explain(char const* modelPath, bool skipViewLists = false) {
        Vex_Handle_Collection objects;
        objects.push_back(m_session.findObject("q"));
        m_plugin.explainAccess(m_session, modelPath, objects, skipViewLists, m_explanation);
    }
    PluginFault FaultOf(char const* modelPath) {
        try {
            explain(modelPath);
        } catch (PluginException const& problem) {
            return problem.getFault();
        }
        ADD_FAILURE() << "nothing was raised";
        return PluginFault::NotLoaded;
    }

    PluginProxy m_plugin{badPluginFile("RuleBreakerThatExplains"), "RuleBreaker"};
    vex::HostSession m_session{smallModel(), I18NLocale(), nullptr, nullptr};
    VexAccessExplanation m_explanation;
};

TEST_F(PluginExplanation, IsThePlugins) {
    explain("/content/m", true);
    ASSERT_EQ(m_explanation.objects.size(), 1U);
    EXPECT_TRUE(m_explanation.objects[0].included);
    explain("/content/m", false);
    EXPECT_FALSE(m_explanation.objects.at(0).included);
}

TEST_F(PluginExplanation, LetsThePlatformsExceptionsThrough) {
    EXPECT_THROW(explain(explainBreaker::throwPlatform), KRLException);
}

TEST_F(PluginExplanation, StopsOtherExceptions) {
    EXPECT_EQ(FaultOf(explainBreaker::throwStandard), PluginFault::ForeignException);
}

TEST_F(PluginExplanation, TakesTheSessionsTurn) {
    PluginFault fault = PluginFault::NotLoaded;
    std::function<void()> meanwhile = [&] { fault = FaultOf("/content/m"); };
    VexVariant callBack;
    callBack = static_cast<void*>(&meanwhile);
    VexParams in;
    in.AddParam(callBack);
    VexParams out;
    m_plugin.DoAction(m_session, VexVariant(long{ruleBreaker::CallBack}), in, out);
    EXPECT_EQ(fault, PluginFault::SessionBusy);
}

// Without the entry to extensions, and with one that knows none.
TEST(PluginWithoutExplanation, SaysSo) {
    for (char const* const name : {"RuleBreaker", "RuleBreakerWithoutExtensions"}) {
        PluginProxy plugin(badPluginFile(name), "RuleBreaker");
        plugin.Initialize();
        vex::HostSession session{smallModel(), I18NLocale(), nullptr, nullptr};
        VexAccessExplanation explanation;
        try {
            plugin.explainAccess(session, "/content/m", {}, false, explanation);
            ADD_FAILURE() << "nothing was raised";
        } catch (PluginException const& problem) {
            EXPECT_EQ(problem.getFault(), PluginFault::NotOffered);
            EXPECT_THAT(problem.what(), HasSubstr("vex.explain-access/1"));
        }
    }
}

TEST(PluginWhoseEntryToExtensionsThrows, IsRefused) {
    try {
        PluginProxy const plugin(badPluginFile("RuleBreakerWhoseEntryThrows"), "RuleBreaker");
        ADD_FAILURE() << "nothing was raised";
    } catch (PluginException const& problem) {
        EXPECT_EQ(problem.getFault(), PluginFault::ForeignException);
        EXPECT_THAT(problem.what(), HasSubstr("getExtension"));
    }
}

TEST(PluginThatExplains, IsNotAskedBeforeItIsInitialised) {
    PluginProxy plugin(badPluginFile("RuleBreakerThatExplains"), "RuleBreaker");
    vex::HostSession session{smallModel(), I18NLocale(), nullptr, nullptr};
    VexAccessExplanation explanation;
    EXPECT_THROW(plugin.explainAccess(session, "/content/m", {}, false, explanation),
                 PluginException);
}

} // namespace

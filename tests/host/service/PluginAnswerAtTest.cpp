#include "KRLIDOM_OwnedDocument.h"
#include "VexTreeExplanation.h"
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

class Starts final : public VexTreeObserver {
public:
    void report(VexTreeReport const& report) override { object = report.object; }
    void reportOutside(VexTreeSize const& /*size*/) override {}

    VEX_HANDLE object;
};

VEX_HANDLE answeredObject(PluginProxy& plugin, char const* modelPath) {
    vex::HostSession session{smallModel(), I18NLocale(), nullptr, nullptr};
    KRLIDOM_OwnedDocument const request("Metadata");
    KRLIDOM_Node node = request.document();
    Starts starts;
    VEX_HANDLE const asked = session.findObject("q");
    plugin.answerAt(session, modelPath, node, nullptr, asked, &starts);
    EXPECT_EQ(starts.object, asked);
    return starts.object;
}

PluginFault faultOf(PluginProxy& plugin, char const* modelPath, char const* text) {
    try {
        answeredObject(plugin, modelPath);
        ADD_FAILURE() << "nothing was raised";
    } catch (PluginException const& problem) {
        EXPECT_THAT(problem.what(), HasSubstr(text));
        return problem.getFault();
    }
    return {};
}

TEST(PluginAnswerAt, IsThePluginsForTheObjectThatIsHandedIn) {
    PluginProxy plugin(badPluginFile("RuleBreakerThatExplains"), "RuleBreaker");
    plugin.Initialize();
    EXPECT_TRUE(answeredObject(plugin, "/content/m").IsNotNull());
}

TEST(PluginAnswerAt, LetsOnlyThePlatformsExceptionsThrough) {
    PluginProxy plugin(badPluginFile("RuleBreakerThatExplains"), "RuleBreaker");
    plugin.Initialize();
    EXPECT_THROW(answeredObject(plugin, explainBreaker::throwPlatform), KRLException);
    EXPECT_EQ(faultOf(plugin, explainBreaker::throwStandard, "answerAt"),
              PluginFault::ForeignException);
}

TEST(PluginAnswerAt, IsRefusedWhereThePluginDoesNotOfferIt) {
    PluginProxy plugin(badPluginFile("RuleBreaker"), "RuleBreaker");
    plugin.Initialize();
    EXPECT_EQ(faultOf(plugin, "/content/m", "vex.answer-at/1"), PluginFault::NotOffered);
}

} // namespace

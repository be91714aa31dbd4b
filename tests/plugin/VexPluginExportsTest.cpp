#include "VexAccessExplanation.h"
#include "VexPlatformVersion.h"
#include "tests/plugin/PluginCase.h"
#include "tests/plugin/TestModels.h"
#include "tests/support/ExpectFailure.h"

#include <gtest/gtest.h>

extern "C" int VexPlugin_platformVersion();
extern "C" void VexPlugin_explainAccess(VexSession& session, I18NString const& modelPath,
                                        Vex_Handle_Collection const& objects, bool skipViewLists,
                                        VexAccessExplanation& explanation);

TEST(VexPluginExports, TheVersionIsThatOfTheHeaders) {
    EXPECT_EQ(VexPlugin_platformVersion(), VEX_PLATFORM_VERSION);
}

TEST(VexPluginExports, AnExplanationDecidesAsTheAccessibilityRequestDoes) {
    PluginCase on(plainModel);
    VexAccessExplanation explanation;
    for (long const mode : {0L, 1L}) {
        VexPlugin_explainAccess(on.session, "/content/m", on.model.byIds({"x", "y", "m"}),
                                mode == 1, explanation);
        for (VexExplainedObject const& object : explanation.objects) {
            on.askAccess(object.id.c_str(), mode);
            EXPECT_EQ(object.included, static_cast<long>(on.out[3]) == 1) << object.id.c_str();
        }
    }
}

TEST(VexPluginExports, AnExplanationLeavesTheSessionAsItWas) {
    PluginCase on(plainModel);
    VexAccessExplanation explanation;
    VexPlugin_explainAccess(on.session, "/content/m", on.model.byIds({"x"}), false, explanation);
    EXPECT_FALSE(on.session.customData().HasNamespace("VexMAActionPlugin"));
    on.askMetadata();
    std::string const address = on.entry("MaAction");
    VexPlugin_explainAccess(on.session, "/content/m", on.model.byIds({"x"}), false, explanation);
    EXPECT_EQ(on.entry("MaAction"), address);
}

TEST(VexPluginExports, AnExplanationRaisesWhatTheRequestWouldRaise) {
    PluginCase on(plainModel);
    on.session.setRoles({});
    VexAccessExplanation explanation;
    expectFailure(
        [&] {
            VexPlugin_explainAccess(on.session, "/content/m", on.model.byIds({"x"}), false,
                                    explanation);
        },
        1170699671, "VexAccessAction", 0, "VexAccessAction::RetrieveSecurityInfo");
}

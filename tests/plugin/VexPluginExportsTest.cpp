#include "VexAccessExplanation.h"
#include "VexPlatformVersion.h"
#include "VexPluginExtension.h"
#include "tests/plugin/PluginCase.h"
#include "tests/support/Casts.h"
#include "tests/support/ExpectFailure.h"

#include <gtest/gtest.h>

extern "C" int VexPlugin_platformVersion();
extern "C" void const* VexPlugin_getExtension(char const* id);

namespace {

void explain(PluginCase& on, std::initializer_list<char const*> ids, bool skipViewLists,
             VexAccessExplanation& explanation) {
    static_cast<VexExplainAccess const*>(VexPlugin_getExtension(VexExplainAccess::Id))
        ->explain(on.session, "/content/m", on.model.byIds(ids), skipViewLists, explanation);
}

} // namespace

TEST(VexPluginExports, TheVersionIsThatOfTheHeaders) {
    EXPECT_EQ(VexPlugin_platformVersion(), VEX_PLATFORM_VERSION);
}

TEST(VexPluginExports, AnUnknownExtensionIsNull) {
    VexGetExtension const entry = VexPlugin_getExtension;
    for (char const* const id : {"", "vex.explain-access", "vex.explain-access/2",
                                 "vex.explain-access/1 ", "VexPlugin_platformVersion"}) {
        EXPECT_EQ(entry(id), nullptr) << id;
    }
}

TEST(VexPluginExports, NoIdIsAnUnknownExtension) {
    EXPECT_EQ(VexPlugin_getExtension(nullptr), nullptr);
}

TEST(VexPluginExports, AnExtensionIsOneTableForTheLibrarysLife) {
    EXPECT_NE(VexPlugin_getExtension("vex.explain-access/1"), nullptr);
    EXPECT_EQ(VexPlugin_getExtension("vex.explain-access/1"),
              VexPlugin_getExtension(std::string("vex.explain-access/1").c_str()));
}

TEST(VexPluginExports, AnExplanationDecidesAsTheAccessibilityRequestDoes) {
    PluginCase on(casts::plainShop());
    VexAccessExplanation explanation;
    for (long const mode : {0L, 1L}) {
        explain(on, {"x", "y", "m"}, mode == 1, explanation);
        for (VexExplainedObject const& object : explanation.objects) {
            on.askAccess(object.id.c_str(), mode);
            EXPECT_EQ(object.included, static_cast<long>(on.out[3]) == 1) << object.id.c_str();
        }
    }
}

TEST(VexPluginExports, AnExplanationLeavesTheSessionAsItWas) {
    PluginCase on(casts::plainShop());
    VexAccessExplanation explanation;
    explain(on, {"x"}, false, explanation);
    EXPECT_FALSE(on.session.customData().HasNamespace("VexMAActionPlugin"));
    on.askMetadata();
    std::string const address = on.entry("MaAction");
    explain(on, {"x"}, false, explanation);
    EXPECT_EQ(on.entry("MaAction"), address);
}

TEST(VexPluginExports, AnExplanationRaisesWhatTheRequestWouldRaise) {
    PluginCase on(casts::plainShop());
    on.session.setRoles({});
    VexAccessExplanation explanation;
    expectFailure([&] { explain(on, {"x"}, false, explanation); }, 1170699671, "VexAccessAction", 0,
                  "VexAccessAction::RetrieveSecurityInfo");
}

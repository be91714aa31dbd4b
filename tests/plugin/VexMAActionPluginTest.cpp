#include "plugin/VexMAActionPlugin.h"

#include "VexTrace.h"
#include "tests/plugin/PluginCase.h"
#include "tests/support/Casts.h"
#include "tests/support/ExpectFailure.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

std::string trace;

void keepTrace(char const* text) {
    trace += text;
}

VexPluginFactory::Creator* creator() {
    return VexPluginFactory_getInstance()->FindCreator("VexMAActionPlugin");
}

} // namespace

TEST(VexMAActionPlugin, IsRegisteredByBeingLoaded) {
    ASSERT_NE(creator(), nullptr);
    EXPECT_EQ(creator()->library(), "");
    EXPECT_FALSE(creator()->inLibrary());
    EXPECT_EQ(creator()->initialize(), nullptr);
    EXPECT_EQ(creator()->terminate(), nullptr);
}

TEST(VexMAActionPlugin, TheCreatorMakesADifferentPluginEachTime) {
    std::unique_ptr<VexPluginInterface> const first(creator()->create());
    std::unique_ptr<VexPluginInterface> const second(creator()->create());
    EXPECT_NE(dynamic_cast<VexMAActionPlugin*>(first.get()), nullptr);
    EXPECT_NE(first, second);
    creator()->clean();
}

TEST(VexMAActionPlugin, InitializeAndTerminateGiveOneWhateverTheyAreGiven) {
    VexMAActionPlugin plugin;
    for (char const* const parameters : {static_cast<char const*>(nullptr), "", "anything"}) {
        EXPECT_EQ(plugin.Initialize(parameters), 1);
        EXPECT_EQ(plugin.Terminate(parameters), 1);
    }
}

TEST(VexMAActionPlugin, TheActionWithAPlaceForAResultStaysTheHosts) {
    PluginCase on(casts::plainShop());
    VexException exception(0);
    VexVariant result;
    VexErrorCode const code = on.plugin->DoAction(on.session, VexVariant(PluginCase::Metadata),
                                                  exception, VexParams(), on.out, &result);
    EXPECT_EQ(code.GetCode(), VexErrorCode::NotHandled);
    EXPECT_EQ(result.GetType(), VexVariant::Empty);
    EXPECT_EQ(on.entry("MaAction"), "");
}

TEST(VexMAActionPlugin, EveryActionWritesOneTraceLineFirst) {
    PluginCase on(casts::plainShop());
    VexSetTraceSink(keepTrace);
    for (VexVariant const& action : {VexVariant(1L), VexVariant(), VexVariant(VEX_HANDLE(3))}) {
        trace.clear();
        on.act(action, VexParams());
        EXPECT_EQ(trace, "********VexMAActionPlugin::DoAction \n");
    }
    trace.clear();
    on.askAccess("x");
    EXPECT_EQ(trace, "********VexMAActionPlugin::DoAction \n");
    VexSetTraceSink(nullptr);
}

TEST(VexMAActionPlugin, AnUnknownActionIsNotHandledAndTouchesNothing) {
    PluginCase on(casts::plainShop());
    for (long const code :
         {0L, 1L, -31000L, 30999L, 31001L, 32001L, std::numeric_limits<long>::min() + 31000}) {
        EXPECT_EQ(on.act(code, VexParams()), 6) << code;
    }
    EXPECT_EQ(on.out.size(), 2U);
    EXPECT_FALSE(on.session.customData().HasNamespace("VexMAActionPlugin"));
    // The way to the session's data is opened before the action is known.
    EXPECT_EQ(on.model.calls().count(Call::GetCustomDataStore), 7);
    EXPECT_EQ(on.model.calls().total(), 7);
}

TEST(VexMAActionPlugin, AnActionThatIsNoLongCountsAsHandledAndDoesNothing) {
    PluginCase on(casts::plainShop());
    I18NString text("31000");
    for (VexVariant const& action :
         {VexVariant(), VexVariant(&text), VexVariant(VEX_HANDLE(31000))}) {
        EXPECT_EQ(on.act(action, VexParams()), 1);
    }
    EXPECT_EQ(on.out.size(), 2U);
    EXPECT_EQ(on.model.calls().total(), 0);
}

TEST(VexMAActionPlugin, TheFirstRequestOfASessionMakesItsActionAndLaterOnesReuseIt) {
    PluginCase on(casts::plainShop());
    EXPECT_EQ(on.askMetadata(), 1);
    std::string const address = on.entry("MaAction");
    EXPECT_NE(std::strtol(address.c_str(), nullptr, 10), 0);
    EXPECT_EQ(on.entry("AccessAction"), "");
    EXPECT_EQ(on.askMetadata(), 1);
    EXPECT_EQ(on.entry("MaAction"), address);
    EXPECT_EQ(on.session.askedPaths().size(), 1U);
}

TEST(VexMAActionPlugin, AnAddressIsWrittenAsASignedDecimalNumber) {
    PluginCase on(casts::plainShop());
    on.askAccess("x");
    std::string const address = on.entry("AccessAction");
    EXPECT_EQ(address, std::to_string(std::strtol(address.c_str(), nullptr, 10)));
    EXPECT_EQ(on.entry("MaAction"), "");
}

TEST(VexMAActionPlugin, SessionsHaveActionsOfTheirOwn) {
    PluginCase first(casts::plainShop());
    PluginCase second(casts::plainShop());
    first.askAccess("x");
    EXPECT_EQ(second.entry("AccessAction"), "");
    second.askAccess("x");
    EXPECT_NE(first.entry("AccessAction"), second.entry("AccessAction"));
}

// covers quirk: one-kind-of-action-per-session
TEST(VexMAActionPlugin, ASessionOfOneKindOfActionRefusesTheOther) {
    PluginCase access(casts::plainShop());
    access.askAccess("x");
    expectFailure([&] { access.askMetadata(); }, 1444379512, "VexMAActionPlugin", 0,
                  "VexMAActionPlugin::DoAction", {"MaAction"});
    EXPECT_EQ(access.entry("MaAction"), "");
    EXPECT_EQ(access.out.size(), 2U);
    EXPECT_EQ(access.askAccess("x"), 1);

    PluginCase metadata(casts::plainShop());
    metadata.askMetadata();
    expectFailure([&] { metadata.askAccess("x"); }, 1444379512, "VexMAActionPlugin", 0,
                  "VexMAActionPlugin::DoAction", {"AccessAction"});
    EXPECT_EQ(metadata.entry("AccessAction"), "");
}

TEST(VexMAActionPlugin, AnActionStaysWhenItsFirstRequestFails) {
    PluginCase on(casts::plainShop());
    EXPECT_THROW(on.act(PluginCase::Metadata, VexParams()), VexException);
    std::string const address = on.entry("MaAction");
    EXPECT_NE(address, "");
    EXPECT_EQ(on.askMetadata(), 1);
    EXPECT_EQ(on.entry("MaAction"), address);
}

TEST(VexMAActionPlugin, OtherEventsLeaveTheActionsInPlace) {
    PluginCase on(casts::plainShop());
    on.askMetadata();
    std::string const address = on.entry("MaAction");
    for (int const kind : {-1, 0, 3, 4}) {
        on.notify(kind);
        EXPECT_EQ(on.entry("MaAction"), address) << kind;
    }
}

TEST(VexMAActionPlugin, TheEndOfASessionOrAReloadDropsItsAction) {
    for (int const kind : {1, 2}) {
        PluginCase metadata(casts::plainShop());
        metadata.askMetadata();
        metadata.notify(kind);
        EXPECT_FALSE(metadata.session.customData().HasNamespace("VexMAActionPlugin"));

        PluginCase access(casts::plainShop());
        access.askAccess("x");
        access.notify(kind);
        EXPECT_FALSE(access.session.customData().HasNamespace("VexMAActionPlugin"));
    }
}

TEST(VexMAActionPlugin, BothActionsAreDroppedWhenASessionHasBoth) {
    PluginCase first(casts::plainShop());
    PluginCase second(casts::plainShop());
    first.askMetadata();
    second.askAccess("x");
    first.session.customData().Set("AccessAction", second.entry("AccessAction").c_str(), false,
                                   "VexMAActionPlugin");
    second.session.customData().Remove("AccessAction", "VexMAActionPlugin");
    first.notify(VexNotification::SessionClosed);
    EXPECT_FALSE(first.session.customData().HasNamespace("VexMAActionPlugin"));
}

TEST(VexMAActionPlugin, AReloadEndsWhatAFailureOnANewPathLeft) {
    PluginCase on(casts::plainShop());
    on.askAccess("x");
    EXPECT_EQ(static_cast<long>(on.out[3]), 1);
    on.session.dropSource();
    expectFailure([&] { on.askAccess("x", 0, "/content/other"); }, 1444335572, "VexAccessAction", 0,
                  "VexAccessAction::RetrieveSecurityInfo");
    on.session.restoreSource();
    on.session.setViews({"of another model"});
    on.askAccess("x", 0, "/content/other"); // with the rights of the path before
    EXPECT_EQ(static_cast<long>(on.out[3]), 1);
    on.notify(VexNotification::ModelReloaded);
    expectFailure([&] { on.askAccess("x", 0, "/content/other"); }, 1170551942, "VexMDAccessEngine",
                  0, "VexMDAccessEngine::populateAccessInfo");
}

TEST(VexMAActionPlugin, AnEventOfASessionWithoutActionsIsNoError) {
    PluginCase on(casts::plainShop());
    on.notify(1);
    on.notify(2);
    EXPECT_FALSE(on.session.customData().HasNamespace("VexMAActionPlugin"));
}

TEST(VexMAActionPlugin, AnEntryThatIsZeroIsRemovedWithoutBeingFollowed) {
    PluginCase on(casts::plainShop());
    on.session.customData().Set("MaAction", "0", false, "VexMAActionPlugin");
    on.notify(2);
    EXPECT_FALSE(on.session.customData().HasNamespace("VexMAActionPlugin"));
}

TEST(VexMAActionPlugin, AfterAReloadTheSessionStartsAfreshWithEitherAction) {
    PluginCase on(casts::plainShop());
    on.askMetadata();
    on.notify(2);
    EXPECT_EQ(on.askAccess("x"), 1);
    EXPECT_NE(on.entry("AccessAction"), "");
    on.notify(2);
    EXPECT_EQ(on.askMetadata(), 1);
    EXPECT_EQ(on.session.askedPaths().size(), 3U);
}

TEST(VexMAActionPlugin, DataOfOthersStaysWhenTheActionsAreDropped) {
    PluginCase on(casts::plainShop());
    on.askMetadata();
    on.session.customData().Set("MaAction", "1", false, "another");
    on.notify(1);
    EXPECT_EQ(on.session.customData().Get("MaAction", "another"), "1");
}

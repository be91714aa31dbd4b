#include "VexLoadedPlugin.h"

#include "VexException.h"
#include "VexHostSession.h"
#include "VexModelRows.h"
#include "tests/kit/Complaint.h"
#include "tests/kit/TellingPlugin.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class LoadedPlugin : public testing::Test {
protected:
    std::shared_ptr<VexModel const> m_model = VexModelRows("en").load();
    VexHostSession m_session{m_model->store(), I18NLocale("en")};
    VexParams m_out;
};

TEST_F(LoadedPlugin, SaysWhetherAnActionWasDone) {
    VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
    EXPECT_TRUE(plugin.act(m_session, tellingDone, VexParams(), m_out));
    EXPECT_EQ(static_cast<long>(m_out[0]), 7);
    EXPECT_FALSE(plugin.act(m_session, 31000, VexParams(), m_out));
    EXPECT_EQ(m_out.size(), 1U);
}

TEST_F(LoadedPlugin, RefusesAResultThatMeansNothing) {
    VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
    EXPECT_THAT(complaintOf([&] { plugin.act(m_session, tellingOdd, VexParams(), m_out); }),
                HasSubstr("DoAction gave 2"));
}

TEST_F(LoadedPlugin, LetsThroughWhatComesOutOfAnAction) {
    VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
    EXPECT_THROW(plugin.act(m_session, tellingThrowInt, VexParams(), m_out), int);
    EXPECT_TRUE(plugin.act(m_session, tellingDone, VexParams(), m_out));
}

constexpr char ownText[] = "a failure of a type of the plug-in's own";

TEST_F(LoadedPlugin, RaisesWhatCanBeCaughtWhereThePluginIsGone) {
    EXPECT_EQ(complaintOf([] { VexLoadedPlugin(VEX_TELLING_PLUGIN_FILE, "", tellingThrowOwn); }),
              ownText);
    EXPECT_EQ(complaintOf([&] {
                  VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
                  plugin.act(m_session, tellingRaiseOwn, VexParams(), m_out);
              }),
              ownText);
    EXPECT_EQ(complaintOf([&] {
                  VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
                  plugin.notify(m_session, tellingRaiseOwn);
              }),
              ownText);
    EXPECT_EQ(complaintOf([] {
                  VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
                  plugin.terminate(tellingThrowOwn);
              }),
              ownText);
    EXPECT_THAT(complaintOf([&] {
                    VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
                    plugin.act(m_session, tellingThrowNoText, VexParams(), m_out);
                }),
                AllOf(HasSubstr(VEX_TELLING_PLUGIN_FILE), HasSubstr("DoAction raised")));
}

TEST_F(LoadedPlugin, LetsAFailureOutThatCanBeReadWhereThePluginIsGone) {
    try {
        VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
        plugin.act(m_session, tellingRaise, VexParams(), m_out);
        FAIL() << "nothing was raised";
    } catch (VexException const& failure) {
        EXPECT_EQ(failure.GetId(), 42U);
        EXPECT_STREQ(failure.GetLocation().source, "Telling");
        EXPECT_STREQ(failure.GetFunction(), "TellingPlugin::DoAction");
        EXPECT_STREQ(failure.GetKind(), "KRL_THROW");
    }
}

TEST_F(LoadedPlugin, LetsThroughWhatTheHostItselfRaises) {
    /// Of the host's own, and no `KRLException`.
    struct HostFailure : std::exception {};
    class Failing final : public VexModelService {
        VexSecurityInfoSource* GetSecurityInfoSource(I18NString const&) override {
            throw HostFailure();
        }
    };
    Failing service;
    VexHostSession session(m_model->store(), I18NLocale("en"), &service);
    VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
    EXPECT_THROW(plugin.act(session, tellingAskHost, VexParams(), m_out), HostFailure);
}

TEST_F(LoadedPlugin, RunsTheHooksAroundTheObject) {
    std::string log;
    {
        VexLoadedPlugin const first(VEX_TELLING_PLUGIN_FILE);
        first.findExtension<TellingLog>()->tellTo(&log);
    }
    EXPECT_EQ(log, "terminated deleted last ");
}

TEST_F(LoadedPlugin, TellsThePluginOfEvents) {
    std::string log;
    VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
    plugin.findExtension<TellingLog>()->tellTo(&log);
    plugin.notify(m_session, VexNotification::SessionClosed);
    plugin.notify(m_session, 77);
    EXPECT_EQ(log, "notified:1 notified:77 ");
    plugin.findExtension<TellingLog>()->tellTo(nullptr);
}

TEST_F(LoadedPlugin, IsNotThereWhenThePluginIsNotReady) {
    EXPECT_THAT(
        complaintOf([] { VexLoadedPlugin(VEX_TELLING_PLUGIN_FILE, "Telling", tellingRefusal); }),
        HasSubstr("Initialize gave 0"));
    EXPECT_NO_THROW(VexLoadedPlugin(VEX_TELLING_PLUGIN_FILE, "Telling"));
}

TEST_F(LoadedPlugin, SaysWhenThePluginDoesNotEndInOrder) {
    VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
    EXPECT_THAT(complaintOf([&] { plugin.terminate(tellingRefusal); }),
                HasSubstr("Terminate gave 0"));
    EXPECT_EQ(plugin.get(), nullptr);
    EXPECT_NO_THROW(plugin.terminate());
    EXPECT_THAT(complaintOf([&] { plugin.act(m_session, tellingDone, VexParams(), m_out); }),
                HasSubstr("after terminate"));
    EXPECT_THAT(complaintOf([&] { plugin.notify(m_session, 1); }), HasSubstr("after terminate"));
}

TEST_F(LoadedPlugin, LetsOutWhatTerminateRaisesAndIsGoneAllTheSame) {
    std::string log;
    VexLoadedPlugin plugin(VEX_TELLING_PLUGIN_FILE);
    plugin.findExtension<TellingLog>()->tellTo(&log);
    EXPECT_THROW(plugin.terminate(tellingThrow), std::runtime_error);
    EXPECT_EQ(log, "terminated deleted last ");
}

TEST_F(LoadedPlugin, IsLoadedOnceAndNamedWhenItIsMissing) {
    VexLoadedPlugin const plugin(VEX_TELLING_PLUGIN_FILE);
    EXPECT_EQ(plugin.file(), VEX_TELLING_PLUGIN_FILE);
    EXPECT_THAT(complaintOf([] { VexLoadedPlugin(VEX_TELLING_PLUGIN_FILE); }),
                HasSubstr("is loaded already"));
    EXPECT_THAT(complaintOf([] { VexLoadedPlugin("nowhere.vpl"); }), HasSubstr("nowhere.vpl"));
    EXPECT_THAT(complaintOf([] { VexLoadedPlugin(VEX_PLUGIN_FILE, "Nobody"); }),
                HasSubstr("\"Nobody\""));
}

TEST_F(LoadedPlugin, OffersNullForAnExtensionThatThePluginLacks) {
    VexLoadedPlugin const plugin(VEX_TELLING_PLUGIN_FILE);
    EXPECT_EQ(plugin.findExtension("nobody's/1"), nullptr);
    EXPECT_EQ(plugin.findExtension(nullptr), nullptr);
}

} // namespace

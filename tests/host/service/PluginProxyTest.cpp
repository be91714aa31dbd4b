#include "host/service/PluginProxy.h"

#include "VexNotification.h"
#include "VexPluginFactory.h"
#include "host/service/PluginException.h"
#include "tests/host/service/BadPlugins.h"
#include "tests/host/service/RuleBreaker.h"
#include "tests/host/service/SmallModel.h"

#include <functional>
#include <thread>
#include <typeinfo>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::PluginException;
using vex::PluginFault;
using vex::PluginProxy;

/// What the call breaks, and how the host says so.
struct Fault {
    PluginFault fault;
    std::string text;
};

Fault faultOf(std::function<void()> const& call) {
    try {
        call();
    } catch (PluginException const& problem) {
        return {problem.getFault(), problem.what()};
    }
    ADD_FAILURE() << "nothing was raised";
    return {PluginFault::NotLoaded, ""};
}

class PluginProxyTest : public testing::Test {
protected:
    VexErrorCode Call(long action) {
        VexParams out;
        return m_plugin.DoAction(m_session, VexVariant(action), VexParams(), out);
    }

    PluginProxy m_plugin{badPluginFile("RuleBreaker"), "RuleBreaker"};
    vex::HostSession m_session{smallModel(), I18NLocale(), nullptr, nullptr};
};

TEST(PluginLibrary, IsNotLoadedFromAFileThatDoesNotExist) {
    Fault const fault = faultOf([] { PluginProxy plugin("nowhere.vpl"); });
    EXPECT_EQ(fault.fault, PluginFault::NotLoaded);
    EXPECT_THAT(fault.text, HasSubstr("nowhere.vpl"));
}

TEST(PluginLibrary, IsNotLoadedFromAFileThatIsNoLibrary) {
    Fault const fault = faultOf([] { PluginProxy plugin(__FILE__); });
    EXPECT_EQ(fault.fault, PluginFault::NotLoaded);
}

TEST(PluginLibrary, IsRefusedWhenItWasBuiltForAnotherVersionOfThePlatform) {
    Fault const fault =
        faultOf([] { PluginProxy plugin(badPluginFile("RuleBreakerOfTomorrow"), "RuleBreaker"); });
    EXPECT_EQ(fault.fault, PluginFault::WrongVersion);
    EXPECT_THAT(fault.text, HasSubstr("version 2"));
    EXPECT_EQ(VexPluginFactory_getInstance()->FindCreator("RuleBreaker"), nullptr);
}

TEST(PluginLibrary, IsRefusedWhenItTellsNoVersion) {
    Fault const fault = faultOf(
        [] { PluginProxy plugin(badPluginFile("RuleBreakerWithoutVersion"), "RuleBreaker"); });
    EXPECT_EQ(fault.fault, PluginFault::WrongVersion);
}

TEST(PluginLibrary, IsRefusedWhenItRegistersNoPluginOfThatName) {
    Fault const fault = faultOf([] { PluginProxy plugin(badPluginFile("RuleBreaker"), "Nobody"); });
    EXPECT_EQ(fault.fault, PluginFault::NotLoaded);
    EXPECT_THAT(fault.text, HasSubstr("\"Nobody\""));
}

TEST(PluginLibrary, GivesItsOnlyPluginWithoutAName) {
    vex::HostSession session(smallModel(), I18NLocale(), nullptr, nullptr);
    PluginProxy plugin(badPluginFile("RuleBreaker"));
    plugin.Initialize();
    VexParams out;
    EXPECT_EQ(plugin.DoAction(session, VexVariant(-1L), VexParams(), out).GetCode(),
              VexErrorCode::NotHandled);
}

TEST(PluginLibrary, GivesTheMetadataPluginAmongSeveralWithoutAName) {
    EXPECT_NO_THROW(PluginProxy(badPluginFile("SeveralPluginsWithMetadata")));
}

TEST(PluginLibrary, ListsItsPluginsWhenItCannotChoose) {
    Fault const fault = faultOf([] { PluginProxy plugin(badPluginFile("SeveralPlugins")); });
    EXPECT_EQ(fault.fault, PluginFault::NotLoaded);
    EXPECT_THAT(fault.text, HasSubstr("registers several plug-ins, \"One\", \"Two\""));
    EXPECT_THAT(fault.text, HasSubstr("a library of its own"));
    EXPECT_NO_THROW(PluginProxy(badPluginFile("SeveralPlugins"), "Two"));
}

TEST(PluginLibrary, SaysWhenItRegistersNoPluginAtAll) {
    Fault const fault = faultOf([] { PluginProxy plugin(badPluginFile("NoPlugin")); });
    EXPECT_EQ(fault.fault, PluginFault::NotLoaded);
    EXPECT_THAT(fault.text, HasSubstr("registers no plug-in while it is loaded"));
    EXPECT_THAT(fault.text, HasSubstr("KRLPluginCreator"));
}

TEST(PluginLibrary, CanBeLoadedAgainOnceItIsUnloaded) {
    PluginProxy(badPluginFile("RuleBreaker"), "RuleBreaker").Initialize();
    PluginProxy(badPluginFile("RuleBreaker"), "RuleBreaker").Initialize();
}

TEST_F(PluginProxyTest, RefusesToLoadOneFileTwiceUnderAnyPath) {
    std::string const other = badPluginFile("./RuleBreaker");
    Fault const fault = faultOf([&] { PluginProxy plugin(other, "RuleBreaker"); });
    EXPECT_EQ(fault.fault, PluginFault::LoadedTwice);
}

TEST_F(PluginProxyTest, RefusesAnActionBeforeInitialize) {
    Fault const fault = faultOf([&] { Call(ruleBreaker::Answer); });
    EXPECT_EQ(fault.fault, PluginFault::NotReady);
    EXPECT_THAT(fault.text, HasSubstr("RuleBreaker.vpl: DoAction was called by the host"));
}

TEST_F(PluginProxyTest, RefusesANotificationBeforeInitialize) {
    Fault const fault =
        faultOf([&] { m_plugin.Notify(m_session, VexNotification::SessionOpened); });
    EXPECT_EQ(fault.fault, PluginFault::NotReady);
}

TEST_F(PluginProxyTest, RefusesASecondInitialize) {
    m_plugin.Initialize();
    EXPECT_EQ(faultOf([&] { m_plugin.Initialize(); }).fault, PluginFault::NotReady);
}

TEST_F(PluginProxyTest, RefusesAnActionAfterTerminate) {
    m_plugin.Initialize();
    m_plugin.Terminate();
    EXPECT_EQ(faultOf([&] { Call(ruleBreaker::Answer); }).fault, PluginFault::NotReady);
    EXPECT_EQ(faultOf([&] { m_plugin.Terminate(); }).fault, PluginFault::NotReady);
}

TEST_F(PluginProxyTest, SaysWhenThePluginIsNotReady) {
    EXPECT_EQ(faultOf([&] { m_plugin.Initialize(ruleBreaker::notReady); }).fault,
              PluginFault::NotReady);
    EXPECT_EQ(faultOf([&] { Call(ruleBreaker::Answer); }).fault, PluginFault::NotReady);
}

TEST_F(PluginProxyTest, GivesTheCodeOfAnAction) {
    m_plugin.Initialize();
    EXPECT_EQ(Call(ruleBreaker::Answer).GetCode(), VexErrorCode::Handled);
    EXPECT_EQ(Call(1000).GetCode(), VexErrorCode::NotHandled);
}

TEST_F(PluginProxyTest, NamesThePluginThatThrowsWhatIsNoException) {
    m_plugin.Initialize();
    Fault const fault = faultOf([&] { Call(ruleBreaker::ThrowInt); });
    EXPECT_EQ(fault.fault, PluginFault::ForeignException);
    EXPECT_THAT(fault.text, HasSubstr("RuleBreaker.vpl: DoAction raised something"));
}

TEST_F(PluginProxyTest, NamesThePluginThatThrowsAStandardException) {
    m_plugin.Initialize();
    Fault const fault = faultOf([&] { Call(ruleBreaker::ThrowStandard); });
    EXPECT_EQ(fault.fault, PluginFault::ForeignException);
    EXPECT_THAT(fault.text, HasSubstr("a standard one"));
}

TEST_F(PluginProxyTest, TellsMemoryThatRanOutFromABrokenRule) {
    m_plugin.Initialize();
    EXPECT_EQ(faultOf([&] { Call(ruleBreaker::ThrowBadAlloc); }).fault, PluginFault::OutOfMemory);
}

TEST_F(PluginProxyTest, LetsThePlatformsExceptionsPass) {
    m_plugin.Initialize();
    try {
        Call(ruleBreaker::ThrowPlatform);
        FAIL() << "nothing was raised";
    } catch (KRLException const& problem) {
        EXPECT_STREQ(problem.what(), "a plain one");
    }
}

TEST(PluginProxy, RaisesNothingWhoseCodeGoesWithThePlugin) {
    vex::HostSession session(smallModel(), I18NLocale(), nullptr, nullptr);
    try {
        PluginProxy plugin(badPluginFile("RuleBreaker"), "RuleBreaker");
        plugin.Initialize();
        VexParams out;
        plugin.DoAction(session, VexVariant(long{ruleBreaker::ThrowOwn}), VexParams(), out);
        FAIL() << "nothing was raised";
    } catch (KRLException const& problem) { // the plug-in is unloaded
        EXPECT_STREQ(problem.what(), ruleBreaker::ownText);
        EXPECT_EQ(typeid(problem), typeid(KRLException));
    }
}

TEST_F(PluginProxyTest, StopsForeignExceptionsOfNotifyAndTerminateToo) {
    m_plugin.Initialize();
    EXPECT_EQ(faultOf([&] { m_plugin.Notify(m_session, ruleBreaker::throwingKind); }).fault,
              PluginFault::ForeignException);
    EXPECT_EQ(faultOf([&] { m_plugin.Terminate(ruleBreaker::throwAtEnd); }).fault,
              PluginFault::ForeignException);
}

TEST_F(PluginProxyTest, ServesASessionAgainAfterABrokenRule) {
    m_plugin.Initialize();
    faultOf([&] { Call(ruleBreaker::ThrowInt); });
    EXPECT_EQ(Call(ruleBreaker::Answer).GetCode(), VexErrorCode::Handled);
}

TEST_F(PluginProxyTest, RefusesASecondCallOfOneSessionOnAnyThread) {
    m_plugin.Initialize();
    std::function<void()> meanwhile = [&] {
        EXPECT_EQ(faultOf([&] { Call(ruleBreaker::Answer); }).fault, PluginFault::SessionBusy);
        std::thread([&] {
            EXPECT_EQ(faultOf([&] { Call(ruleBreaker::Answer); }).fault, PluginFault::SessionBusy);
            EXPECT_EQ(faultOf([&] { m_plugin.Notify(m_session, 1); }).fault,
                      PluginFault::SessionBusy);
        }).join();
    };
    VexVariant callBack;
    callBack = static_cast<void*>(&meanwhile);
    VexParams in;
    in.AddParam(callBack);
    VexParams out;
    EXPECT_EQ(
        m_plugin.DoAction(m_session, VexVariant(long{ruleBreaker::CallBack}), in, out).GetCode(),
        VexErrorCode::Handled);
    EXPECT_EQ(Call(ruleBreaker::Answer).GetCode(), VexErrorCode::Handled);
}

TEST_F(PluginProxyTest, ServesAnotherSessionAndRefusesTerminateDuringACall) {
    m_plugin.Initialize();
    std::function<void()> meanwhile = [&] {
        vex::HostSession other(smallModel(), I18NLocale(), nullptr, nullptr);
        VexParams out;
        EXPECT_EQ(m_plugin.DoAction(other, VexVariant(long{ruleBreaker::Answer}), VexParams(), out)
                      .GetCode(),
                  VexErrorCode::Handled);
        EXPECT_EQ(faultOf([&] { m_plugin.Terminate(); }).fault, PluginFault::CallsUnderWay);
    };
    VexVariant callBack;
    callBack = static_cast<void*>(&meanwhile);
    VexParams in;
    in.AddParam(callBack);
    VexParams out;
    m_plugin.DoAction(m_session, VexVariant(long{ruleBreaker::CallBack}), in, out);
}

} // namespace

#include "KRLPluginCreator.h"
#include "VexException.h"
#include "VexPlatformVersion.h"
#include "tests/platform/objects/PlatformFakes.h"

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

class QuietPlugin final : public VexPluginInterface {
public:
    int Initialize(char const*) override { return 1; }
    int Terminate(char const*) override { return 1; }
    // One of the two ways to call an action is inherited.
    using VexPluginInterface::DoAction;
    VexErrorCode DoAction(VexSession&, VexVariant const&, VexException&, VexParams const&,
                          VexParams&) override {
        return VexErrorCode(VexErrorCode::Handled, nullptr);
    }
    void Notify(VexNotification const&) override {}
};

using Creator = KRLPluginCreator<std::string, VexPluginInterface, QuietPlugin>;

void nothing() {}

class LoadingLibrary {
public:
    explicit LoadingLibrary(std::string const& name) {
        VexPluginFactory_getInstance()->SetCurrentLibrary(name);
    }
    LoadingLibrary(LoadingLibrary const&) = delete;
    LoadingLibrary& operator=(LoadingLibrary const&) = delete;
    ~LoadingLibrary() { VexPluginFactory_getInstance()->SetCurrentLibrary(""); }
};

TEST(VexPluginFactory, IsOneForTheProcess) {
    EXPECT_EQ(VexPluginFactory_getInstance(), VexPluginFactory_getInstance());
    EXPECT_EQ((&KRLPluginFactory<std::string, VexPluginInterface>::getInstance()),
              VexPluginFactory_getInstance());
}

TEST(VexPluginFactory, ListsWhatALibraryRegistered) {
    VexPluginFactory& factory = *VexPluginFactory_getInstance();
    EXPECT_TRUE(factory.ListNames("libTwo.vpl").empty());
    LoadingLibrary const loading("libTwo.vpl");
    Creator const second("Second", nullptr, nullptr);
    Creator const first("First", nullptr, nullptr);
    EXPECT_EQ(factory.ListNames("libTwo.vpl"), (std::vector<std::string>{"First", "Second"}));
    {
        LoadingLibrary const other("libOther.vpl");
        Creator const taken("First", nullptr, nullptr);
        EXPECT_TRUE(factory.ListNames("libOther.vpl").empty());
    }
    factory.ForgetLibrary("libTwo.vpl");
    EXPECT_TRUE(factory.ListNames("libTwo.vpl").empty());
}

TEST(VexPluginFactory, FindsACreatorByName) {
    VexPluginFactory& factory = *VexPluginFactory_getInstance();
    EXPECT_EQ(factory.FindCreator("Quiet"), nullptr);
    LoadingLibrary const loading("libQuiet.vpl");
    Creator const creator("Quiet", &nothing, nullptr);
    ASSERT_EQ(factory.FindCreator("Quiet"), &creator);
    EXPECT_EQ(creator.library(), "libQuiet.vpl");
    EXPECT_TRUE(creator.inLibrary());
    EXPECT_EQ(creator.initialize(), &nothing);
    EXPECT_EQ(creator.terminate(), nullptr);
    std::unique_ptr<VexPluginInterface> const plugin(creator.create());
    EXPECT_EQ(plugin->Initialize(nullptr), 1);
    factory.ForgetLibrary("libQuiet.vpl");
    EXPECT_EQ(factory.FindCreator("Quiet"), nullptr);
}

TEST(VexPluginFactory, KeepsTheFirstCreatorOfAName) {
    VexPluginFactory& factory = *VexPluginFactory_getInstance();
    LoadingLibrary const loading("libFirst.vpl");
    Creator first("Same", nullptr, nullptr);
    factory.SetCurrentLibrary("libSecond.vpl");
    Creator second("Same", nullptr, nullptr);
    EXPECT_EQ(factory.FindCreator("Same"), &first);
    EXPECT_FALSE(factory.RegisterCreator("Same", &second));
    factory.ForgetLibrary("libSecond.vpl");
    EXPECT_EQ(factory.FindCreator("Same"), &first);
    factory.ForgetLibrary("libFirst.vpl");
    EXPECT_TRUE(factory.RegisterCreator("Same", &second));
    factory.ForgetLibrary("libSecond.vpl");
}

TEST(VexPluginFactory, KnowsTheLibraryThatThisThreadLoads) {
    VexPluginFactory& factory = *VexPluginFactory_getInstance();
    EXPECT_EQ(factory.GetCurrentLibrary(), "");
    LoadingLibrary const loading("libHere.vpl");
    EXPECT_EQ(factory.GetCurrentLibrary(), "libHere.vpl");
    std::thread([&] { EXPECT_EQ(factory.GetCurrentLibrary(), ""); }).join();
}

TEST(KRLPluginCreator, BelongsToNoLibraryOutsideOfLoading) {
    Creator creator("Static", nullptr, nullptr);
    EXPECT_EQ(creator.library(), "");
    EXPECT_FALSE(creator.inLibrary());
    creator.clean();
    VexPluginFactory_getInstance()->ForgetLibrary("");
    EXPECT_EQ(VexPluginFactory_getInstance()->FindCreator("Static"), nullptr);
}

TEST(VexPluginInterface, HandlesNoActionWithAResultPlaceOfItsOwn) {
    FakeSession session;
    QuietPlugin plugin;
    VexException exception(0);
    VexParams const in;
    VexParams out;
    VexVariant result(5L);
    VexErrorCode const code =
        plugin.DoAction(session, VexVariant(31'000L), exception, in, out, &result);
    EXPECT_EQ(code.GetCode(), 6);
    EXPECT_EQ(code.GetText(), nullptr);
    EXPECT_EQ(out.size(), 0U);
    EXPECT_EQ(static_cast<long>(result), 5);
}

TEST(VexPlatform, TellsItsVersion) {
    EXPECT_EQ(VexPlatform_version(), VEX_PLATFORM_VERSION);
}

} // namespace

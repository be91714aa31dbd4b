// Requests for functions are answered with the package.

#include "KRLException.h"
#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

using Strings = std::vector<I18NString>;

struct FunctionScene : ProviderScene {
    explicit FunctionScene(char const* path = "/content/m") : ProviderScene("<model/>", path) {
        session.setViews({"v"});
        session.setPackage("Retail", {{"screenTip", "Retail sales"}, {"size", "3"}, {"none", ""}});
    }
};

TEST(FunctionRequest, IsAnsweredWithTheNamedPackage) {
    FunctionScene scene;
    EXPECT_EQ(scene.askForResponse("<Metadata><Functions kind='all'/></Metadata>"),
              "<Response><Result><package name=\"Retail\"/></Result></Response>");
}

TEST(FunctionRequest, IsAskedForByAnyTextOfTheOption) {
    FunctionScene scene;
    EXPECT_EQ(scene.ask("<Metadata function='0'/>"), "<package name=\"Retail\"/>");
    EXPECT_EQ(scene.ask("<Metadata function='false'/>"), "<package name=\"Retail\"/>");
}

TEST(FunctionRequest, GivesThePropertiesAskedForOfPackages) {
    FunctionScene scene;
    EXPECT_EQ(scene.ask("<Metadata function='1'><Property a='package/@size'/>"
                        "<Property a='./@screenTip'/><Property a='folder/@size2'/></Metadata>"),
              "<package name=\"Retail\" screenTip=\"Retail sales\" size=\"3\"/>");
}

TEST(FunctionRequest, LeavesOutPropertiesWithoutAValue) {
    FunctionScene scene;
    EXPECT_EQ(scene.ask("<Metadata function='1'><Property a='*/@none'/>"
                        "<Property a='*/@unknown'/></Metadata>"),
              "<package name=\"Retail\"/>");
}

TEST(FunctionRequest, LetsAPropertyCalledNameReplaceThePackageValue) {
    FunctionScene scene;
    scene.session.setPackage("Retail", {{"name", "Other"}});
    EXPECT_EQ(scene.ask("<Metadata function='1'><Property a='./@name'/></Metadata>"),
              "<package name=\"Other\"/>");
}

TEST(FunctionRequest, WritesNoAttributeForAPropertyThatIsNoXmlName) {
    FunctionScene scene;
    scene.session.setPackage("Retail", {{"a b", "1"}, {"*", "2"}, {"", "3"}, {"ok", "4"}});
    EXPECT_EQ(scene.ask("<Metadata function='1'><Property a='./@a b'/><Property a='./@'/>"
                        "<Property a='./@ok'/><Property a='*/@*'/></Metadata>"),
              "<package name=\"Retail\" ok=\"4\"/>");
}

// What "Response" and its child leave of a limit of three elements.
TEST(FunctionRequest, CountsThePackageOnlyWhereItIsWritten) {
    FunctionScene scene;
    for (std::size_t const limit : {2U, 3U}) {
        TestResponse response({.elements = limit});
        TestRequest request("<Metadata function='1'/>");
        auto const ask = [&] { scene.provider.doRequest(request.node(), response.node()); };
        if (limit == 2U) {
            EXPECT_THROW(ask(), KRLLimitException);
            EXPECT_EQ(response.text(), "<Response><Result/></Response>");
        } else {
            ask();
            EXPECT_EQ(response.text(),
                      "<Response><Result><package name=\"Retail\"/></Result></Response>");
        }
        EXPECT_EQ(response.elementCount(), limit);
    }
    ProviderScene model("<model><namespace id='n' name='N'/></model>");
    TestResponse response({.elements = 3});
    TestRequest request("<Metadata><Property a='*/@ID'/></Metadata>");
    model.provider.doRequest(request.node(), response.node());
    EXPECT_EQ(response.text(), "<Response><Result><folder ID=\"n\"/></Result></Response>");
    EXPECT_EQ(response.elementCount(), 3U);
}

TEST(FunctionRequest, SetsAnEmptyPackageValueToo) {
    FunctionScene scene;
    scene.session.setPackage("");
    EXPECT_EQ(scene.ask("<Metadata function='1'/>"), "<package name=\"\"/>");
}

TEST(FunctionRequest, AsksInTheSessionsLocaleByTheModelPath) {
    FunctionScene scene("path:/any");
    scene.session.setLocale("de_AT");
    scene.ask("<Metadata function='1'><Property a='./@size'/></Metadata>");
    EXPECT_EQ(scene.session.packageQuestions(), (Strings{"/any de_AT", "/any de_AT size"}));
}

TEST(FunctionRequest, GivesAnEmptyPackageOutsideContent) {
    FunctionScene scene("a model");
    EXPECT_EQ(scene.ask("<Metadata function='1'><Property a='./@size'/></Metadata>"), "<package/>");
    EXPECT_EQ(scene.session.packageQuestions(), Strings{});
}

TEST(FunctionRequest, WritesNoGlobalEntryAndReadsNoStart) {
    FunctionScene scene;
    EXPECT_EQ(scene.askForResponse("<Metadata function='1' start_at='[' start_atRef='x'>"
                                   "<Property a='/@defaultLocale'/></Metadata>"),
              "<Response><Result><package name=\"Retail\"/></Result></Response>");
    EXPECT_EQ(scene.session.calls().count(Call::GetRootObject), 0);
}

TEST(FunctionRequest, PutsThePackageLastInTheFirstChild) {
    FunctionScene scene;
    TestRequest request("<Metadata function='1'/>");
    TestResponse response;
    scene.provider.doRequest(request.node(), response.node());
    scene.provider.doRequest(request.node(), response.node());
    EXPECT_EQ(response.text(), "<Response><Result><package name=\"Retail\"/>"
                               "<package name=\"Retail\"/></Result></Response>");
}

TEST(FunctionRequest, KeepsThePackageWhenReadingItsPropertiesFails) {
    FunctionScene scene;
    TestRequest request("<Metadata function='1'><Property a='./@size'/></Metadata>");
    TestResponse response;
    scene.session.calls().failAt(Call::GetPackagePropertyValue, 1);
    expectInjectedFailure([&] { scene.provider.doRequest(request.node(), response.node()); });
    EXPECT_EQ(response.resultText(), "<package name=\"Retail\"/>");
}

} // namespace

#include "VexAnswerAt.h"

#include "VexTreeExplanation.h"
#include "tests/plugin/PluginCase.h"
#include "tests/support/ExpectFailure.h"

#include <gtest/gtest.h>

extern "C" void const* VexPlugin_getExtension(char const* id);

namespace {

constexpr char const* unrestrictedAnswer = "a model";

// The German names lead start paths astray: the second sibling's stands at the place of
// the second language.
constexpr char const* nestedAnswer = R"(<model id="m" defaultLocale="en">
    <locales><locale>en</locale><locale>de</locale></locales>
    <namespace id="n" name="Sales"><folder id="f" name="Facts [all]">
      <querySubject id="q" name="Orders"><queryItem id="i" name="Total"/>
        <queryItemFolder id="d" name="Dates"><queryItem id="j" name="Day"/></queryItemFolder>
      </querySubject></folder>
      <filter id="x"><property name="name" locale="en">Open</property>
        <property name="name" locale="de">Offen</property></filter>
      <filter id="y"><property name="name" locale="en">Late</property>
        <property name="name" locale="de">Verspaetet</property></filter>
      <shortcut id="s" name="Again" refobj="[Sales].[Orders]"/>
      <folder id="unnamed"><filter id="z" name="Z"/></folder></namespace>
    <dataSources id="outside" name="Sources"/>
    <securityViews><securityView id="v"><set kind="included"><item>n</item><item>q</item>
      </set></securityView></securityViews></model>)";

std::string const allOfIt =
    R"(<Metadata start_at="[nowhere]" start_atRef="(" ><Property name="*/@ID"/>)"
    R"(<Property name="*/@name"/><Property name="*/@_path"/><Property name="*/@_ref"/>)"
    R"(<Property name="*/*"/></Metadata>)";

/// The same request, starting at a path.
std::string atPath(std::string const& start) {
    return R"(<Metadata start_at=")" + start +
           R"("><Property name="*/@ID"/>)"
           R"(<Property name="*/@name"/><Property name="*/@_path"/><Property name="*/@_ref"/>)"
           R"(<Property name="*/*"/><Property name="namespace/folder"/>)"
           R"(<Property name="namespace/querySubject"/><Property name="namespace/queryItem"/>)"
           R"(<Property name="namespace/queryItemFolder"/><Property name="namespace/filter"/>)"
           R"(</Metadata>)";
}

class AnswerAt : public testing::Test {
protected:
    void answer(VEX_HANDLE object, std::string const& requestXml = allOfIt,
                char const* path = unrestrictedAnswer, VexTreeObserver* observer = nullptr) {
        TestRequest request(requestXml);
        KRLIDOM_Node* const response = m_builds ? &m_on.response.node() : nullptr;
        static_cast<VexAnswerAt const*>(VexPlugin_getExtension(VexAnswerAt::Id))
            ->answer(m_on.session, path, request.node(), response, object, observer);
    }
    std::string answered(char const* id, std::string const& requestXml = allOfIt,
                         char const* path = unrestrictedAnswer) {
        m_on.response = TestResponse();
        answer(m_on.model.byId(id), requestXml, path);
        return m_on.response.resultText();
    }
    void expectRefused(VEX_HANDLE object, int testLine = __builtin_LINE()) {
        m_on.response = TestResponse();
        expectFailure(
            [&] { answer(object, R"(<Metadata><Property name="/@defaultLocale"/></Metadata>)"); },
            1444379511, "VexMAAction", 83, "VexAction::validateParameter");
        EXPECT_EQ(m_on.response.text(), "<Response><Result/></Response>") << testLine;
    }

    PluginCase m_on{nestedAnswer};
    bool m_builds = true;
};

TEST_F(AnswerAt, WritesTheObjectWhateverTheRequestSaysAboutTheStart) {
    EXPECT_EQ(answered("i"), R"(<queryItem ID="i" _path="[Sales].[Facts [all]]].[Orders].[Total]" )"
                             R"(_ref="[Sales].[Orders].[Total]" name="Total"/>)");
}

TEST_F(AnswerAt, WritesWhatAStartPathThatLeadsThereWrites) {
    struct Row {
        char const* id;
        char const* path;
    };
    constexpr Row rows[] = {{"n", "[Sales]"},
                            {"f", "[Sales].[Facts [all]]]"},
                            {"q", "[Sales].[Facts [all]]].[Orders]"},
                            {"i", "[Sales].[Facts [all]]].[Orders].[Total]"},
                            {"d", "[Sales].[Facts [all]]].[Orders].[Dates]"},
                            {"j", "[Sales].[Facts [all]]].[Orders].[Dates].[Day]"},
                            {"y", "[Sales].[Late]"},
                            {"s", "[Sales].[Again]"}};
    for (Row const& row : rows) {
        std::string const request = atPath(row.path);
        std::string const atObject = answered(row.id, request);
        m_on.response = TestResponse();
        TestRequest byPath(request);
        I18NString path(unrestrictedAnswer);
        VexParams in;
        in.AddParam(VexVariant(0L));
        in.AddParam(VexVariant(&path));
        in.AddParam(VexVariant(&byPath.node()));
        m_on.act(PluginCase::Metadata, in);
        EXPECT_EQ(atObject, m_on.response.resultText()) << row.id;
        EXPECT_NE(atObject, "") << row.id;
    }
}

TEST_F(AnswerAt, ReachesWhatNamesInAnotherLanguageDoNot) {
    std::string const request = R"(<Metadata><Property name="*/@name"/></Metadata>)";
    m_on.session.setLocale("de");
    EXPECT_EQ(answered("y", request), R"(<filter name="Verspaetet"/>)");
}

TEST_F(AnswerAt, GivesAnUnnamedContainerAnEmptyNameOnThePath) {
    EXPECT_EQ(answered("z"),
              R"(<filter ID="z" _path="[Sales].[].[Z]" _ref="[Sales].[Z]" name="Z"/>)");
}

TEST_F(AnswerAt, ReachesWhatStandsInNoNamespace) {
    EXPECT_EQ(answered("outside"),
              R"(<dataSources ID="outside" _path="[Sources]" name="Sources"/>)");
}

TEST_F(AnswerAt, ShowsTheObjectToEveryoneAndItsMembersToThoseWhoMaySeeThem) {
    EXPECT_EQ(answered("f",
                       R"(<Metadata><Property name="*/@name"/><Property name="*/*"/></Metadata>)",
                       "/content/m"),
              R"(<folder name="Facts [all]"><querySubject name="Orders"/></folder>)");
}

TEST_F(AnswerAt, ObeysDepthAndConstraints) {
    EXPECT_EQ(answered("q",
                       R"(<Metadata Depth="1"><Property name="*/@name"/><Property name="*/*"/>)"
                       R"(<Property name="*/@ID"/><Constraint c="./@ID=[w]"/></Metadata>)"),
              R"(<querySubject name="Orders"/>)");
}

TEST_F(AnswerAt, AnswersARequestForFunctionsAsEver) {
    m_on.session.setPackage("Retail");
    EXPECT_EQ(answered("q", R"(<Metadata><Functions function="1"/></Metadata>)", "/content/m"),
              R"(<package name="Retail"/>)");
}

TEST_F(AnswerAt, ChecksWhatEveryRequestIsCheckedFor) {
    expectFailure([&] { answer(m_on.model.byId("q"), "<Other/>"); }, 1444379513, "VexMDMaProvider",
                  0, "VexMDMaProvider::doRequest");
    expectFailure(
        [&] { answer(m_on.model.byId("q"), R"(<Metadata securityView="w"/>)", "/content/m"); },
        1170551942, "VexMDMaProvider", 241, "VexMDMaProvider::getAccessEngine", {"v", "w"});
}

TEST_F(AnswerAt, RefusesWhatIsNoElementOfTheModelBeforeItWritesAnything) {
    VEX_HANDLE const query = m_on.model.byId("q");
    expectRefused(VEX_HANDLE());
    expectRefused(m_on.model.GetRootObject());
    expectRefused(m_on.model.property(query, "name"));
    expectRefused(m_on.model.property(query, "queryItem")); // a collection
    TestModel const other(
        R"(<model><namespace name="A"><filter id="x" name="X"/></namespace></model>)");
    expectRefused(other.byId("x"));
    m_on.model.invalidate(query);
    expectRefused(query);
}

TEST_F(AnswerAt, NeedsAResponseOrAnObserver) {
    m_builds = false;
    expectFailure([&] { answer(m_on.model.byId("q")); }, 1444379511, "VexMAAction", 83,
                  "VexAction::validateParameter");
}

class Count final : public VexTreeObserver {
public:
    void report(VexTreeReport const& report) override { objects.push_back(report.object); }
    void reportOutside(VexTreeSize const& size) override { outside = size; }

    std::vector<VEX_HANDLE> objects;
    VexTreeSize outside;
};

TEST_F(AnswerAt, TellsAnObserverWithAndWithoutAnAnswer) {
    Count with;
    answer(m_on.model.byId("d"), allOfIt, unrestrictedAnswer, &with);
    EXPECT_EQ(with.objects, (std::vector<VEX_HANDLE>{m_on.model.byId("d"), m_on.model.byId("j")}));
    EXPECT_EQ(with.outside.elements, 0U);
    m_builds = false;
    Count without;
    answer(m_on.model.byId("d"), allOfIt, unrestrictedAnswer, &without);
    EXPECT_EQ(without.objects, with.objects);
    EXPECT_EQ(without.outside.elements, 2U);
}

TEST_F(AnswerAt, LeavesTheSessionAsItWas) {
    answered("q");
    EXPECT_FALSE(m_on.session.customData().HasNamespace("VexMAActionPlugin"));
}

} // namespace

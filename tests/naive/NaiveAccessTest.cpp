#include "tests/naive/NaiveTestSupport.h"

namespace naive {
namespace {

std::string withViews(std::string const& views) {
    return R"(<model defaultLocale="en"><namespace id="n" name="N"><folder id="f" name="F">
        <querySubject id="q" name="Q"/><querySubject id="p" name="P"/></folder>
        <namespace id="m" name="M"><querySubject id="r" name="R"/></namespace></namespace>
        <securityViews>)" +
           views + "</securityViews></model>";
}

std::string included(std::string const& ids) {
    std::string set = "<set kind='included'>";
    for (char const id : ids) {
        set += std::string("<item>") + id + "</item>";
    }
    return set + "</set>";
}

std::string const catalogue = R"(<catalog><model path="/content/a" file="m.xml">
    <package value="Pack"><property name="tip" locale="en">Tip</property></package>
    <grant role="r" view="v2"/><grant role="r" view="v1"/><grant role="s" view="v1"/></model>
    <model path="/content/b" file="m.xml"/>
    <user name="u"><role>r</role></user><user name="w"><role>none</role></user></catalog>)";

std::vector<std::string> const everything = {"*/@name", "*/folder", "*/querySubject"};

TEST(NaiveAccess, LiftsMembersOfWhatIsLeftOut) {
    TestSession test(withViews("<securityView id='v1'>" + included("nqm") + "</securityView>"), u"",
                     catalogue, u"u");
    EXPECT_EQ(test.result("", everything, u"/content/a"),
              R"(<folder name="N"><querySubject name="Q"/><folder name="M"/></folder>)");
    EXPECT_EQ(test.result("", everything, u"elsewhere").substr(0, 17), R"(<folder name="N">)");
}

TEST(NaiveAccess, TheDepthIsNotTestedForWhatIsLeftOut) {
    TestSession test(withViews("<securityView id='v1'>" + included("npq") + "</securityView>"), u"",
                     catalogue, u"u");
    EXPECT_EQ(test.result("Depth='2'", everything, u"/content/a"),
              R"(<folder name="N"><querySubject name="Q"/><querySubject name="P"/></folder>)");
}

TEST(NaiveAccess, ANamespaceStaysHiddenForItsOwnContent) {
    TestSession test(withViews("<securityView id='v1'>" + included("r") + "</securityView>"), u"",
                     catalogue, u"u");
    EXPECT_EQ(test.result("start_at='[N]'", everything, u"/content/a"),
              R"(<folder name="N"><querySubject name="R"/></folder>)");
}

TEST(NaiveAccess, TheRequestMayNameOneView) {
    TestSession test(withViews("<securityView id='v1'>" + included("q") + "</securityView>"), u"",
                     catalogue, u"u");
    expectFailure(test.ask("securityView='v3'", everything, u"/content/a"), 1170551942, 241,
                  u"VexMDMaProvider::getAccessEngine", {u"v1, v2", u"v3"});
    expectFailure(test.ask("securityView='v2'", everything, u"/content/a"), 1170551942, anyLine,
                  u"VexMDAccessEngine::populateAccessInfo", {});
    EXPECT_EQ(test.result("securityView='v1' start_at='[N].[F]'", everything, u"/content/a"),
              R"(<folder name="F"><querySubject name="Q"/></folder>)");
}

TEST(NaiveAccess, NeedsSecurityInformationOnContentPaths) {
    TestSession alone(withViews(""));
    expectFailure(alone.ask("", everything, u"/content/a"), 1444335572, anyLine,
                  u"VexMDMaProvider::RetrieveSecurityInfo", {});
    TestSession without(withViews(""), u"", catalogue, u"w");
    EXPECT_EQ(without.result("", everything, u"path:/content/a"), "failure 1170699671");
    TestSession noViews(withViews(""), u"", catalogue, u"u");
    EXPECT_EQ(noViews.result("", everything, u"path:/content/a"), "failure 1170839636");
}

TEST(NaiveAccess, AFunctionRequestGivesThePackage) {
    TestSession test(withViews(""), u"", catalogue, u"u");
    std::vector<std::string> const asked = {"package/@tip", "*/@none"};
    EXPECT_EQ(test.result("function='x'", asked, u"/content/a"),
              R"(<package name="Pack" tip="Tip"/>)");
    TestSession free(withViews(""), u"", catalogue, u"u");
    EXPECT_EQ(free.result("", asked, u"m", "<Functions a='1'/>"), "<package/>");
}

TEST(NaiveRoles, WithADefaultViewIncludedComesFirst) {
    TestSession test(withViews("<securityView id='v1'>" + included("fqprm") + "</securityView>" +
                               "<securityView id='v3' roleBased='2x'><member roleId='r'/>" +
                               included("q") + "<set kind='excluded'><item>p</item></set>" +
                               "<set kind='hidden'><item>r</item></set></securityView>" +
                               "<securityView id='v4' roleBased='true'><set kind='excluded'>"
                               "<item>q</item><item>f</item></set></securityView>"),
                     u"", catalogue, u"u");
    EXPECT_EQ(test.access(u"/content/a", u"q"), 1);
    EXPECT_EQ(test.access(u"/content/a", u"p"), 0);
    EXPECT_EQ(test.access(u"/content/a", u"f"), 0);
    EXPECT_EQ(test.access(u"/content/a", u"r"), 1);
    EXPECT_EQ(test.access(u"/content/a", u"n"), 0);
    EXPECT_EQ(test.access(u"/content/a", u"n", 1), 1);
}

TEST(NaiveRoles, WithoutADefaultViewHiddenComesFirst) {
    TestSession test(withViews("<securityView id='v1'>" + included("fqprm") + "</securityView>" +
                               "<securityView id='v3' roleBased='1'><member roleId='r'/>" +
                               included("qpr") + "<set kind='excluded'><item>p</item></set>" +
                               "<set kind='hidden'><item>r</item></set></securityView>" +
                               "<securityView id='v4' roleBased='yes'/>" +
                               "<securityView id='v5' roleBased='1'><member roleId='s'/>"
                               "<member roleId='r'/>" +
                               included("f") + "</securityView>"),
                     u"", catalogue, u"u");
    EXPECT_EQ(test.access(u"/content/a", u"q"), 1);
    EXPECT_EQ(test.access(u"/content/a", u"p"), 1);
    EXPECT_EQ(test.access(u"/content/a", u"r"), 0);
    EXPECT_EQ(test.access(u"/content/a", u"f"), 0);
}

TEST(NaiveAccessChecks, StayFreeOnceAPathWasOutsideTheContent) {
    TestSession test(withViews("<securityView id='v1'>" + included("q") + "</securityView>"), u"",
                     catalogue, u"u");
    EXPECT_EQ(test.access(u"/content/a", u"q"), 1);
    EXPECT_EQ(test.access(u"/content/a", u"p"), 0);
    EXPECT_EQ(test.access(u"/content/b", u"q"), 1170699671);
    EXPECT_EQ(test.access(u"elsewhere", u"p"), 1);
    EXPECT_EQ(test.access(u"/content/a", u"p"), 1);
}

} // namespace
} // namespace naive

#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

/// Nina's role is granted nothing; pia's view shows a query subject inside of what it hides,
/// and a query item beside one that it hides.
class RefusedUser : public testing::Test {
protected:
    RefusedUser() {
        m_folder.Write("s.model.xml", R"(<model id="m" defaultLocale="en"><locales>
            <locale>en</locale><locale>ga</locale></locales>
            <namespace id="n.one" name="Openspace"><folder id="f.one" name="Hiddenfolder">
            <querySubject id="q.open" name="Opensubject">
            <queryItem id="i.open" name="Openitem"/>
            <queryItem id="i.hidden" name="Hiddenitem" hiddenproperty="1"/></querySubject></folder>
            <namespace id="n.hidden" name="Hiddenspace">
            <querySubject id="q.inside" name="Insidesubject"/></namespace>
            <hiddenclass id="h.hidden" name="Hiddenthing"/>
            </namespace><securityViews><securityView id="v1"><set kind="included">
            <item>n.one</item><item>q.open</item><item>i.open</item><item>q.inside</item></set>
            </securityView></securityViews></model>)");
        m_folder.Write("s.catalog.xml", R"(<catalog><model path="/content/s" file="s.model.xml">
            <grant role="r" view="v1"/></model><user name="pia"><role>r</role></user>
            <user name="nina"><role>other</role></user><user name="noah"/></catalog>)");
    }

    ToolResult Run(std::string const& command, std::string const& user,
                   std::vector<std::string> const& more, std::string const& input = "") const {
        std::vector<std::string> arguments{command, "--catalog", "s.catalog.xml", "--model",
                                           "/content/s"};
        if (!user.empty()) {
            arguments.insert(arguments.end(), {"--user", user});
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        return m_folder.Run(arguments, input);
    }

    ToolFolder m_folder;
};

/// No text that the user gets holds a name, id, class, property or language of the model
/// beyond what the arguments said.
void expectNothingOfTheModel(ToolResult const& result, std::string const& what) {
    EXPECT_NE(result.status, 0) << what;
    EXPECT_EQ(result.out, "") << what;
    for (char const* const word :
         {"Openspace", "Opensubject", "Openitem", "Hidden", "hiddenclass", "hiddenproperty",
          "Insidesubject", "n.one", "f.one", "q.open", "i.open", "i.hidden", "q.inside", "h.hidden",
          "did you mean", "\"ga\"", "\"v1\""}) {
        EXPECT_THAT(result.error, Not(HasSubstr(word))) << what;
    }
}

TEST_F(RefusedUser, LearnsNothingByAnyRoad) {
    std::vector<std::vector<std::string>> const roads{
        {},
        {"--estimate"},
        {"--estimate", "--depth", "1"},
        {"--estimate", "--max-elements", "2"},
        {"--estimate", "--functions"},
        {"--estimate", "--global", "supportedLocales"},
        {"--estimate", "--id", "q.opem"},
        {"--estimate", "--start", "[Openspac]"},
        {"--global", "supportedLocales"},
        {"--start", "[Openspac]"},
        {"--start", "[Openspac].[Hiddenfoldr]"},
        {"--ref", "[Openspac].[Opensubjec]"},
        {"--id", "q.opem"},
        {"--id", "[Openspac].[Opensubjec]"},
        {"--property", "hiddenpropert"},
        {"--property", "hiddenclas/@name"},
        {"--collection", "hiddenclas"},
        {"--constraint", "hiddenpropert=1"},
        {"--view", "v2"},
        {"--locale", "ja"},
    };
    for (char const* const user : {"nina", "noah"}) {
        for (std::vector<std::string> const& road : roads) {
            std::string const what = std::string(user) + ' ' + testing::PrintToString(road);
            expectNothingOfTheModel(Run("metadata", user, road), what);
            if (road.empty() || road.front() != "--estimate") {
                expectNothingOfTheModel(Run("tree", user, road), what);
            }
        }
        expectNothingOfTheModel(Run("tree", user, {"--why"}), user);
        expectNothingOfTheModel(Run("access", user, {"q.opem"}), user);
        expectNothingOfTheModel(Run("access", user, {"[Openspac].[Opensubjec]"}), user);
    }
}

TEST_F(RefusedUser, LearnsNothingInASession) {
    std::string lines;
    for (char const* const handle : {"q.opem", "[Openspac].[Opensubjec]", "Hiddenite"}) {
        lines +=
            std::string(R"({"action": 32000, "in": [{"long": 0}, {"string": "/content/s"}, )") +
            R"({"handle": ")" + handle + R"("}, {"long": 0}]})" + '\n';
    }
    for (char const* const start : {"[Openspac]", "[Openspace].[Opensubjec]"}) {
        lines +=
            std::string(R"({"action": 31000, "in": [{"long": 0}, {"string": "/content/s"}, )") +
            R"({"node": "<Metadata start_at='x)" + start + R"('/>"}]})" + '\n';
    }
    for (char const* const user : {"nina", "noah", "pia"}) {
        ToolResult const result = Run("session", user, {}, lines);
        EXPECT_THAT(result.out, HasSubstr("the model has no object"));
        for (char const* const word : {"did you mean", "Opensubject", "Hiddenitem", "q.open"}) {
            EXPECT_THAT(result.out, Not(HasSubstr(word))) << user;
        }
    }
}

TEST_F(RefusedUser, WhoSeesSomethingLearnsOnlyOfThat) {
    auto const told = [&](std::vector<std::string> const& more) {
        return Run("metadata", "pia", more).error;
    };
    EXPECT_THAT(told({"--id", "[Openspace].[Opensubject].[Openitm]"}),
                HasSubstr("did you mean [Openspace].[Opensubject].[Openitem]?"));
    EXPECT_THAT(told({"--id", "i.opem"}), HasSubstr("did you mean i.open"));
    for (std::vector<std::string> const& hidden :
         {std::vector<std::string>{"--id", "i.hiden"},
          {"--id", "[Openspace].[Opensubject].[Hiddenitm]"},
          {"--id", "[Hiddenspac].[Insidesubject]"},
          {"--id", "[Openspace].[Insidesubject]"},
          {"--ref", "[Hiddenspac].[Insidesubject]"},
          {"--start", "[Openspace].[Opensubjct]"},
          {"--start", "[Openspace].[Hiddenspac].[Insidesubject]"},
          {"--start", "Insidesubject"},
          {"--property", "hiddenpropert"},
          {"--collection", "hiddenclas"}}) {
        std::string const error = told(hidden);
        for (char const* const word : {"Hiddenitem", "Hiddenspace", "Hiddenfolder", "i.hidden",
                                       "hiddenclass", "hiddenproperty"}) {
            EXPECT_THAT(error, Not(HasSubstr(word))) << testing::PrintToString(hidden);
        }
    }
}

TEST_F(RefusedUser, IsNotToldOfModelsByCompletions) {
    for (char const* const shell : {"bash", "zsh", "fish"}) {
        EXPECT_EQ(m_folder.Run({"completion", shell}).out,
                  ToolFolder().Run({"completion", shell}).out);
    }
}

} // namespace

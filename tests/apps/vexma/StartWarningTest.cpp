#include "tests/apps/vexma/ToolRun.h"
#include "tests/support/Casts.h"

#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// The German name of the second query subject stands at the place of the second
// language: it leads to the first one.
constexpr char const* twoLanguages = R"(<model defaultLocale="en">
  <locales><locale>en</locale><locale>de</locale></locales>
  <namespace id="n" name="Sales">
    <querySubject id="a" usage="list">
      <property name="name" locale="en">Prices</property>
      <property name="name" locale="de">Preise</property>
    </querySubject>
    <querySubject id="b">
      <property name="name" locale="en">Orders</property>
      <property name="name" locale="de">Auftraege</property>
    </querySubject>
  </namespace>
  <securityViews>
    <securityView id="v"><set kind="included"><item>n</item><item>b</item></set></securityView>
  </securityViews>
</model>
)";

class StartWarning : public testing::Test {
protected:
    StartWarning() {
        m_folder.Write("two.model.xml", twoLanguages);
        m_folder.Write("two.catalog.xml", casts::catalogue({"v"}, "two.model.xml"));
    }

    ToolResult ask(std::string const& command, std::vector<std::string> const& more) const {
        std::vector<std::string> arguments{command, "two.model.xml"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return m_folder.Run(arguments);
    }
    ToolResult askAsCarl(std::vector<std::string> const& more) const {
        std::vector<std::string> arguments{
            "metadata", "--catalog", "two.catalog.xml", "--model", "/content/m", "--user", "carl"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return m_folder.Run(arguments);
    }

    ToolFolder m_folder;
};

TEST_F(StartWarning, NamesWhatWasAskedForAndWhatWasFound) {
    for (char const* const command : {"metadata", "tree"}) {
        ToolResult const result = ask(command, {"--start", "[Sales].[Auftraege]"});
        EXPECT_EQ(result.status, 0) << command;
        EXPECT_THAT(result.out, HasSubstr("Prices")) << command;
        EXPECT_EQ(result.error,
                  "vexma: warning: the start path [Sales].[Auftraege] asks for \"Auftraege\" and "
                  "leads to querySubject \"Prices\", which has that name in no language; "
                  "did you mean [Sales].[Orders]?\n")
            << command;
    }
}

TEST_F(StartWarning, NamesThemForAReferenceInADocumentToo) {
    m_folder.Write("by-reference.xml",
                   "<Metadata start_atRef='[Sales].[Teuer]'><Property name='*/@name'/></Metadata>");
    m_folder.Write("two.model.xml", R"(<model defaultLocale="en">
      <locales><locale>en</locale><locale>de</locale></locales>
      <namespace id="n" name="Sales">
        <filter id="a" name="Cheap"/>
        <filter id="b"><property name="name" locale="en">Dear</property>
          <property name="name" locale="de">Teuer</property></filter>
      </namespace></model>)");
    ToolResult const result = ask("metadata", {"--request", "by-reference.xml"});
    EXPECT_THAT(result.out, HasSubstr("<filter name=\"Cheap\"/>"));
    EXPECT_THAT(result.error, HasSubstr("warning: the reference [Sales].[Teuer] asks for "
                                        "\"Teuer\" and leads to filter \"Cheap\""));
}

// A name on the way leads into another container, or nothing bears it and it is passed
// over, and the last name is found there.
TEST_F(StartWarning, TellsOfANamesakeInAnotherPlace) {
    m_folder.Write("two.model.xml", R"(<model defaultLocale="en">
      <locales><locale>en</locale><locale>de</locale></locales>
      <namespace id="n" name="Sales">
        <folder id="f" name="Bills"><filter id="one" name="Open"/></folder>
        <folder id="g" name="Orders"><filter id="two" name="Open"/></folder>
        <filter id="three" name="Open"/><shortcut id="s" name="Again" refobj="[Sales]"/>
      </namespace></model>)");
    ToolResult const astray =
        ask("metadata", {"--start", "[Sales].[Orders].[Open]", "--property", "ID"});
    EXPECT_THAT(astray.out, HasSubstr("<filter ID=\"one\"/>"));
    EXPECT_EQ(astray.error,
              "vexma: warning: the start path [Sales].[Orders].[Open] leads to filter "
              "\"Open\", which does not stand where the path says; did you mean "
              "--id two?\n");
    ToolResult const passedOver =
        ask("metadata", {"--start", "[Sales].[Nowhere].[Open]", "--property", "ID", "--strict"});
    EXPECT_EQ(passedOver.status, 1);
    EXPECT_THAT(passedOver.out, HasSubstr("<filter ID=\"three\"/>"));
    EXPECT_THAT(passedOver.error, HasSubstr("which does not stand where the path says"));
    for (std::string const right : {"[Sales].[Bills].[Open]", "[Sales].[Open]", "[Sales].[Again]",
                                    "[Sales].[Again].[Open]"}) {
        EXPECT_THAT(ask("metadata", {"--start", right}).error, IsEmpty()) << right;
    }
}

TEST_F(StartWarning, TellsOfAReferenceThatLeadsToNothing) {
    ToolResult const result = ask("metadata", {"--ref", "[Sales].[Ordres]"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "<Response><Result/></Response>\n");
    EXPECT_THAT(result.error, HasSubstr("vexma: warning: the reference [Sales].[Ordres] leads to "
                                        "nothing; the answer is empty; did you mean --id b?\n"));
}

TEST_F(StartWarning, EndsAStrictCommandWithStatusOneAndItsAnswer) {
    for (std::string const command : {"metadata", "tree"}) {
        ToolResult const result = ask(command, {"--start", "[Sales].[Auftraege]", "--strict"});
        EXPECT_EQ(result.status, 1) << command;
        EXPECT_THAT(result.out, HasSubstr("Prices")) << command;
        EXPECT_THAT(result.error, HasSubstr("warning: ")) << command;
    }
}

TEST_F(StartWarning, IsNotGivenWhereTheObjectHasTheNameInSomeLanguage) {
    for (std::string const language : {"en", "de"}) {
        for (std::string const start : {"[Sales].[Prices]", "[Sales].[Orders]"}) {
            ToolResult const result =
                ask("metadata", {"--locale", language, "--start", start, "--strict"});
            EXPECT_EQ(result.status, 0) << language << start;
            EXPECT_THAT(result.error, IsEmpty()) << language << start;
        }
    }
}

TEST_F(StartWarning, IsNotGivenWithoutAStart) {
    ToolResult const result = ask("metadata", {"--strict", "--property", "usage"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
}

TEST_F(StartWarning, GoesWithAnEstimateAndWithReasons) {
    EXPECT_THAT(ask("metadata", {"--start", "[Sales].[Auftraege]", "--estimate"}).error,
                HasSubstr("leads to querySubject \"Prices\""));
    ToolResult const reasons = ask("tree", {"--start", "[Sales].[Auftraege]", "--why", "--strict"});
    EXPECT_EQ(reasons.status, 1);
    EXPECT_THAT(reasons.error, HasSubstr("leads to querySubject \"Prices\""));
}

// The start of an answer is shown to everyone; its name only when it is asked for.
TEST_F(StartWarning, DoesNotNameWhatTheUserMayNotSeeBeyondTheAnswer) {
    ToolResult const named = askAsCarl({"--start", "[Sales].[Auftraege]"});
    EXPECT_THAT(named.out, HasSubstr("Prices"));
    EXPECT_THAT(named.error, HasSubstr("\"Prices\""));
    ToolResult const unnamed = askAsCarl({"--start", "[Sales].[Auftraege]", "--property", "usage"});
    EXPECT_THAT(unnamed.out, HasSubstr("<querySubject usage=\"list\"/>"));
    EXPECT_THAT(unnamed.error, HasSubstr("asks for \"Auftraege\" and leads to another object, "));
    EXPECT_THAT(unnamed.error, Not(HasSubstr("Prices")));
}

// As README says under "Limitations".
TEST(StartPaths, OfTheSampleModelLeadAstrayInGerman) {
    std::string const model = std::string(VEX_SOURCE_DIR) + "/samples/retail.model.xml";
    ToolFolder const folder;
    std::string const tree = folder
                                 .Run({"metadata", model, "--locale", "de", "--property", "ID",
                                       "--property", "_path", "--collection", "*"})
                                 .out;
    std::regex const object("ID=\"([^\"]*)\" _path=\"([^\"]*)\"");
    std::string collections; // that the ways lead through
    for (char const* const name :
         {"folder", "querySubject", "queryItem", "queryItemFolder", "filter", "calculation"}) {
        collections += std::string("<Property n=\"*/") + name + "\"/>";
    }
    std::vector<std::string> ids;
    std::string lines;
    for (std::sregex_iterator at(tree.begin(), tree.end(), object), end; at != end; ++at) {
        ids.push_back((*at)[1]);
        nlohmann::json const line{
            {"action", 31000},
            {"in",
             {{{"long", 0}},
              {{"string", "file:m"}},
              {{"node", "<Metadata Depth=\"1\" start_at=\"" + (*at)[2].str() +
                            "\"><Property n=\"*/@ID\"/>" + collections + "</Metadata>"}}}}};
        lines += line.dump() + '\n';
    }
    std::istringstream answers(folder.Run({"session", model, "--locale", "de"}, lines).out);
    int elsewhere = 0;
    int nowhere = 0;
    for (std::string const& id : ids) {
        std::string line;
        std::getline(answers, line);
        std::string const response = nlohmann::json::parse(line).value("response", "");
        std::size_t const found = response.find("ID=\"");
        nowhere += found == std::string::npos ? 1 : 0;
        bool const isMeant = response.find("ID=\"" + id + '"') == found;
        elsewhere += found != std::string::npos && !isMeant ? 1 : 0;
    }
    EXPECT_EQ(ids.size(), 168U);
    EXPECT_EQ(elsewhere, 20);
    EXPECT_EQ(nowhere, 91);
}

} // namespace

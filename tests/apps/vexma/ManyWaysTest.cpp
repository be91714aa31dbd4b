// Shortcuts that lead in circles: whole answers would have no end, or no bearable one.

#include "tests/apps/vexma/ToolRun.h"
#include "tests/support/Casts.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

/// Room for each of 15,000 objects in its place, and once behind each shortcut to its type.
constexpr std::size_t bearable = 60'000;

/// A model like the description of a public interface: types, whose fields are query
/// items or shortcuts to other types. The view leaves out every second type's fields.
class ManyWays : public testing::Test {
protected:
    using Target = std::size_t (*)(std::size_t type, std::size_t shortcut);

    void writeModel(std::size_t types, std::size_t shortcutsOfAType, std::size_t fields,
                    Target target) const {
        std::string model = R"(<model defaultLocale="en"><namespace id="api" name="Api">)";
        std::string view = "<item>api</item>";
        for (std::size_t type = 0; type < types; ++type) {
            std::string const id = 't' + std::to_string(type);
            model += "<querySubject id=\"" + id + "\" name=\"Type " + std::to_string(type) + "\">";
            view += "<item>" + id + "</item>";
            for (std::size_t field = 0; field < fields; ++field) {
                std::string const own = id + ".f" + std::to_string(field);
                model +=
                    "<queryItem id=\"" + own + "\" name=\"Field " + std::to_string(field) + "\"/>";
                view += type % 2 == 0 ? "<item>" + own + "</item>" : "";
            }
            for (std::size_t shortcut = 0; shortcut < shortcutsOfAType; ++shortcut) {
                std::string const own = id + ".s" + std::to_string(shortcut);
                model += "<shortcut id=\"" + own + "\" name=\"Link " + std::to_string(shortcut) +
                         "\" refobj=\"[Api].[Type " +
                         std::to_string(target(type, shortcut) % types) + "]\"/>";
                view += "<item>" + own + "</item>";
            }
            model += "</querySubject>";
        }
        model += "</namespace><securityViews><securityView id=\"v\"><set kind=\"included\">" +
                 view + "</set></securityView></securityViews></model>";
        m_folder.Write("api.model.xml", model);
        m_folder.Write("api.catalog.xml", casts::catalogue({"v"}, "api.model.xml"));
    }

    /// Runs a command on it, for which each tree may hold that many elements.
    ToolResult run(std::string const& command, std::vector<std::string> more = {},
                   std::size_t elements = bearable) const {
        std::vector<std::string> arguments{command,   "--catalog",      "api.catalog.xml",
                                           "--model", "/content/m",     "--user",
                                           "carl",    "--max-elements", std::to_string(elements)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return m_folder.Run(arguments);
    }

    ToolFolder m_folder;
};

constexpr std::size_t manyTypes = 700;

/// 15,000 objects with 1,400 shortcuts, all of them in cycles.
std::size_t everywhere(std::size_t type, std::size_t shortcut) {
    return shortcut == 0 ? type + 1 : type * 31 + 17;
}

TEST_F(ManyWays, AreVerifiedCompletelyInAFewElementsForEachObject) {
    writeModel(manyTypes, 2, 19, &everywhere);
    json const report = json::parse(run("verify", {"--json"}).out);
    EXPECT_EQ(report.at("finished"), true);
    json const& user = report.at("users").at(0);
    std::size_t behind = 0;
    for (json const& difference : user.at("differences")) {
        behind += difference.at("cause") == "behind-shortcut" ? 1 : 0;
    }
    // The fields of every second type, each of which a shortcut leads to.
    EXPECT_EQ(behind, manyTypes / 2 * 19);
    EXPECT_GE(user.at("notGoneIntoAgain").size(), 700U);
}

TEST_F(ManyWays, AreToldOfByVerify) {
    writeModel(manyTypes, 2, 19, &everywhere);
    EXPECT_THAT(run("verify").out,
                HasSubstr("shortcuts lead to the same objects in too many ways to go all of them: "
                          "what stands behind a shortcut was gone into once. Not gone into again: "
                          "the shortcut \"Link"));
}

TEST_F(ManyWays, AreComparedAndExplainedInAFewElementsForEachObject) {
    writeModel(manyTypes, 2, 19, &everywhere);
    ToolResult const same = run("diff");
    EXPECT_EQ(same.status, 0);
    EXPECT_THAT(same.out, HasSubstr("0 appear, 0 disappear, 0 change, 0 of them renamed\n"));
    EXPECT_THAT(same.out, HasSubstr("Not gone into again: "));
    ToolResult const forAll =
        m_folder.Run({"diff", "--catalog", "api.catalog.xml", "--model", "/content/m",
                      "--all-users", "--max-elements", std::to_string(bearable)});
    EXPECT_THAT(forAll.out, HasSubstr(": no difference\nshortcuts lead to the same objects"));
    ToolResult const explained = run("explain", {"t1.f3"});
    EXPECT_EQ(explained.status, 0);
    EXPECT_THAT(explained.out, HasSubstr("  hidden: not among the included objects"));
    EXPECT_THAT(explained.out, HasSubstr("  in the tree: written in the shortcut \"Link"));
    EXPECT_THAT(explained.out, HasSubstr("which lead to what was gone into before"));
    EXPECT_THAT(explained.out, HasSubstr("Not gone into again: "));
}

TEST_F(ManyWays, MayLeadDeeperThanAnAnswerMayNest) {
    constexpr std::size_t ring = 1'400;
    writeModel(ring, 1, 9, [](std::size_t type, std::size_t) { return type + 1; });
    json const report = json::parse(run("verify", {"--json"}).out);
    EXPECT_EQ(report.at("finished"), true);
    EXPECT_EQ(report.at("users").at(0).at("differences").size(), ring / 2 * 9);
}

TEST_F(ManyWays, AreAllGoneWhereTheyAreFew) {
    writeModel(3, 1, 2, [](std::size_t type, std::size_t) { return type + 1; });
    EXPECT_THAT(run("verify").out, Not(HasSubstr("Not gone into again")));
    EXPECT_THAT(run("diff").out, Not(HasSubstr("Not gone into again")));
    ToolResult const explained = run("explain", {"t1.f1"});
    EXPECT_THAT(explained.out, HasSubstr("written in the shortcut \"Link 0\" (t0.s0)"));
    EXPECT_THAT(explained.out, Not(HasSubstr("which lead to what was gone into")));
}

TEST_F(ManyWays, ThatALimitCutsShortAreNeverCalledFreeOfLeaks) {
    writeModel(manyTypes, 2, 19, &everywhere);
    ToolResult const result = run("verify", {}, 3'000);
    EXPECT_EQ(result.status, 5);
    EXPECT_THAT(result.out,
                HasSubstr("carl: not finished, so nothing is known: The answer holds more "
                          "than 3000 elements, which is the limit."));
    EXPECT_THAT(result.out, HasSubstr("not finished: compared for 0 of 1 user\n"));
    EXPECT_THAT(result.out, Not(HasSubstr("0 leaks")));
    json const report = json::parse(run("verify", {"--json"}, 3'000).out);
    EXPECT_EQ(report.at("clean"), false);
    EXPECT_EQ(report.at("finished"), false);
}

} // namespace

#include "host/insight/RuleLevels.h"

#include "KRLException.h"
#include "host/insight/DiagnosticRules.h"

#include <gtest/gtest.h>

namespace {

using vex::Diagnostics;
using vex::RuleLevels;
using vex::Severity;

Diagnostics findings() {
    return {vex::finding("untranslated-name", "m.xml", 1, 1, "a"),
            vex::finding("unknown-usage", "m.xml", 2, 1, "b"),
            vex::finding("object-in-no-view", "m.xml", 3, 1, "c")};
}

std::string problemOf(std::string const& yaml) {
    try {
        RuleLevels::read(yaml, "r.yaml");
    } catch (KRLDocumentException const& problem) {
        return problem.what();
    }
    return "none";
}

TEST(RuleLevels, SwitchRulesOffAndWeighOthersAnew) {
    Diagnostics found = findings();
    RuleLevels const levels = RuleLevels::read("# ours\nuntranslated-name: off\n"
                                               "unknown-usage: \"error\" # a must\n"
                                               "object-in-no-view: warning\n",
                                               "r.yaml");
    EXPECT_EQ(levels.apply(found), 1U);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].severity, Severity::Error);
    EXPECT_EQ(found[1].severity, Severity::Warning);
    EXPECT_EQ(levels.file(), "r.yaml");
}

TEST(RuleLevels, LeaveEverythingAsItIsWithoutALine) {
    for (char const* const yaml : {"", "# nothing\n", "---\n", "{}"}) {
        Diagnostics found = findings();
        EXPECT_EQ(RuleLevels::read(yaml, "r.yaml").apply(found), 0U) << yaml;
        EXPECT_EQ(found[0].severity, Severity::Warning);
        EXPECT_EQ(found.size(), 3U);
    }
}

TEST(RuleLevels, NameTheNearestRuleAndLevel) {
    EXPECT_EQ(problemOf("unknown-usage: off\nmispelt-class: off"),
              "r.yaml:2:1: there is no rule \"mispelt-class\"; did you mean misspelt-class?");
    EXPECT_EQ(problemOf("unknown-usage: warnig"),
              "r.yaml:1:16: there is no level \"warnig\"; did you mean warning?");
    EXPECT_EQ(problemOf("unknown-usage: on"),
              "r.yaml:1:16: there is no level \"on\"; write off, note, warning or error");
    EXPECT_EQ(problemOf("colour: off"), "r.yaml:1:1: there is no rule \"colour\"; \"vexma validate "
                                        "--list-rules\" lists them");
}

TEST(RuleLevels, LeaveErrorsErrors) {
    EXPECT_EQ(problemOf("duplicate-id: off"),
              "r.yaml:1:1: what breaks the rule \"duplicate-id\" keeps a file from being read, so "
              "it stays an error; remove the line");
}

TEST(RuleLevels, RefuseARuleThatStandsTwice) {
    EXPECT_EQ(problemOf("unknown-usage: off\nunknown-usage: note"),
              "r.yaml:2:1: the rule \"unknown-usage\" stands here for the second time; remove one "
              "of the two lines");
}

TEST(RuleLevels, RefuseWhatIsNoListOfRules) {
    std::string const wanted = ": write a line for each rule, such as \"untranslated-name: off\"";
    EXPECT_EQ(problemOf("- off"), "r.yaml:1:1" + wanted);
    EXPECT_EQ(problemOf("off"), "r.yaml:1:1" + wanted);
    EXPECT_EQ(problemOf("unknown-usage: {a: b}"), "r.yaml:1:16" + wanted);
    EXPECT_EQ(problemOf("unknown-usage: *a"), "r.yaml:1:16" + wanted);
    EXPECT_EQ(problemOf("unknown-usage: off\n---\nunknown-usage: off"),
              "r.yaml:2:1: a second document begins here; write all rules into one");
    EXPECT_EQ(problemOf("unknown-usage: 'off").substr(0, 14), "r.yaml:1:20: t");
    EXPECT_EQ(problemOf(std::string(60'000, '[')).substr(0, 8), "r.yaml:1");
}

} // namespace

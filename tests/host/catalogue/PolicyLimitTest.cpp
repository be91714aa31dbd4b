#include "host/catalogue/PolicyViews.h"
#include "host/import/xml/ModelLoader.h"

#include <gtest/gtest.h>

namespace {

/// What ends the reading of a model with a policy; "" when nothing does.
std::string endOf(std::string const& policyText, std::string const& model,
                  vex::PolicyViews::Limits limits, bool isTraced = false) {
    auto const policy = vex::readPolicyText(policyText, "p.yaml");
    vex::PolicyTrace trace;
    trace.policy = policy;
    vex::PolicyViews views(*policy, isTraced ? &trace : nullptr, limits);
    vex::LoadOptions options;
    options.addition = &views;
    vex::Diagnostics found;
    auto const loaded = vex::loadModelText(model, "m.xml", options, found);
    EXPECT_EQ(loaded == nullptr, !found.empty() && found.front().severity == vex::Severity::Error);
    return loaded != nullptr ? "" : toString(found.front()) + " [" + found.front().rule + "]";
}

/// A hundred query items, each of which names the one before it, in folders as deep.
std::string chainOf(int depth) {
    std::string model = "<model><namespace id='n' name='N'>";
    for (int folder = 0; folder < depth; ++folder) {
        model += "<querySubject name='Q'>";
    }
    for (int item = 0; item < 100; ++item) {
        std::string const number = std::to_string(item);
        model += "<queryItem id='i" + number + "' name='I" + number + "' expression='[I" +
                 std::to_string(item - 1) + "] [Q].[I" + number + "]'/>";
    }
    for (int folder = 0; folder < depth; ++folder) {
        model += "</querySubject>";
    }
    return model + "</namespace></model>";
}

TEST(PolicyLimit, OfWhatRulesMeanEndsTheReading) {
    std::string const policy = "views:\n  a: {include: '**'}\n  b: {include: '**'}\n";
    // 101 objects with an id and their folder, by both views: once meant, once listed.
    EXPECT_EQ(endOf(policy, chainOf(1), {.entries = 4 * 102}), "");
    EXPECT_EQ(endOf(policy, chainOf(1), {.entries = 4 * 102 - 1}),
              "p.yaml:2:3: error: the rules mean more than 407 objects, each counted as often as "
              "it is meant; make fewer views [policy-too-large]");
    EXPECT_NE(endOf(policy, chainOf(1), {.entries = 4 * 102}, true), ""); // what is kept, too
}

TEST(PolicyLimit, CountsWhatExpectationsMeanWhereThatIsKept) {
    std::string const policy = "expect:\n  - {user: u, sees: ['**', '**']}\n";
    EXPECT_EQ(endOf(policy, chainOf(1), {.entries = 203}, true).substr(0, 17), "p.yaml:1:1: error");
    EXPECT_EQ(endOf(policy, chainOf(1), {.entries = 204}, true), "");
    EXPECT_EQ(endOf(policy, chainOf(1), {.entries = 0}), "");
}

TEST(PolicyLimit, OfStepsEndsTheReading) {
    std::string const policy = "views: {a: {include: '**', except: '#i0', spread: true}}";
    EXPECT_EQ(endOf(policy, chainOf(1), {.steps = 10'000}), "");
    EXPECT_EQ(endOf(policy, chainOf(200), {.steps = 10'000}),
              "p.yaml:1:9: error: finding out what the rules mean takes more than 10000 steps; "
              "write fewer rules, or rules that mean less [policy-too-large]");
    EXPECT_NE(endOf("views: {a: {include: '**'}}", chainOf(1), {.steps = 100}), "");
}

} // namespace

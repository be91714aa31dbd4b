#include "tests/naive/Generator.h"

#include <gtest/gtest.h>

namespace naive {
namespace {

bool contains(std::string const& text, std::string const& what) {
    return text.find(what) != std::string::npos;
}

/// What a run of generated cases came to.
struct Tally {
    int requests = 0;
    int trees = 0;
    int gaveUp = 0;
    int failures = 0;
    int withRef = 0;
    int withPath = 0;
    int fromReference = 0;
    int shortcutModels = 0;
    int restricted = 0;
    int checks = 0;
    int allowed = 0;
    std::map<std::uint32_t, int> failureIds;

    void run(GeneratedWorld const& world, std::vector<SessionStep> const& steps);
    void count(SessionStep const& step, Outcome const& outcome, bool restrictedCase);
};

void Tally::run(GeneratedWorld const& world, std::vector<SessionStep> const& steps) {
    std::unique_ptr<PlainCatalogue> const catalogue =
        world.catalogue.empty() ? nullptr : std::make_unique<PlainCatalogue>(world.catalogue);
    NaiveSession session(
        SessionOptions{world.plainModel.get(), catalogue.get(), world.user, world.locale});
    shortcutModels += contains(world.model, "<shortcut") ? 1 : 0;
    for (SessionStep const& step : steps) {
        if (step.notification) {
            session.notify(*step.notification);
            continue;
        }
        Outcome const outcome = session.doAction(step.action, step.in);
        if (step.action.type == Value::Type::Long && step.action.number == 31000) {
            count(step, outcome, catalogue != nullptr);
        } else if (!outcome.appended.empty()) {
            ++checks;
            allowed += static_cast<int>(outcome.appended[1].number);
        }
        if (outcome.gaveUp) {
            return;
        }
    }
}

void Tally::count(SessionStep const& step, Outcome const& outcome, bool restrictedCase) {
    ++requests;
    gaveUp += outcome.gaveUp ? 1 : 0;
    if (outcome.failure) {
        ++failures;
        ++failureIds[outcome.failure->id];
    }
    bool const tree = contains(outcome.response, "<Result>");
    trees += tree ? 1 : 0;
    withRef += contains(outcome.response, "_ref=") ? 1 : 0;
    withPath += contains(outcome.response, "_path=") ? 1 : 0;
    restricted += tree && restrictedCase ? 1 : 0;
    if (tree && contains(step.in.back().xml, "start_atRef=\"[")) {
        ++fromReference;
    }
}

std::string caseAsText(std::uint64_t seed) {
    GeneratedCase const generated = generateCase(seed);
    return described(generated.world, generated.steps);
}

TEST(NaiveGenerator, IsReplayable) {
    EXPECT_EQ(caseAsText(42), caseAsText(42));
    EXPECT_NE(caseAsText(42), caseAsText(43));
}

TEST(NaiveGenerator, MakesMostlyTrees) {
    Tally tally;
    int const cases = 400;
    for (std::uint64_t seed = 1; seed <= cases; ++seed) {
        GeneratedCase const generated = generateCase(seed);
        tally.run(generated.world, generated.steps);
    }
    int const requests = tally.requests;
    for (auto const& [id, times] : tally.failureIds) {
        RecordProperty(std::to_string(id), times);
    }
    EXPECT_GT(requests, 3 * cases / 2);
    EXPECT_GT(tally.trees, requests * 6 / 10);
    EXPECT_LT(tally.gaveUp, requests * 3 / 100);
    EXPECT_GT(tally.withRef, requests / 4);
    EXPECT_GT(tally.withPath, requests / 4);
    EXPECT_GT(tally.fromReference, requests / 25);
    EXPECT_GT(tally.restricted, requests / 4);
    EXPECT_GT(tally.shortcutModels, cases / 2);
    EXPECT_GT(tally.checks, cases / 4);
    EXPECT_GT(tally.allowed, tally.checks / 4);
    EXPECT_LT(tally.allowed, tally.checks);
    EXPECT_GT(tally.failureIds.size(), 12U);
}

} // namespace
} // namespace naive

#include "host/insight/PolicyTest.h"

#include "host/store/image/ShortText.h"

#include <utility>

namespace vex {

namespace {

bool isSeen(Sight sight) {
    return sight == Sight::Seen || sight == Sight::PastViews;
}

ExpectationResult resultAt(Policy const& policy, PolicyExpectation const& expectation,
                           YamlPlace const& place, std::string expected) {
    return {policy.file, place, whoOf(expectation), std::move(expected), {}};
}

/// Results for all that an expectation says, in its order.
template <class TakeRule, class TakeCount>
void forEachExpected(PolicyExpectation const& expectation, TakeRule const& takeRule,
                     TakeCount const& takeCount) {
    for (std::size_t number = 0; number < expectation.sees.size(); ++number) {
        takeRule(expectation.sees[number], number, true);
    }
    for (std::size_t number = 0; number < expectation.seesNot.size(); ++number) {
        takeRule(expectation.seesNot[number], number, false);
    }
    for (auto const& [cls, count] : expectation.counts) {
        takeCount(cls, count);
    }
}

std::string told(PolicyRule const& rule, bool sees) {
    return (sees ? "sees " : "does not see ") + rule.text;
}

std::string told(PolicyWord const& cls, std::size_t count) {
    return "sees " + std::to_string(count) + " of class " + shortened(cls.text.view());
}

} // namespace

std::string whoOf(PolicyExpectation const& expectation) {
    return expectation.user.empty() ? "role " + expectation.role.toUtf8()
                                    : "user " + expectation.user.toUtf8();
}

SeenModel::SeenModel(Model const& model, std::vector<Sight> all) : sights(std::move(all)) {
    for (std::size_t element = 0; element < sights.size(); ++element) {
        if (isSeen(sights[element])) {
            ++classes[classOf(model.getElement(element))];
        }
    }
}

std::vector<ExpectationResult> checkExpectation(Policy const& policy,
                                                PolicyExpectation const& expectation,
                                                PolicyTrace::Expected const& meant,
                                                Model const& model, I18NLocale const& locale,
                                                SeenModel const& seen) {
    std::vector<ExpectationResult> results;
    auto const takeRule = [&](PolicyRule const& rule, std::size_t number, bool sees) {
        std::vector<ElementNumber> const& elements = (sees ? meant.sees : meant.seesNot)[number];
        ExpectationResult result = resultAt(policy, expectation, rule.place, told(rule, sees));
        if (elements.empty()) {
            result.problem = "no object of the model is meant";
        }
        for (ElementNumber const element : elements) {
            if (isSeen(seen.sights[element]) == sees) {
                continue;
            }
            if (result.objects.size() == mostUnexpectedObjects) {
                ++result.moreObjects;
                continue;
            }
            result.objects.push_back(
                {element, describeObject(labelOf(model, model.getElement(element), locale)), {}});
        }
        results.push_back(std::move(result));
    };
    auto const takeCount = [&](PolicyWord const& cls, std::size_t count) {
        ExpectationResult result = resultAt(policy, expectation, cls.place, told(cls, count));
        auto const at = seen.classes.find(cls.text);
        std::size_t const found = at == seen.classes.end() ? 0 : at->second;
        if (found != count) {
            result.problem = "there are " + std::to_string(found);
        }
        results.push_back(std::move(result));
    };
    forEachExpected(expectation, takeRule, takeCount);
    return results;
}

std::vector<ExpectationResult> failExpectation(Policy const& policy,
                                               PolicyExpectation const& expectation,
                                               std::string const& problem, bool isFinished) {
    std::vector<ExpectationResult> results;
    auto const fail = [&](YamlPlace const& place, std::string expected) {
        results.push_back(resultAt(policy, expectation, place, std::move(expected)));
        results.back().problem = problem;
        results.back().isFinished = isFinished;
    };
    forEachExpected(
        expectation,
        [&](PolicyRule const& rule, std::size_t, bool sees) { fail(rule.place, told(rule, sees)); },
        [&](PolicyWord const& cls, std::size_t count) { fail(cls.place, told(cls, count)); });
    return results;
}

} // namespace vex

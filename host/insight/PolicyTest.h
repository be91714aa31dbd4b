#pragma once

#include "host/catalogue/PolicyTrace.h"
#include "host/insight/Sight.h"

#include <map>
#include <string>
#include <vector>

namespace vex {

/// An object that somebody sees and should not, or the other way round.
struct UnexpectedObject {
    std::size_t element = 0; // its index in document order
    std::string text;        // the object, for people
    std::string why;         // the rule that decided; "" until it was asked for
};

/// One thing that a policy expects, and what became of it.
struct ExpectationResult {
    std::string file; // of the policy
    YamlPlace place;
    std::string who;                         // "user carl", "role clerk"
    std::string expected;                    // "sees [Sales].[Orders]"
    std::string problem;                     // other than objects; "" without one
    std::vector<UnexpectedObject> objects{}; // the first of them
    std::size_t moreObjects = 0;
    bool isFinished = true; // false: a limit or an interrupt came first, as `problem` says

    bool holds() const { return problem.empty() && objects.empty(); }
    bool fails() const { return isFinished && !holds(); }
};

/// Of that many objects a result tells each.
constexpr std::size_t mostUnexpectedObjects = 10;

std::string whoOf(PolicyExpectation const& expectation);

/// What somebody sees of a model.
struct SeenModel {
    std::vector<Sight> sights;                 // by element
    std::map<I18NString, std::size_t> classes; // how many are seen of each

    SeenModel() = default;
    SeenModel(Model const& model, std::vector<Sight> all);
};

/// Holds an expectation against what somebody sees of each element of a model: what is
/// accessible, or shown by a tree. A selector that means nothing expects nothing, so it is
/// a problem.
std::vector<ExpectationResult> checkExpectation(Policy const& policy,
                                                PolicyExpectation const& expectation,
                                                PolicyTrace::Expected const& meant,
                                                Model const& model, I18NLocale const& locale,
                                                SeenModel const& seen);

/// All that is expected there, none of which could be looked at.
std::vector<ExpectationResult> failExpectation(Policy const& policy,
                                               PolicyExpectation const& expectation,
                                               std::string const& problem, bool isFinished);

} // namespace vex

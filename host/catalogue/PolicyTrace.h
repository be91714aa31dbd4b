#pragma once

#include "host/catalogue/Policy.h"
#include "host/store/image/StoreData.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace vex {

class Model;

/// What the rules of a policy meant in a model, for who asks afterwards: elements by
/// their numbers. Kept only where it is wanted, for it takes as much as the views.
struct PolicyTrace {
    /// Why an element is in a set of a view, or out of it.
    struct Decision {
        enum class Kind : std::uint8_t {
            Rule,      // `by` is the number of the rule in its view
            Container, // `by` is an element in it that is included
            Spread,    // `by` is an excepted or excluded element that it names
            Within,    // `by` is an element around it that was found by spreading
        };

        ElementNumber element = 0;
        std::uint32_t view = 0; // its number in the policy
        Kind kind = Kind::Rule;
        PolicyRule::Kind does = PolicyRule::Kind::Include; // what is done by it
        std::uint32_t by = 0;
    };

    /// What the selectors of an expectation mean, each in document order.
    struct Expected {
        std::vector<std::vector<ElementNumber>> sees;
        std::vector<std::vector<ElementNumber>> seesNot;
    };

    std::shared_ptr<Policy const> policy;
    std::vector<Decision> decisions; // ascending by element
    std::vector<Expected> expected;  // one for each expectation

    std::span<Decision const> decisionsOf(ElementNumber element) const;
};

} // namespace vex

#pragma once

#include "host/insight/ModelOutline.h"

#include <string>
#include <vector>

namespace vex {

/// Selectors that mean exactly some objects.
struct RuleCover {
    std::vector<std::string> include; // or what a set of another kind lists
    std::vector<std::string> except;
};

/// What rules may make use of.
struct RuleMeans {
    bool hasContainers = true; // containers come with what is in them, and exceptions are heard
    bool hasTraits = true;     // selectors by class and property
};

/// Few selectors for the elements that are `listed`, all of which have ids; with containers as
/// views include them. Where listing and covering with exceptions take as many, they are
/// listed: so what is new in the model is seen by nobody.
RuleCover coverByRules(ModelOutline const& outline, std::vector<bool> const& listed,
                       RuleMeans means);

} // namespace vex

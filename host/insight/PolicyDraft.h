#pragma once

#include "host/import/xml/ModelLoader.h"
#include "host/store/image/Model.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vex {

/// A policy that says in rules what the views of a model list.
struct PolicyDraft {
    std::string text;                 // of the file; "" when rules cannot say it
    std::string problem;              // why they cannot, and what to do
    std::vector<std::string> leftOut; // what has no effect, in sentences
    std::size_t views = 0;
    std::size_t entries = 0; // of the views' sets
    std::size_t selectors = 0;
};

/// Drafts it. With traits, rules mean objects by class and property too; a property may be
/// found in other ways than here, so only a proof shows that the draft is right.
PolicyDraft draftPolicy(Model const& model, bool hasTraits);

/// Compares the views of a model with those that a draft makes of the same file. Gives how they
/// differ; "" when they are the same: names, roles, and every id of every set. Raises what
/// reading a model does.
std::string findDifference(Model const& model, std::string const& modelFile,
                           std::string const& draft, LoadOptions options = {});

} // namespace vex

#pragma once

#include "host/insight/Verification.h"

#include <optional>
#include <string>
#include <vector>

namespace vex {

/// What somebody accepts of what verifying finds: every finding that has all the values that
/// are given.
struct AcceptedFinding {
    std::optional<std::string> kind;
    std::optional<std::string> user;
    std::optional<std::string> object; // id, else reference
    std::optional<std::string> cause;
    std::optional<std::string> property;
    std::optional<std::string> names; // the reference in the text
    std::string because;              // for people
    bool isUsed = false;              // once something was accepted by it
};

using AcceptedFindings = std::vector<AcceptedFinding>;

/// Marks the findings of a verification that are accepted, and what they are accepted by.
/// A check that did not finish is not accepted by anything, nor is one of nobody. What is found for
/// users alike is accepted when it is for each of them.
void accept(Verification& verification, AcceptedFindings& accepted);

/// True for an entry that accepts nothing although everybody whom it is about was compared.
/// Of others nothing is known: they were not asked for, or their check came to no end.
bool isNoLongerFound(AcceptedFinding const& entry, Verification const& verification);

/// What accepts all findings of a verification that count, one by one, besides those of
/// `accepted` that are used, or about which nothing is known.
AcceptedFindings acceptAll(Verification const& verification, AcceptedFindings const& accepted);

} // namespace vex

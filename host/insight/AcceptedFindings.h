#pragma once

#include "I18NHash.h"
#include "host/insight/Verification.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
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

/// What is accepted, to be asked finding by finding. Entries that give the same values are
/// found together, however many they are.
class AcceptedIndex {
public:
    /// The entries stay where they are; those that accept something are marked as used.
    explicit AcceptedIndex(AcceptedFindings& accepted);

    /// True when a finding is accepted for a user and for each of those who are alike.
    bool accepts(VerifyFinding const& finding, std::string const& user,
                 std::vector<std::string> const& alike = {});

private:
    using Values = unsigned; // which ones entries give, a bit for each
    using Entries = std::vector<AcceptedFinding*>;
    using ByValues = std::unordered_map<std::string, Entries, I18NTextHasher, std::equal_to<>>;

    bool mark(AcceptedFinding const& finding);

    std::vector<std::pair<Values, ByValues>> m_entries;
    bool m_givesUsers = false; // some entry does
};

/// Marks the findings of a verification that are accepted, and what they are accepted by.
/// A check that did not finish is not accepted by anything, nor is one of nobody. What is found for
/// users alike is accepted when it is for each of them.
void accept(Verification& verification, AcceptedFindings& accepted);

/// Who was compared: whether entries that accept nothing are about those.
class ComparedUsers {
public:
    explicit ComparedUsers(Verification const& verification);

    /// True for an entry that accepts nothing although everybody whom it is about was
    /// compared. Of others nothing is known: they were not asked for, or their check came to
    /// no end.
    bool isNoLongerFound(AcceptedFinding const& entry) const;

private:
    bool m_areOfAllUsers;
    bool m_areAllCompared;
    std::unordered_map<std::string, bool, I18NTextHasher, std::equal_to<>> m_areCompared;
};

/// What accepts all findings of a verification that count, one by one, besides those of
/// `accepted` that are used, or about which nothing is known.
AcceptedFindings acceptAll(Verification const& verification, AcceptedFindings const& accepted);

} // namespace vex

#pragma once

#include "host/insight/AcceptedFindings.h"

#include <cstddef>
#include <map>
#include <utility>

namespace vex {

/// How many findings of each kind a verification keeps, whomever they are about; as many that
/// are accepted besides, which so take no place from those that count. What is past that is
/// looked at like any other, matched with what is accepted, and counted; only what it says is
/// not kept.
class FindingRoom {
public:
    static constexpr std::size_t UsualOfAKind = 20'000;

    /// What is accepted stays where it is.
    FindingRoom(std::size_t mostOfAKind, AcceptedIndex& accepted)
        : m_mostOfAKind(mostOfAKind), m_accepted(accepted) {}

    /// Says of the finding whether it is accepted, too.
    void add(UserVerification& told, VerifyFinding finding);

    /// Makes room again for what was kept of a user.
    void giveBack(UserVerification const& told);

private:
    std::size_t m_mostOfAKind;
    AcceptedIndex& m_accepted;
    std::map<std::pair<VerifyKind, bool>, std::size_t> m_taken; // true: of what is accepted
};

} // namespace vex

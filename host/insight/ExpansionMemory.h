#pragma once

#include "VEX_HANDLE.h"

#include <unordered_set>

namespace vex {

/// How far trees go behind shortcuts.
enum class TreeExtent {
    EveryWay, // as answers do: an object is met once for each way that leads to it
    Once,     // what was gone into behind a shortcut is not gone into again
};

/// Where an object's members, or those of a shortcut's target, were met.
enum class MembersMet {
    Here,
    Elsewhere, // they were gone into before
    TooDeep,   // too many levels down: a tree from here has them
};

/// Remembers what was gone into behind shortcuts. Whatever the way, the same is
/// decided there about the same object: so trees that go into everything once show
/// the objects that whole answers show, however often shortcuts lead in circles.
class ExpansionMemory {
public:
    /// Further shortcuts would come near the levels that an answer may have.
    static constexpr int DeepestShortcut = 400;
    static constexpr int NoShortcut = 0;

    /// Where the members of `whole` are, an object behind a shortcut or the target of
    /// one, which stands at `level`. `lost`: they are left out together with something
    /// around them that has no name.
    MembersMet enter(VEX_HANDLE whole, bool lost, int level) {
        if (has(whole, lost)) {
            return MembersMet::Elsewhere;
        }
        if (level > DeepestShortcut) {
            return MembersMet::TooDeep;
        }
        m_entered[lost ? 1 : 0].insert(whole);
        return MembersMet::Here;
    }

    bool has(VEX_HANDLE whole, bool lost) const { return m_entered[lost ? 1 : 0].contains(whole); }

private:
    std::unordered_set<VEX_HANDLE> m_entered[2];
};

} // namespace vex

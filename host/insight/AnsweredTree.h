#pragma once

#include "KRLIDOM_Element.h"
#include "host/insight/ExpansionMemory.h"
#include "host/insight/TreeQuestion.h"

#include <cstddef>
#include <vector>

namespace vex {

/// What a tree answer did with an object of the model.
enum class ObjectFate {
    Written,           // as an element of its own; a shortcut as its target's
    LeftOut,           // its members stand in its container's place
    WithoutName,       // left out with all its members: nothing to show of it
    WithItsContainer,  // left out because its container has no name
    NothingToStandFor, // a shortcut without a name or a target
};

struct AnsweredObject {
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    VEX_HANDLE object;
    VEX_HANDLE target; // of a shortcut that is written
    ObjectFate fate = ObjectFate::Written;
    std::size_t container = None;          // the entry that it was met in; the start has none
    bool behindShortcut = false;           // met as a member, however deep, of a shortcut's target
    bool passesOverViewLists = false;      // decided without the views' included objects
    MembersMet members = MembersMet::Here; // its own, or its target's

    /// True when its members are left out with it for want of a name.
    bool losesItsMembers() const {
        return fate == ObjectFate::WithoutName || fate == ObjectFate::WithItsContainer;
    }
};

/// A tree answer, object by object as it was gone through: also those that it
/// left out, and an object once for each way that leads to it. An object comes
/// before its members. Names alone count as something to show, as in a request
/// that asks for nothing else.
using AnsweredTree = std::vector<AnsweredObject>;

/// Matches an answer to `question.makeRequest()`, which asks without a depth for all
/// collections of the model (`collectionsOf`). Raises `HostException` when the answer
/// holds something that the model does not explain, or starts at an object
/// without an id. With a memory, the answer goes into everything once.
AnsweredTree matchAnswer(Model const& model, I18NLocale const& locale, TreeQuestion const& question,
                         KRLIDOM_Element const& response, ExpansionMemory* memory = nullptr);

/// Puts what is below the first entry of `members` below the entry `whole` of `trees`,
/// which it stands for.
void continueTree(AnsweredTree& trees, std::size_t whole, AnsweredTree const& members);

/// What stands behind shortcuts and was met again, but not gone into again; each object
/// once, in the order of the tree.
std::vector<VEX_HANDLE> notGoneIntoAgain(AnsweredTree const& tree);

} // namespace vex

#pragma once

#include "I18NString.h"
#include "VEX_HANDLE.h"

#include <cstddef>

class KRLIDOM_Node;
class VexSession;

/// What a tree does with an object that it comes to.
enum class VexTreeTreatment {
    Written,           ///< as an element of its own; a shortcut as its target's
    NotIncluded,       ///< left out by the access decision
    WithoutAttributes, ///< left out: nothing that is asked for of it has a value, or its
                       ///< class is no XML name, so that no element can bear it
    NothingToStandFor, ///< left out: a shortcut without a name or a target, or with one
                       ///< whose class is no XML name
};

/// What a tree does with the members of an object; of a shortcut, with those of its
/// target.
enum class VexTreeMembers {
    Below,     ///< gone into, below the object's element
    Lifted,    ///< gone into; what is written of them takes the object's place
    LeftOut,   ///< left out with the object; nothing is reported about them
    PastDepth, ///< not gone into: the depth ends with the object
    Endless,   ///< not gone into: the shortcut stands inside its own expansion
    Refused,   ///< not gone into: the observer wants none, see `wantsMembers`
};

/// How large a part of an answer is.
struct VexTreeSize {
    std::size_t elements = 0;   ///< how many elements
    std::size_t attributes = 0; ///< one that is set again counts again
    std::size_t characters = 0; ///< UTF-16 code units of the attributes' values
};

/// What a tree did with one object on one way that leads to it. Reports count from 0
/// in the order in which they are made, and name one another by that number.
struct VexTreeReport {
    /// No report's number.
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    VEX_HANDLE object; ///< what was come to: an element of the model
    VEX_HANDLE target; ///< what a shortcut that is written stands for; else null
    VexTreeTreatment treatment = VexTreeTreatment::Written; ///< what became of it
    VexTreeMembers members = VexTreeMembers::Below;         ///< what became of its members
    std::size_t container = None;     ///< of what it was met in; `None` where the tree starts
    std::size_t shortcut = None;      ///< the innermost one that led here; `None` without one
    int level = 1;                    ///< 1 where the tree starts; counts what is left out
    bool passesOverViewLists = false; ///< decided without the views' included objects
    I18NString tag;                   ///< the element's; "" unless it is written
    VexTreeSize size;                 ///< of the element, without what is in it
};

/// Is told, while a tree is written, what is done with each object. Called on the
/// thread of the call that it was given to. What it raises ends that call; only
/// exceptions derived from `KRLException`.
class VexTreeObserver {
public:
    /// An object comes before its members.
    virtual void report(VexTreeReport const& report) = 0;
    /// Whether the members of what is reported next are gone into; asked when they
    /// would be (`VexTreeMembers::Below` and `Lifted`). Shortcuts lead to the same
    /// members again and again, and an observer may have seen them: without them the
    /// answer is smaller than the request's. Yes, unless it is overridden.
    virtual bool wantsMembers(VexTreeReport const& /*report*/) { return true; }
    /// Once, last, and only when nothing is built: what the answer holds beside the
    /// tree, the response element and its first child included.
    virtual void reportOutside(VexTreeSize const& size) = 0;

protected:
    ~VexTreeObserver() = default;
};

/// The extension that explains metadata answers; see `VexPluginExtension.h`.
struct VexExplainTree {
    /// What a host asks for.
    static constexpr char const* Id = "vex.explain-tree/1";

    /// Answers `request` into `response` exactly as the metadata request of a fresh
    /// session would, with the same checks and failures, but without the members that
    /// the observer does not want, and tells the observer what becomes of each object.
    /// With a null `response` the same is decided and reported and nothing is built, so
    /// that the size of an answer costs none of its memory. The session's own action
    /// object plays no part: the session stays as it was. A call of the session: one at a
    /// time, between the plug-in's `Initialize` and `Terminate`.
    void (*explain)(VexSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
                    KRLIDOM_Node* response, VexTreeObserver& observer);
};

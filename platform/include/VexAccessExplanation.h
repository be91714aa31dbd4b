#pragma once

#include "I18NString.h"
#include "Vex_Handle_Collection.h"

#include <cstddef>
#include <vector>

class VexSession;

/// The rule that decided whether an object is included.
enum class VexAccessReason {
    Unrestricted,       ///< nobody is restricted on this model path
    NotInViews,         ///< not among the included objects of the views in force
    NoRoleBasedViews,   ///< in them, and the model has no role-based view
    RoleIncludes,       ///< a view of a role that the user holds includes it
    RoleExcludes,       ///< such a view excludes it
    DefaultExcludes,    ///< the default view excludes it
    DefaultAllows,      ///< the default view does not
    RoleHides,          ///< a view of a held role hides it, and there is no default view
    RoleDoesNotInclude, ///< no such view includes it, and there is no default view
};

/// What a security view is to a user.
enum class VexViewRole {
    NotRoleBased,    ///< it counts only when it is in force
    RoleHeld,        ///< its first member's role is one of the user's
    RoleNotHeld,     ///< that role is not; further members do not count
    DefaultView,     ///< role based without members
    ReplacedDefault, ///< the same, but a later one took its place
};

/// One security view of the model, as it is to the user.
struct VexExplainedView {
    I18NString id;                                ///< the security view's
    I18NString firstMemberRole;                   ///< "" without members
    VexViewRole role = VexViewRole::NotRoleBased; ///< what it is to the user
    bool inForce = false; ///< granted to the user: its included objects count
};

/// The sets of one view that name an object.
struct VexViewMention {
    std::size_t view = 0; ///< index among the explained views
    /// @{
    /// True when a set of that kind names the object.
    bool included = false;
    bool excluded = false;
    bool hidden = false;
    /// @}
};

/// Whether one object is included, and why.
struct VexExplainedObject {
    I18NString id;                                          ///< the object's own
    bool included = false;                                  ///< the verdict
    VexAccessReason reason = VexAccessReason::Unrestricted; ///< the rule that decided
    std::vector<VexViewMention> mentions; ///< of views that name it, in the model's order
};

/// What `VexExplainAccess` gives.
struct VexAccessExplanation {
    /// All of the model's, in its order; none when unrestricted.
    std::vector<VexExplainedView> views;
    std::vector<VexExplainedObject> objects; ///< one for each asked for, in order
};

/// The extension that explains accessibility answers; see `VexPluginExtension.h`.
struct VexExplainAccess {
    static constexpr char const* Id = "vex.explain-access/1"; ///< what it is asked for by

    /// Decides about each of the objects exactly as an accessibility request of the
    /// session would, raises the same failures, and leaves the session as it was.
    /// `explanation` is replaced. A call of the session: one at a time, between the
    /// plug-in's `Initialize` and `Terminate`.
    void (*explain)(VexSession& session, I18NString const& modelPath,
                    Vex_Handle_Collection const& objects, bool skipViewLists,
                    VexAccessExplanation& explanation);
};

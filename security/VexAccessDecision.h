#pragma once

#include "VexAccessExplanation.h"
#include "security/VexIdList.h"

/// What the security views and roles in force say about object ids.
struct VexAccessFacts {
    bool enforced;             // false: nobody is restricted
    bool hasRoleBasedViews;    // any view of the model is role based
    bool hasDefaultView;       // a role-based view without members exists
    VexIdList const& included; // of the views in force
    VexIdList const& roleIncluded;
    VexIdList const& roleExcluded;
    VexIdList const& roleHidden; // all three: of views whose role the user holds
    VexIdList const& defaultExcluded;
};

struct VexAccessVerdict {
    bool included;
    VexAccessReason reason;
};

// quirk: role-branches-asymmetric
/// Decides whether the object with that id is included. The two role branches
/// differ on purpose: under a default view the hidden ids of held roles are not
/// consulted, and without one their excluded ids are not.
inline VexAccessVerdict DecideAccess(VexAccessFacts const& facts, I18NString const& id,
                                     bool skipViewLists) {
    using Reason = VexAccessReason;
    if (!facts.enforced) {
        return {true, Reason::Unrestricted};
    }
    if (!skipViewLists && !facts.included.contains(id)) {
        return {false, Reason::NotInViews};
    }
    if (!facts.hasRoleBasedViews) {
        return {true, Reason::NoRoleBasedViews};
    }
    if (facts.hasDefaultView) {
        if (facts.roleIncluded.contains(id)) {
            return {true, Reason::RoleIncludes};
        }
        if (facts.roleExcluded.contains(id)) {
            return {false, Reason::RoleExcludes};
        }
        return facts.defaultExcluded.contains(id) ? VexAccessVerdict{false, Reason::DefaultExcludes}
                                                  : VexAccessVerdict{true, Reason::DefaultAllows};
    }
    if (facts.roleHidden.contains(id)) {
        return {false, Reason::RoleHides};
    }
    return facts.roleIncluded.contains(id) ? VexAccessVerdict{true, Reason::RoleIncludes}
                                           : VexAccessVerdict{false, Reason::RoleDoesNotInclude};
}

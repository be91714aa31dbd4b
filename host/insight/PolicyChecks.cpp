#include "host/insight/ModelChecks.h"
#include "host/insight/ModelFindings.h"

namespace vex {

void GrantCheck::checkPolicy(CatalogueModel const& entry) const {
    if (entry.policy == nullptr) {
        return;
    }
    std::set<I18NString> used;
    for (CatalogueGrant const& grant : entry.grants) {
        if (m_held.contains(grant.role)) {
            used.insert(grant.view);
        }
    }
    for (PolicyView const& view : entry.policy->views) {
        // A default view counts for everybody, without a grant.
        bool const isDefault = view.isRoleBased && view.members.empty();
        if (!isDefault && !used.contains(view.id)) {
            m_findings.add("policy-view-without-user", entry.policy->file, view.place.line,
                           view.place.column, [&] {
                               return "no user may use the view " + inQuotes(view.id) +
                                      ", so its rules matter to nobody; grant it to a role that "
                                      "a user has";
                           });
        }
    }
}

} // namespace vex

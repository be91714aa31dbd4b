#include "host/insight/ModelChecks.h"

#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/Budget.h"
#include "host/store/image/ShortText.h"
#include "resources.h"

#include <algorithm>
#include <set>

namespace vex {

namespace {

/// Users who may not see anything of any model.
void checkUsers(Catalogue const& catalogue, CatalogueFindings& findings) {
    if (catalogue.models.empty()) {
        return; // whatever it is for
    }
    std::set<I18NString> seeing; // the roles that are granted anything
    bool isAnyUnrestricted = false;
    for (CatalogueModel const& model : catalogue.models) {
        isAnyUnrestricted = isAnyUnrestricted || !isRestrictedPath(model.path);
        Budget::charge(model.grants.size());
        for (CatalogueGrant const& grant : model.grants) {
            seeing.insert(grant.role);
        }
    }
    for (CatalogueUser const& user : catalogue.users) {
        Budget::charge(1 + user.roles.size());
        bool const seesSomething =
            isAnyUnrestricted ||
            std::any_of(user.roles.begin(), user.roles.end(),
                        [&](I18NString const& role) { return seeing.contains(role); });
        if (!seesSomething) {
            findings.add("user-without-view", user.file, user.line, user.column, [&] {
                return "the user " + inQuotes(user.name) +
                       " may use no view, so every request is refused; grant a view to a role of "
                       "the user";
            });
        }
    }
}

std::set<I18NString> rolesHeldIn(Catalogue const& catalogue) {
    std::set<I18NString> held;
    for (CatalogueUser const& user : catalogue.users) {
        held.insert(user.roles.begin(), user.roles.end());
    }
    return held;
}

} // namespace

void checkModel(Model const& model, std::string const& file, Diagnostics& found,
                Policy const* policy) {
    FindingLimit limit;
    ModelFindings findings(model, file, found, limit, policy);
    for (auto const check : {&checkShortcuts, &checkNames, &checkTranslations, &checkViews,
                             &checkWords, &checkIdentities, &checkExpressions}) {
        check(findings);
    }
    limit.tellRest(found);
}

bool isRestrictedPath(I18NString const& path) {
    constexpr char const* prefixes[] = {"/content/", "path:"};
    return std::any_of(std::begin(prefixes), std::end(prefixes),
                       [&](char const* prefix) { return path.find(prefix) == 0; });
}

void checkCatalogue(Catalogue const& catalogue, CatalogueFindings& findings) {
    checkUsers(catalogue, findings);
    for (CatalogueModel const& model : catalogue.models) {
        if (!isRestrictedPath(model.path)) {
            findings.add("unrestricted-path", model.line, model.column, [&] {
                return "nobody is restricted under the model path " + inQuotes(model.path) +
                       "; begin it with /content/ to have its grants obeyed";
            });
        }
    }
}

GrantedModel::GrantedModel(Model const& model) {
    for (VEX_HANDLE const member : ModelFindings::elementsBelow(
             model.GetRootObject(), resources::getString(resources::ViewMember))) {
        I18NString const role =
            ModelFindings::valueOf(member, resources::getString(resources::MemberRole), nullptr);
        roles.insert(role); // a copy, since the model may go before
    }
    roles.erase(I18NString());
    for (VEX_HANDLE const view : ModelFindings::elementsBelow(
             model.GetRootObject(), resources::getString(resources::SecurityView))) {
        I18NString id;
        VexObject(view).GetId(id);
        views.insert(id);
    }
}

GrantCheck::GrantCheck(Catalogue const& catalogue, CatalogueFindings& findings)
    : m_held(rolesHeldIn(catalogue)), m_findings(findings) {}

void GrantCheck::check(CatalogueModel const& entry, GrantedModel const& model) const {
    std::string const file = shortened(I18NString::fromUtf8(entry.file).view());
    std::set<I18NString> told; // once is enough
    for (CatalogueGrant const& grant : entry.grants) {
        Budget::charge();
        if (!model.views.contains(grant.view)) {
            m_findings.add("granted-view-missing", grant.file, grant.line, grant.column, [&] {
                return "the role " + inQuotes(grant.role) + " is granted the view " +
                       inQuotes(grant.view) + ", which the model " + file + " lacks";
            });
        }
        if (!m_held.contains(grant.role) && told.insert(grant.role).second) {
            m_findings.add("role-without-user", grant.file, grant.line, grant.column, [&] {
                return "no user has the role " + inQuotes(grant.role) +
                       ", which is granted the view " + inQuotes(grant.view);
            });
        }
    }
    for (I18NString const& role : model.roles) {
        if (!m_held.contains(role) && !told.contains(role)) {
            m_findings.add("role-without-user", entry.line, entry.column, [&] {
                return "no user has the role " + inQuotes(role) + ", which a view of the model " +
                       file + " asks for";
            });
        }
    }
}

} // namespace vex

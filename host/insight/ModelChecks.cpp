#include "host/insight/ModelChecks.h"

#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "resources.h"

#include <algorithm>
#include <set>

namespace vex {

namespace {

/// The roles that the model's views ask for.
std::set<I18NString> rolesOfViews(Model const& model) {
    Vex_Handle_Collection members;
    VexObject(model.GetRootObject())
        .getElementsByTagName(resources::getString(resources::ViewMember), members);
    std::set<I18NString> roles;
    for (VEX_HANDLE const member : members) {
        roles.insert(
            ModelFindings::valueOf(member, resources::getString(resources::MemberRole), nullptr));
    }
    roles.erase(I18NString());
    return roles;
}

/// Users who may not see anything of any model.
void checkUsers(Catalogue const& catalogue, std::string const& file, Diagnostics& found) {
    if (catalogue.models.empty()) {
        return; // whatever it is for
    }
    for (CatalogueUser const& user : catalogue.users) {
        bool const seesSomething = std::any_of(
            catalogue.models.begin(), catalogue.models.end(), [&](CatalogueModel const& model) {
                return !isRestrictedPath(model.path) || !availableViews(model, user).empty();
            });
        if (!seesSomething) {
            found.push_back(finding("user-without-view", file, user.line, user.column,
                                    "the user " + inQuotes(user.name) +
                                        " may use no view, so every request is refused; grant a "
                                        "view to a role of the user"));
        }
    }
}

} // namespace

void checkModel(Model const& model, std::string const& file, Diagnostics& found) {
    ModelFindings findings(model, file, found);
    for (auto const check : {&checkShortcuts, &checkNames, &checkTranslations, &checkViews,
                             &checkWords, &checkIdentities, &checkExpressions}) {
        check(findings);
    }
}

bool isRestrictedPath(I18NString const& path) {
    constexpr char const* prefixes[] = {"/content/", "path:"};
    return std::any_of(std::begin(prefixes), std::end(prefixes),
                       [&](char const* prefix) { return path.find(prefix) == 0; });
}

void checkCatalogue(Catalogue const& catalogue, std::string const& file, Diagnostics& found) {
    checkUsers(catalogue, file, found);
    for (CatalogueModel const& model : catalogue.models) {
        if (!isRestrictedPath(model.path)) {
            found.push_back(finding("unrestricted-path", file, model.line, model.column,
                                    "nobody is restricted under the model path " +
                                        inQuotes(model.path) +
                                        "; begin it with /content/ to have its grants obeyed"));
        }
    }
}

void checkGrants(Catalogue const& catalogue, CatalogueModel const& entry, Model const& model,
                 std::string const& file, Diagnostics& found) {
    std::set<I18NString> held;
    for (CatalogueUser const& user : catalogue.users) {
        held.insert(user.roles.begin(), user.roles.end());
    }
    Vex_Handle_Collection views;
    VexObject(model.GetRootObject())
        .getElementsByTagName(resources::getString(resources::SecurityView), views);
    std::set<I18NString> known;
    for (VEX_HANDLE const view : views) {
        I18NString id;
        VexObject(view).GetId(id);
        known.insert(id);
    }
    for (CatalogueGrant const& grant : entry.grants) {
        if (known.count(grant.view) == 0) {
            found.push_back(finding("granted-view-missing", file, grant.line, grant.column,
                                    "the role " + inQuotes(grant.role) + " is granted the view " +
                                        inQuotes(grant.view) + ", which the model " + entry.file +
                                        " lacks"));
        }
        if (held.count(grant.role) == 0) {
            found.push_back(finding("role-without-user", file, grant.line, grant.column,
                                    "no user has the role " + inQuotes(grant.role) +
                                        ", which is granted the view " + inQuotes(grant.view)));
            held.insert(grant.role); // once is enough
        }
    }
    for (I18NString const& role : rolesOfViews(model)) {
        if (held.count(role) == 0) {
            found.push_back(finding("role-without-user", file, entry.line, entry.column,
                                    "no user has the role " + inQuotes(role) +
                                        ", which a view of the model " + entry.file + " asks for"));
        }
    }
}

} // namespace vex

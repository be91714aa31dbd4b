#include "apps/vexma/Viewers.h"

#include <algorithm>

namespace vex {

std::vector<std::string> Viewer::names() const {
    std::vector<std::string> all{name};
    all.insert(all.end(), alike.begin(), alike.end());
    return all;
}

void Viewers::add(CatalogueModel const* model, std::shared_ptr<CatalogueUser const> const& user) {
    std::vector<I18NString> rights = user->roles;
    rights.emplace_back(); // no role has this name
    if (model != nullptr) {
        std::vector<I18NString> const views = availableViews(*model, *user);
        rights.insert(rights.end(), views.begin(), views.end());
    }
    auto const known = std::find(m_rights.begin(), m_rights.end(), rights);
    if (known != m_rights.end()) {
        m_viewers[static_cast<std::size_t>(known - m_rights.begin())].alike.push_back(
            user->name.toUtf8());
        return;
    }
    m_viewers.push_back({user->name.toUtf8(), {}, user});
    m_rights.push_back(std::move(rights));
}

Viewers Viewers::usersOf(std::shared_ptr<Catalogue const> const& catalogue,
                         I18NString const& modelPath, std::string const& only) {
    Viewers made;
    if (catalogue == nullptr) {
        made.m_viewers.emplace_back();
        return made;
    }
    CatalogueModel const* const model = catalogue->findModel(modelPath);
    for (CatalogueUser const& user : catalogue->users) {
        if (only.empty() || user.name.toUtf8() == only) {
            made.add(model, {catalogue, &user});
        }
    }
    return made;
}

Viewers Viewers::rolesOf(std::shared_ptr<Catalogue const> const& catalogue,
                         I18NString const& modelPath) {
    Viewers made;
    if (catalogue == nullptr) {
        return made;
    }
    CatalogueModel const* const model = catalogue->findModel(modelPath);
    std::vector<I18NString> roles;
    auto const note = [&](I18NString const& role) {
        if (std::find(roles.begin(), roles.end(), role) == roles.end()) {
            roles.push_back(role);
        }
    };
    if (model != nullptr) {
        for (CatalogueGrant const& grant : model->grants) {
            note(grant.role);
        }
    }
    for (CatalogueUser const& user : catalogue->users) {
        std::for_each(user.roles.begin(), user.roles.end(), note);
    }
    for (I18NString const& role : roles) {
        made.add(model, std::make_shared<CatalogueUser>(CatalogueUser{role, {role}}));
    }
    return made;
}

} // namespace vex

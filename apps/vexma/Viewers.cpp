#include "apps/vexma/Viewers.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace vex {

std::vector<std::string> Viewer::names() const {
    std::vector<std::string> all{name};
    all.insert(all.end(), alike.begin(), alike.end());
    return all;
}

void Viewers::add(std::shared_ptr<CatalogueUser const> const& user) {
    auto const [known, isNew] = m_places.try_emplace(user.get(), m_viewers.size());
    if (isNew) {
        m_viewers.push_back({user->name.toUtf8(), {}, user});
    } else {
        m_viewers[known->second].alike.push_back(user->name.toUtf8());
    }
}

Viewers Viewers::usersOf(std::shared_ptr<Catalogue const> const& catalogue,
                         std::string const& only) {
    Viewers made;
    if (catalogue == nullptr) {
        made.m_viewers.emplace_back();
        return made;
    }
    for (CatalogueUser const& user : catalogue->users) {
        if (only.empty() || user.name.toUtf8() == only) {
            made.add({catalogue, &user});
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
    std::set<std::u16string_view> known;
    auto const note = [&](I18NString const& role) {
        if (known.insert(role.view()).second) {
            made.add(std::make_shared<CatalogueUser>(CatalogueUser{role, {role}}));
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
    return made;
}

} // namespace vex

#include "apps/vexma/Viewers.h"

#include "I18NHash.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace vex {

namespace {

/// The views that a user may use follow from the roles.
struct SameRoles {
    bool operator()(CatalogueUser const* a, CatalogueUser const* b) const {
        return a->roles == b->roles;
    }
};

struct HashOfRoles {
    std::size_t operator()(CatalogueUser const* user) const {
        std::uint64_t const seed = I18NHashSeed();
        std::uint64_t hash = user->roles.size();
        for (I18NString const& role : user->roles) {
            hash = I18NMixHash(hash, I18NHashText(role.view(), seed), seed);
        }
        return hash;
    }
};

} // namespace

std::vector<std::string> Viewer::names() const {
    std::vector<std::string> all{name};
    all.insert(all.end(), alike.begin(), alike.end());
    return all;
}

std::shared_ptr<CatalogueUser const> Viewer::user() const {
    if (!m_isRole) {
        return m_user;
    }
    I18NString const role = I18NString::fromUtf8(name);
    return std::make_shared<CatalogueUser>(CatalogueUser{role, {role}});
}

Viewers Viewers::usersOf(std::shared_ptr<Catalogue const> const& catalogue,
                         std::string const& only) {
    Viewers made;
    if (catalogue == nullptr) {
        made.m_viewers.emplace_back();
        return made;
    }
    std::unordered_map<CatalogueUser const*, std::size_t, HashOfRoles, SameRoles> places;
    for (CatalogueUser const& user : catalogue->users) {
        if (!only.empty() && user.name.toUtf8() != only) {
            continue;
        }
        auto const [known, isNew] = places.try_emplace(&user, made.m_viewers.size());
        if (isNew) {
            made.m_viewers.emplace_back(std::shared_ptr<CatalogueUser const>(catalogue, &user));
        } else {
            made.m_viewers[known->second].alike.push_back(user.name.toUtf8());
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
    std::unordered_set<std::u16string_view, I18NTextHasher> known;
    auto const note = [&](I18NString const& role) {
        if (known.insert(role.view()).second) {
            made.m_viewers.emplace_back(role);
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

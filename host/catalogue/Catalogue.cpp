#include "host/catalogue/Catalogue.h"

#include <set>
#include <string_view>

namespace vex {

bool LocalisedText::add(I18NLocale locale, I18NString text) {
    return m_values.try_emplace(locale.getNumber(), std::move(text)).second;
}

I18NString const& LocalisedText::find(I18NLocale locale) const {
    static I18NString const none;
    I18NLocale const nameless;
    for (;; locale = locale.getParent()) {
        auto const at = m_values.find(locale.getNumber());
        if (at != m_values.end()) {
            return at->second;
        }
        if (locale == nameless) {
            return none;
        }
    }
}

CatalogueModel const* Catalogue::findModel(I18NString const& path) const {
    std::uint32_t const place = modelsByPath.findFirst(models, path);
    return place == NotFound ? nullptr : &models[place];
}

CatalogueUser const* Catalogue::findUser(I18NString const& name) const {
    std::uint32_t const place = usersByName.findFirst(users, name);
    return place == NotFound ? nullptr : &users[place];
}

std::vector<I18NString> availableViews(CatalogueModel const& model, CatalogueUser const& user) {
    std::set<std::u16string_view> granted; // ascending, each once
    for (I18NString const& role : user.roles) {
        auto const& index = model.grantsOfRoles;
        for (std::uint32_t place = index.findFirst(model.grants, role); place != NotFound;
             place = index.findNext(place)) {
            granted.insert(model.grants[place].view.view());
        }
    }
    std::vector<I18NString> views;
    views.reserve(granted.size());
    for (std::u16string_view const view : granted) {
        views.emplace_back(view);
    }
    return views;
}

PolicyApplication::PolicyApplication(Catalogue& catalogue) : m_catalogue(catalogue) {
    for (std::size_t number = 0; number < catalogue.users.size(); ++number) {
        m_users.emplace(catalogue.users[number].name, number);
    }
}

void PolicyApplication::apply(CatalogueModel& governed, std::shared_ptr<Policy const> policy) {
    for (PolicyGrant const& grant : policy->grants) {
        governed.grants.push_back({grant.role.text, grant.view, grant.role.place.line,
                                   grant.role.place.column, policy->file});
    }
    if (m_applied.insert(policy.get()).second) {
        addUsers(*policy);
    }
    governed.policy = std::move(policy);
}

void PolicyApplication::addUsers(Policy const& policy) {
    for (PolicyUser const& user : policy.users) {
        auto const [at, isNew] = m_users.try_emplace(user.name.text, m_catalogue.users.size());
        if (isNew) {
            m_catalogue.users.push_back(
                {user.name.text, {}, user.name.place.line, user.name.place.column, policy.file});
        }
        std::vector<I18NString>& roles = m_catalogue.users[at->second].roles;
        std::set<I18NString> held(roles.begin(), roles.end());
        for (I18NString const& role : user.roles) {
            if (held.insert(role).second) {
                roles.push_back(role);
            }
        }
    }
}

} // namespace vex

#include "host/catalogue/Catalogue.h"

#include <algorithm>

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
    auto const at = std::find_if(models.begin(), models.end(),
                                 [&](auto const& model) { return model.path == path; });
    return at == models.end() ? nullptr : &*at;
}

CatalogueUser const* Catalogue::findUser(I18NString const& name) const {
    auto const at = std::find_if(users.begin(), users.end(),
                                 [&](auto const& user) { return user.name == name; });
    return at == users.end() ? nullptr : &*at;
}

std::vector<I18NString> availableViews(CatalogueModel const& model, CatalogueUser const& user) {
    std::vector<I18NString> views;
    for (CatalogueGrant const& grant : model.grants) {
        if (std::find(user.roles.begin(), user.roles.end(), grant.role) != user.roles.end()) {
            views.push_back(grant.view);
        }
    }
    std::sort(views.begin(), views.end());
    views.erase(std::unique(views.begin(), views.end()), views.end());
    return views;
}

} // namespace vex

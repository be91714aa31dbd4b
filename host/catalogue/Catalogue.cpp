#include "host/catalogue/Catalogue.h"

#include <algorithm>
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
    std::set<std::u16string_view> granted; // ascending, each once
    for (I18NString const& role : user.roles) {
        GrantIndex const& index = model.grantsOfRoles;
        for (std::uint32_t place = index.findOfRole(model.grants, role); place != NotFound;
             place = index.findNextOfRole(place)) {
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

} // namespace vex

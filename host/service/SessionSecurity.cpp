#include "host/service/SessionSecurity.h"

namespace vex {

void SessionSecuritySource::GetAvailableViews(std::vector<I18NString>& views) {
    views = availableViews(m_model, m_user);
}

void SessionSecuritySource::GetRoles(std::vector<I18NString>& roles) {
    roles = m_user.roles;
}

void SessionSecuritySource::GetPackageValue(I18NString const& modelPath, I18NString& value,
                                            I18NLocale const& locale) {
    value = GetPackagePropertyValue(modelPath, locale, "value");
}

I18NString SessionSecuritySource::GetPackagePropertyValue(I18NString const& modelPath,
                                                          I18NLocale const& locale,
                                                          I18NString const& name) {
    CatalogueModel const* const model = m_catalogue.findModel(modelPath);
    if (model == nullptr) {
        return {};
    }
    auto const property = model->package.find(name);
    return property == model->package.end() ? I18NString() : property->second.find(locale);
}

SessionSecurity::SessionSecurity(std::shared_ptr<Catalogue const> catalogue,
                                 CatalogueUser const* user)
    : m_catalogue(std::move(catalogue)),
      m_user(user == nullptr ? std::nullopt : std::optional(*user)) {}

VexSecurityInfoSource* SessionSecurity::GetSecurityInfoSource(I18NString const& modelPath) {
    if (m_catalogue == nullptr || !m_user ||
        (m_confinement && !m_confinement->isMeantBy(modelPath))) {
        return nullptr;
    }
    auto const known = m_sources.find(modelPath);
    if (known != m_sources.end()) {
        return &known->second;
    }
    CatalogueModel const* const model = m_catalogue->findModel(modelPath);
    if (model == nullptr) {
        return nullptr;
    }
    return &m_sources.try_emplace(modelPath, *m_catalogue, *model, *m_user).first->second;
}

} // namespace vex

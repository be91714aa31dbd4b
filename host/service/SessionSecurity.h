#pragma once

#include "VexSession.h"
#include "host/catalogue/Catalogue.h"
#include "host/service/PathConfinement.h"

#include <map>
#include <memory>
#include <optional>

namespace vex {

/// What the catalogue grants one user on one model.
class SessionSecuritySource final : public VexSecurityInfoSource {
public:
    /// All three belong to the service, or to the catalogue that it keeps alive.
    SessionSecuritySource(Catalogue const& catalogue, CatalogueModel const& model,
                          CatalogueUser const& user)
        : m_catalogue(catalogue), m_model(model), m_user(user) {}

    void GetAvailableViews(std::vector<I18NString>& views) override;
    void GetRoles(std::vector<I18NString>& roles) override;
    void GetPackageValue(I18NString const& modelPath, I18NString& value,
                         I18NLocale const& locale) override;
    I18NString GetPackagePropertyValue(I18NString const& modelPath, I18NLocale const& locale,
                                       I18NString const& name) override;

private:
    Catalogue const& m_catalogue;
    CatalogueModel const& m_model;
    CatalogueUser const& m_user;
};

/// One session's security information, made for each model path when it is
/// first asked for. Used by one thread at a time, as its session.
class SessionSecurity final : public VexModelService {
public:
    /// Both may be null: then no path has security information. The user is copied: a
    /// plug-in may ask about him until the session is closed, whoever made him.
    SessionSecurity(std::shared_ptr<Catalogue const> catalogue, CatalogueUser const* user);

    VexSecurityInfoSource* GetSecurityInfoSource(I18NString const& modelPath) override;

    /// From now on no other path has security information. Before the first is asked for.
    void confineTo(I18NString path) { m_confinement.emplace(std::move(path)); }
    std::optional<PathConfinement> const& confinement() const { return m_confinement; }

private:
    std::shared_ptr<Catalogue const> m_catalogue;
    std::optional<CatalogueUser> m_user;
    std::optional<PathConfinement> m_confinement;
    std::map<I18NString, SessionSecuritySource> m_sources;
};

} // namespace vex

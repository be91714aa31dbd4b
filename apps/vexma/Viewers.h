#pragma once

#include "host/catalogue/Catalogue.h"

#include <memory>
#include <string>
#include <vector>

namespace vex {

/// Somebody who looks at a model, with all others who have the same roles and views there:
/// everything is answered to them alike.
class Viewer {
public:
    /// Everybody, where nobody is restricted.
    Viewer() = default;
    explicit Viewer(std::shared_ptr<CatalogueUser const> const& user)
        : name(user->name.toUtf8()), m_user(user) {}
    /// Somebody who has this one role.
    explicit Viewer(I18NString const& role) : name(role.toUtf8()), m_isRole(true) {}

    std::string name; // "" for everybody
    std::vector<std::string> alike;

    /// The name and the others, in order.
    std::vector<std::string> names() const;
    /// Null: everybody. Of a role it is made for who asks.
    std::shared_ptr<CatalogueUser const> user() const;

private:
    std::shared_ptr<CatalogueUser const> m_user; // who stays where he is
    bool m_isRole = false;
};

/// Those who may look at a model.
class Viewers {
public:
    /// The users of the catalogue, or only the one of that name; everybody without a catalogue.
    static Viewers usersOf(std::shared_ptr<Catalogue const> const& catalogue,
                           std::string const& only);
    /// The roles that the catalogue names, as users who have that one role; none without.
    static Viewers rolesOf(std::shared_ptr<Catalogue const> const& catalogue,
                           I18NString const& modelPath);

    std::vector<Viewer> const& all() const { return m_viewers; }

private:
    Viewers() = default;

    std::vector<Viewer> m_viewers;
};

} // namespace vex

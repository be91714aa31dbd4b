#pragma once

#include "host/catalogue/Catalogue.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vex {

/// Somebody who looks at a model, with all others who have the same roles and views there:
/// everything is answered to them alike.
struct Viewer {
    std::string name; // "" for everybody, where nobody is restricted
    std::vector<std::string> alike;
    std::shared_ptr<CatalogueUser const> user; // null: everybody

    /// The name and the others, in order.
    std::vector<std::string> names() const;
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

    void add(std::shared_ptr<CatalogueUser const> const& user);

    std::vector<Viewer> m_viewers;
    /// The views that a user may use follow from the roles.
    struct ByRoles {
        bool operator()(CatalogueUser const* a, CatalogueUser const* b) const {
            return a->roles < b->roles;
        }
    };
    std::map<CatalogueUser const*, std::size_t, ByRoles> m_places; // of the viewers
};

} // namespace vex

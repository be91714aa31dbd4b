#pragma once

#include "host/catalogue/Catalogue.h"

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
                           I18NString const& modelPath, std::string const& only);
    /// The roles that the catalogue names, as users who have that one role; none without.
    static Viewers rolesOf(std::shared_ptr<Catalogue const> const& catalogue,
                           I18NString const& modelPath);

    std::vector<Viewer> const& all() const { return m_viewers; }

private:
    Viewers() = default;

    void add(CatalogueModel const* model, std::shared_ptr<CatalogueUser const> const& user);

    std::vector<Viewer> m_viewers;
    std::vector<std::vector<I18NString>> m_rights; // of the viewers
};

} // namespace vex

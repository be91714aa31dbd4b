#pragma once

#include "host/catalogue/Catalogue.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace vex {

/// Somebody who looks at a model, with all others who have the same roles and views there:
/// everything is answered to them alike.
struct Viewer {
    std::string name; // "" for everybody, where nobody is restricted
    std::vector<std::string> alike;
    CatalogueUser const* user = nullptr; // null: everybody

    /// The name and the others, in order.
    std::vector<std::string> names() const;
};

/// Those who may look at a model. Keeps what the viewers point to.
class Viewers {
public:
    /// The users of the catalogue, or only the one of that name; everybody without a catalogue.
    static Viewers usersOf(std::shared_ptr<Catalogue const> catalogue, I18NString const& modelPath,
                           std::string const& only);
    /// The roles that the catalogue names, as users who have that one role; none without.
    static Viewers rolesOf(std::shared_ptr<Catalogue const> catalogue, I18NString const& modelPath);

    std::vector<Viewer> const& all() const { return m_viewers; }

private:
    Viewers() = default;

    void add(CatalogueModel const* model, CatalogueUser const& user);

    std::shared_ptr<Catalogue const> m_catalogue;
    std::shared_ptr<std::deque<CatalogueUser>> m_roles; // users made for roles
    std::vector<Viewer> m_viewers;
    std::vector<std::vector<I18NString>> m_rights; // of the viewers
};

} // namespace vex

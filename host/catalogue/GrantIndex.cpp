#include "host/catalogue/GrantIndex.h"

#include "host/catalogue/Catalogue.h"

#include <algorithm>
#include <numeric>

namespace vex {

GrantIndex& GrantIndex::operator=(GrantIndex const& /*other*/) noexcept {
    m_isMade = false;
    m_byRole.clear();
    return *this;
}

std::span<std::uint32_t const> GrantIndex::ofRole(std::vector<CatalogueGrant> const& grants,
                                                  I18NString const& role) const {
    auto const roleAt = [&](std::uint32_t place) -> I18NString const& {
        return grants[place].role;
    };
    std::lock_guard const lock(m_mutex);
    if (!m_isMade) {
        std::vector<std::uint32_t> places(grants.size());
        std::iota(places.begin(), places.end(), 0);
        std::sort(places.begin(), places.end(), [&](std::uint32_t a, std::uint32_t b) {
            int const order = roleAt(a).compare(roleAt(b));
            return order != 0 ? order < 0 : a < b;
        });
        m_byRole = std::move(places);
        m_isMade = true;
    }
    auto const first =
        std::partition_point(m_byRole.begin(), m_byRole.end(),
                             [&](std::uint32_t place) { return roleAt(place).compare(role) < 0; });
    auto const last = std::partition_point(
        first, m_byRole.end(), [&](std::uint32_t place) { return roleAt(place) == role; });
    return {first, last};
}

} // namespace vex

#include "host/catalogue/GrantIndex.h"

#include "I18NHash.h"
#include "host/catalogue/Catalogue.h"

#include <utility>

namespace vex {

namespace {

std::uint32_t hashOf(I18NString const& role) {
    return static_cast<std::uint32_t>(I18NTextHasher{}(role.view()));
}

} // namespace

GrantIndex& GrantIndex::operator=(GrantIndex const& /*other*/) noexcept {
    m_roles.reset();
    m_next.clear();
    return *this;
}

void GrantIndex::make(std::vector<CatalogueGrant> const& grants) const {
    GrowingHash roles;
    std::vector<std::uint32_t> next(grants.size(), NotFound);
    for (std::uint32_t place = 0; place < grants.size(); ++place) {
        I18NString const& role = grants[place].role;
        std::uint32_t const hash = hashOf(role);
        std::uint32_t const first =
            roles.find(hash, [&](std::uint32_t other) { return grants[other].role == role; });
        if (first == NotFound) {
            roles.add(hash, place);
        } else {
            next[place] = std::exchange(next[first], place);
        }
    }
    m_next = std::move(next);
    m_roles.emplace(std::move(roles));
}

std::uint32_t GrantIndex::findOfRole(std::vector<CatalogueGrant> const& grants,
                                     I18NString const& role) const {
    std::lock_guard const lock(m_mutex);
    if (!m_roles) {
        make(grants);
    }
    return m_roles->find(hashOf(role),
                         [&](std::uint32_t place) { return grants[place].role == role; });
}

} // namespace vex

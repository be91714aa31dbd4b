#pragma once

#include "I18NString.h"
#include "host/store/build/GrowingHash.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

namespace vex {

struct CatalogueGrant;

/// Finds the grants of a role without going through the others: there may be as many users
/// who ask as there are grants. Worked out when it is first asked, from then on the grants
/// stay as they are. A copy works it out anew. Threads: any may ask at once.
class GrantIndex {
public:
    GrantIndex() = default;
    GrantIndex(GrantIndex const& /*other*/) noexcept {}
    GrantIndex& operator=(GrantIndex const& /*other*/) noexcept;

    /// The place of a grant of the role among `grants`, which are the same for each question;
    /// `NotFound` when there is none.
    std::uint32_t findOfRole(std::vector<CatalogueGrant> const& grants,
                             I18NString const& role) const;
    /// The place of another one of the role whose grant stands there; after the last one
    /// `NotFound`. Not before `findOfRole`.
    std::uint32_t findNextOfRole(std::uint32_t place) const { return m_next[place]; }

private:
    void make(std::vector<CatalogueGrant> const& grants) const;

    mutable std::mutex m_mutex;
    mutable std::optional<GrowingHash> m_roles; // a place for each
    mutable std::vector<std::uint32_t> m_next;  // by the place of a grant
};

} // namespace vex

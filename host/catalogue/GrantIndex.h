#pragma once

#include "I18NString.h"

#include <cstdint>
#include <mutex>
#include <span>
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

    /// The places of the role's grants among `grants`, which are the same for each question.
    std::span<std::uint32_t const> ofRole(std::vector<CatalogueGrant> const& grants,
                                          I18NString const& role) const;

private:
    mutable std::mutex m_mutex;
    mutable bool m_isMade = false;
    mutable std::vector<std::uint32_t> m_byRole; // places of grants
};

} // namespace vex

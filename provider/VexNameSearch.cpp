#include "VexNameSearch.h"

#include "VexMDMaProviderUtility.h"
#include "VexResourceNumbers.h"
#include "resources.h"

#include <algorithm>

VexNameSearch::VexNameSearch(Vex_Handle_Collection const& objects, I18NString const& name,
                             I18NLocale const* locale, Unnamed unnamed)
    : m_objects(objects), m_key(resources::getString(VexResource::Name)), m_name(name),
      m_locale(locale), m_unnamed(unnamed), m_unnamedMatches(name.empty()) {}

bool VexNameSearch::next() {
    while (m_next != m_compared || compareMore()) {
        VexTextMatch const match = m_matches[m_next - m_firstCompared];
        ++m_next;
        bool const isNamed =
            match == VexTextMatch::NoText ? m_unnamedMatches : match == VexTextMatch::Same;
        if (m_unnamed == Unnamed::LikeTheOneBefore) {
            m_unnamedMatches = isNamed;
        }
        if (isNamed) {
            return true;
        }
    }
    return false;
}

bool VexNameSearch::compareMore() {
    std::size_t const before = m_compared - m_firstCompared;
    std::size_t const left = m_objects.size() - m_compared;
    std::size_t const count = std::min({std::max<std::size_t>(2 * before, 1), left, MostAhead});
    m_firstCompared = m_compared;
    std::span<VEX_HANDLE const> const all(m_objects.begin(), m_objects.end());
    VexMDMaProviderUtility::MatchStringPropertyValues(all.subspan(m_compared, count), m_key, m_name,
                                                      m_locale, m_matches.data());
    m_compared += count;
    return count != 0;
}

#include "model/VexNameSearch.h"

#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"
#include "resources.h"

#include <span>

VexNameSearch::VexNameSearch(Vex_Handle_Collection const& objects, I18NString const& name,
                             I18NLocale const* locale, Unnamed unnamed)
    : m_objects(objects), m_key(resources::getString(resources::Name)), m_name(name),
      m_locale(locale), m_unnamed(unnamed), m_unnamedMatches(name.empty()) {}

bool VexNameSearch::next() {
    std::span<VEX_HANDLE const> const all(m_objects.begin(), m_objects.end());
    while (m_next != all.size()) {
        VexTextMatch match = VexTextMatch::Different;
        std::size_t const others = VexMDMaProviderUtility::FindStringPropertyValue(
            all.subspan(m_next), m_key, m_name, m_locale, match);
        if (others != 0) {
            passName(false);
        }
        m_next += others;
        if (m_next == all.size()) {
            return false;
        }
        ++m_next;
        if (match == VexTextMatch::Same) {
            passName(true);
            return true;
        }
        if (m_unnamedMatches) {
            return true;
        }
    }
    return false;
}

void VexNameSearch::passName(bool matches) {
    if (m_unnamed == Unnamed::LikeTheOneBefore) {
        m_unnamedMatches = matches;
    }
}

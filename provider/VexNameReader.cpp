#include "VexNameReader.h"

#include "VexMDMaProviderUtility.h"

#include <algorithm>

void VexNameReader::readInto(I18NString& value) const {
    VEX_HANDLE const property = m_properties[m_next - 1 - m_firstLookedUp];
    if (property != 0) {
        VexMDMaProviderUtility::GetValue(property, value, true);
    }
}

bool VexNameReader::lookUpMore() {
    std::size_t const before = m_lookedUp - m_firstLookedUp;
    std::size_t const left = m_objects.size() - m_lookedUp;
    std::size_t const count = std::min({std::max<std::size_t>(2 * before, 1), left, MostAhead});
    m_firstLookedUp = m_lookedUp;
    for (std::size_t index = 0; index < count; ++index) {
        m_properties[index] = VexMDMaProviderUtility::GetPropertyByName(
            m_objects[m_firstLookedUp + index], m_key, m_locale);
    }
    m_lookedUp += count;
    return count != 0;
}

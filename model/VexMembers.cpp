#include "model/VexMembers.h"

#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"

void VexMembers::read(VEX_HANDLE object) {
    m_children.clear();
    m_runs.clear();
    if (!VexMDMaProviderUtility::hasChildObjects(object)) {
        return;
    }
    VexMDMaProviderUtility::childObjects(object, m_children, nullptr, nullptr);
    I18NString className;
    std::size_t index = 0;
    for (VEX_HANDLE const child : m_children) {
        if (!VexMDMaProviderUtility::GetName(child, className)) {
            className.clear();
        }
        if (m_runs.empty() || m_runs.back().className != className) {
            m_runs.push_back({className, index});
        }
        ++index;
    }
}

void VexMembers::appendOfClass(I18NString const& className, Vex_Handle_Collection& found) const {
    for (std::size_t run = 0; run < m_runs.size(); ++run) {
        if (m_runs[run].className != className) {
            continue;
        }
        std::size_t const end = run + 1 < m_runs.size() ? m_runs[run + 1].first : m_children.size();
        for (std::size_t index = m_runs[run].first; index < end; ++index) {
            found.push_back(m_children[index]);
        }
    }
}

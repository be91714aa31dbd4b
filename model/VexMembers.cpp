#include "model/VexMembers.h"

#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"

#include <algorithm>
#include <functional>

namespace {

// Looking through so many is faster than sorting them.
constexpr std::size_t fewRuns = 32;
constexpr std::size_t fewSearches = 8;

} // namespace

void VexMembers::read(VEX_HANDLE object) {
    m_children.clear();
    m_runs.clear();
    m_byClass.clear();
    m_searches = 0;
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
        if (m_runs.empty() || *m_runs.back().className != className) {
            m_runs.push_back({&*m_classes.insert(className).first, index});
        }
        ++index;
    }
}

void VexMembers::appendOfClass(I18NString const& className, Vex_Handle_Collection& found) {
    if (m_runs.size() <= fewRuns || ++m_searches <= fewSearches) {
        for (std::size_t run = 0; run < m_runs.size(); ++run) {
            if (*m_runs[run].className == className) {
                appendRun(run, found);
            }
        }
        return;
    }
    auto const known = m_classes.find(className);
    if (known == m_classes.end()) {
        return;
    }
    I18NString const* const wanted = &*known;
    sortRuns();
    auto const isBefore = [this](std::size_t run, I18NString const* sought) {
        return std::less<>()(m_runs[run].className, sought);
    };
    auto const last = m_byClass.end();
    for (auto run = std::lower_bound(m_byClass.begin(), last, wanted, isBefore);
         run != last && m_runs[*run].className == wanted; ++run) {
        appendRun(*run, found);
    }
}

void VexMembers::appendRun(std::size_t run, Vex_Handle_Collection& found) const {
    std::size_t const end = run + 1 < m_runs.size() ? m_runs[run + 1].first : m_children.size();
    for (std::size_t index = m_runs[run].first; index < end; ++index) {
        found.push_back(m_children[index]);
    }
}

void VexMembers::sortRuns() {
    if (!m_byClass.empty()) {
        return;
    }
    for (std::size_t run = 0; run < m_runs.size(); ++run) {
        m_byClass.push_back(run);
    }
    std::sort(m_byClass.begin(), m_byClass.end(), [this](std::size_t a, std::size_t b) {
        I18NString const* const first = m_runs[a].className;
        I18NString const* const second = m_runs[b].className;
        return first != second ? std::less<>()(first, second) : a < b;
    });
}

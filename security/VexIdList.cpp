#include "security/VexIdList.h"

#include "provider/VexConstants.h"

#include <algorithm>
#include <utility>

void VexIdList::add(std::shared_ptr<VexTextSet const> ready) {
    m_ready.push_back(std::move(ready));
    m_readyIds += m_ready.back()->size();
}

bool VexIdList::contains(I18NString const& id) const {
    // So many look-ups cost what reading the sets does.
    if (m_ready.size() > FewSets && m_setsAsked > m_readyIds) {
        readSets();
    }
    m_setsAsked += m_ready.size();
    return m_read.contains(id) || std::any_of(m_ready.begin(), m_ready.end(),
                                              [&](auto const& set) { return set->contains(id); });
}

void VexIdList::readSets() const {
    std::vector<std::u16string_view> ids;
    ids.reserve(m_readyIds);
    for (auto const& set : m_ready) {
        set->appendTo(ids);
    }
    m_read.reserveMore(ids.size());
    for (std::u16string_view const id : ids) {
        m_read.insert(id);
    }
    m_ready.clear();
    m_readyIds = 0;
}

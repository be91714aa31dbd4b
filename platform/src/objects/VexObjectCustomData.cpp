#include "VexObjectCustomData.h"

#include "VexSession.h"

#include <algorithm>

VexCustomDataStore::~VexCustomDataStore() = default;
VexSessionCustomData::~VexSessionCustomData() = default;

bool VexSessionCustomData::HasNamespace(I18NString const& nameSpace) const {
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](Entry const& entry) { return entry.nameSpace == nameSpace; });
}

I18NString VexSessionCustomData::Get(I18NString const& key, I18NString const& nameSpace) const {
    auto const found = std::find_if(m_entries.begin(), m_entries.end(), [&](Entry const& entry) {
        return entry.nameSpace == nameSpace && entry.key == key;
    });
    return found == m_entries.end() ? I18NString() : found->value;
}

void VexSessionCustomData::Set(I18NString const& key, I18NString const& value,
                               [[maybe_unused]] bool persistent, I18NString const& nameSpace) {
    Entry entry{nameSpace, key, value};
    Remove(key, nameSpace);
    m_entries.push_back(std::move(entry));
}

void VexSessionCustomData::Remove(I18NString const& key, I18NString const& nameSpace) {
    std::erase_if(m_entries, [&](Entry const& entry) {
        return entry.nameSpace == nameSpace && entry.key == key;
    });
}

VexObjectCustomData::VexObjectCustomData(VexSession& session)
    : m_store(session.GetCustomDataStore()) {}

bool VexObjectCustomData::HasCustomData(I18NString const& nameSpace) const {
    return m_store.HasNamespace(nameSpace);
}

I18NString VexObjectCustomData::GetCustomDataProperty(I18NString const& key,
                                                      I18NString const& nameSpace) const {
    return m_store.Get(key, nameSpace);
}

void VexObjectCustomData::SetCustomDataProperty(I18NString const& key, I18NString const& value,
                                                bool persistent, I18NString const& nameSpace) {
    m_store.Set(key, value, persistent, nameSpace);
}

void VexObjectCustomData::RemoveCustomDataProperty(I18NString const& key,
                                                   I18NString const& nameSpace) {
    m_store.Remove(key, nameSpace);
}

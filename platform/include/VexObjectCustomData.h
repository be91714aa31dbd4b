#pragma once

#include "I18NString.h"

#include <vector>

class VexSession;

/// The texts that plug-ins keep with one session, by namespace and key.
/// Threads: one at a time, as for the session.
class VEX_PLATFORM_API VexCustomDataStore {
public:
    /// @{
    /// See the operations of `VexObjectCustomData`, which plug-ins use.
    bool HasNamespace(I18NString const& nameSpace) const;
    I18NString Get(I18NString const& key, I18NString const& nameSpace) const;
    void Set(I18NString const& key, I18NString const& value, I18NString const& nameSpace);
    void Remove(I18NString const& key, I18NString const& nameSpace);
    /// @}

private:
    struct Entry {
        I18NString nameSpace;
        I18NString key;
        I18NString value;
    };
    std::vector<Entry> m_entries; // a handful at most, so a scan is the fastest look-up
};

/// A plug-in's way to the custom data of a session.
class VEX_PLATFORM_API VexObjectCustomData {
public:
    /// `session` must outlive this object.
    explicit VexObjectCustomData(VexSession& session);

    /// True when the session holds any property in the namespace.
    bool HasCustomData(I18NString const& nameSpace) const;

    /// The property's value; "" when there is none.
    I18NString GetCustomDataProperty(I18NString const& key, I18NString const& nameSpace) const;

    /// Sets the property, replacing an earlier value. `persistent` asks a host
    /// with lasting storage to keep it; here data ends with the session.
    void SetCustomDataProperty(I18NString const& key, I18NString const& value, bool persistent,
                               I18NString const& nameSpace);

    /// Removes the property; nothing happens when there is none.
    void RemoveCustomDataProperty(I18NString const& key, I18NString const& nameSpace);

private:
    VexCustomDataStore& m_store;
};

#pragma once

#include "I18NString.h"

#include <vector>

class VexSession;

/// Where the texts stand that plug-ins keep with one session, by namespace and key. A
/// host that has a place of its own for them implements this; one that has none uses
/// `VexSessionCustomData`.
///
/// What is not persistent may name memory of the process: it must never come back in
/// another process, or for another session. `VexMAActionPlugin` keeps nothing else.
/// Threads: one at a time, as for the session.
/// Raises: whatever the host likes; it passes through the plug-in.
class VEX_PLATFORM_API VexCustomDataStore {
public:
    /// @{
    /// See the operations of `VexObjectCustomData`, which plug-ins use.
    virtual bool HasNamespace(I18NString const& nameSpace) const = 0;
    virtual I18NString Get(I18NString const& key, I18NString const& nameSpace) const = 0;
    virtual void Set(I18NString const& key, I18NString const& value, bool persistent,
                     I18NString const& nameSpace) = 0;
    virtual void Remove(I18NString const& key, I18NString const& nameSpace) = 0;
    /// @}

protected:
    virtual ~VexCustomDataStore();
};

/// Keeps the texts in memory, as long as the session lives; what is persistent too.
class VEX_PLATFORM_API VexSessionCustomData final : public VexCustomDataStore {
public:
    VexSessionCustomData() = default;
    VexSessionCustomData(VexSessionCustomData const&) = default;
    VexSessionCustomData& operator=(VexSessionCustomData const&) = default;
    ~VexSessionCustomData() override;

    bool HasNamespace(I18NString const& nameSpace) const override;
    I18NString Get(I18NString const& key, I18NString const& nameSpace) const override;
    void Set(I18NString const& key, I18NString const& value, bool persistent,
             I18NString const& nameSpace) override;
    void Remove(I18NString const& key, I18NString const& nameSpace) override;

private:
    struct Entry {
        I18NString nameSpace;
        I18NString key;
        I18NString value;
    };
    std::vector<Entry> m_entries; // a handful at most, so a scan is the fastest look-up
};

/// A plug-in's way to the custom data of a session. Raises what the session's place raises.
class VEX_PLATFORM_API VexObjectCustomData {
public:
    /// `session` must outlive this object.
    explicit VexObjectCustomData(VexSession& session);

    /// True when the session holds any property in the namespace.
    bool HasCustomData(I18NString const& nameSpace) const;

    /// The property's value; "" when there is none.
    I18NString GetCustomDataProperty(I18NString const& key, I18NString const& nameSpace) const;

    /// Sets the property, replacing an earlier value. `persistent` asks a host
    /// with lasting storage to keep it beyond the session.
    void SetCustomDataProperty(I18NString const& key, I18NString const& value, bool persistent,
                               I18NString const& nameSpace);

    /// Removes the property; nothing happens when there is none.
    void RemoveCustomDataProperty(I18NString const& key, I18NString const& nameSpace);

private:
    VexCustomDataStore& m_store;
};

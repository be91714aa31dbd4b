#pragma once

#include "VexHostExport.h"
#include "VexNotification.h"
#include "VexObjectCustomData.h"
#include "VexSession.h"

#include <map>

/// One user's work on one open model, put together from what a host has. What it is
/// given must outlive it. It knows no plug-in: send `VexNotification::SessionClosed` to
/// those that were called for it before it goes. Threads: one at a time.
class VEX_HOST_API VexHostSession final : public VexSession {
public:
    /// `locale` is the one to answer in, see `VexChooseLocale`. Without a service nobody
    /// knows who may see what: paths below /content/ are refused. Without a place for
    /// custom data the session keeps it itself.
    VexHostSession(VexObjectStore& objects, I18NLocale const& locale,
                   VexModelService* service = nullptr, VexCustomDataStore* customData = nullptr);
    VexHostSession(VexHostSession const&) = delete;
    VexHostSession& operator=(VexHostSession const&) = delete;
    ~VexHostSession() override;

    I18NLocale const* GetCurrentLocale() const override { return &m_locale; }
    I18NLocale const* GetLocale(I18NString const& name) const override;
    VexObjectStore& GetObjectStore() const override { return *m_objects; }
    VexModelService* GetModelService() override { return m_service; }
    VexCustomDataStore& GetCustomDataStore() override { return *m_customData; }

    /// Goes over to other objects, such as a newer version of the model. Send
    /// `VexNotification::ModelReloaded` right after it.
    void takeObjects(VexObjectStore& objects, I18NLocale const& locale);

private:
    VexObjectStore* m_objects;
    I18NLocale m_locale;
    VexModelService* m_service;
    VexSessionCustomData m_ownData;
    VexCustomDataStore* m_customData;
    mutable std::map<I18NString, I18NLocale> m_locales; // those handed out by name
};

/// An event of a session, by its kind.
class VEX_HOST_API VexSessionEvent final : public VexNotification {
public:
    /// `kind` is one of `VexNotification`'s, or a free number.
    VexSessionEvent(int kind, VexSession& session) : m_kind(kind), m_session(session) {}
    ~VexSessionEvent() override;

    int GetKind() const override { return m_kind; }
    VexSession& GetSession() const override { return m_session; }

private:
    int m_kind;
    VexSession& m_session;
};

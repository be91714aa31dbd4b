#pragma once

#include "VexObjectCustomData.h"
#include "VexSession.h"
#include "host/service/SessionSecurity.h"
#include "host/store/image/Model.h"

#include <atomic>
#include <map>
#include <memory>

namespace vex {

/// The version of a model that a session has open. It stays loaded while the
/// session keeps it, whatever the host loads later.
class OpenModel final : public VexObjectStore {
public:
    explicit OpenModel(std::shared_ptr<Model const> model) : m_model(std::move(model)) {}

    VEX_HANDLE GetRootObject() const override { return m_model->GetRootObject(); }
    VEX_HANDLE GetObjectByReference(I18NString const& reference, long scope) const override {
        return m_model->GetObjectByReference(reference, scope);
    }

    std::shared_ptr<Model const> const& getModel() const { return m_model; }
    void setModel(std::shared_ptr<Model const> model) { m_model = std::move(model); }

private:
    std::shared_ptr<Model const> m_model;
};

/// The locale that a session on `model` uses when it asks for `asked`: that
/// locale, when the model lists it or one of its parents; else the model's
/// default locale. The nameless locale asks for the default.
I18NLocale negotiateLocale(Model const& model, I18NLocale asked);

/// One user's work on one open model. Used by one thread at a time.
class HostSession final : public VexSession {
public:
    HostSession(std::shared_ptr<Model const> model, I18NLocale asked,
                std::shared_ptr<Catalogue const> catalogue, CatalogueUser const* user);
    ~HostSession() override;

    I18NLocale const* GetCurrentLocale() const override { return &m_locale; }
    I18NLocale const* GetLocale(I18NString const& name) const override;
    VexObjectStore& GetObjectStore() const override { return m_open; }
    VexModelService* GetModelService() override { return &m_security; }
    VexCustomDataStore& GetCustomDataStore() override { return m_customData; }

    std::shared_ptr<Model const> const& getModel() const { return m_open.getModel(); }

    /// Goes over to a newer version of the model and finds the locale anew. The
    /// caller sends `VexNotification::ModelReloaded` right after it.
    void takeModel(std::shared_ptr<Model const> model);

    /// The session may be asked about this model path only, from now on.
    void confineTo(I18NString path) { m_security.confineTo(std::move(path)); }
    /// Null when it may be asked about any.
    PathConfinement const* confinement() const {
        return m_security.confinement() ? &*m_security.confinement() : nullptr;
    }

    /// The object with that id, else with that reference. Raises `HostException` when
    /// it names nothing; that suggests others only where nobody is restricted.
    VEX_HANDLE findObject(I18NString const& idOrReference) const;

    /// Holds a session's only turn; what is called meanwhile gets none.
    class Turn {
    public:
        explicit Turn(HostSession& session)
            : m_busy(session.m_busy), m_taken(!m_busy.exchange(true, std::memory_order_acquire)) {}
        Turn(Turn const&) = delete;
        Turn& operator=(Turn const&) = delete;
        ~Turn() {
            if (m_taken) {
                m_busy.store(false, std::memory_order_release);
            }
        }
        /// False when another call of the session is under way.
        bool isTaken() const { return m_taken; }

    private:
        std::atomic<bool>& m_busy;
        bool m_taken;
    };

private:
    mutable OpenModel m_open; // handed out as what plug-ins read, from a const session too
    I18NLocale m_asked;
    I18NLocale m_locale;
    bool m_mayNameAll; // in what is told of a name that is not found
    SessionSecurity m_security;
    VexSessionCustomData m_customData;
    mutable std::map<I18NString, I18NLocale> m_locales; // those handed out by name
    std::atomic<bool> m_busy{false};
};

} // namespace vex

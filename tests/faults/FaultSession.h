#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/import/xml/ModelLoader.h"
#include "host/service/ActionCall.h"
#include "host/service/PluginProxy.h"

#include <memory>
#include <string>

/// A session of a catalogue's user on the model of these tests.
class FaultSession {
public:
    FaultSession();
    /// The same on another version of that model.
    explicit FaultSession(std::shared_ptr<vex::Model const> model);
    /// Closes the session.
    ~FaultSession();
    FaultSession(FaultSession const&) = delete;
    FaultSession& operator=(FaultSession const&) = delete;

    /// A metadata request: what came of it as text. `std::bad_alloc` when
    /// memory ended it.
    std::string ask(char const* request);
    /// An accessibility request for the object with that id, in the same way.
    std::string askAccess(char const* id);
    /// A metadata request at the object with that id, in the same way.
    std::string askAt(char const* id, char const* request);
    void notify(int kind);

    /// The plug-in of the whole program.
    static std::shared_ptr<vex::PluginProxy> const& sharedPlugin();
    static vex::PluginProxy& plugin() { return *sharedPlugin(); }
    static std::shared_ptr<vex::Model const> const& model();
    static std::shared_ptr<vex::Catalogue const> const& catalogue();

private:
    std::string call(long action, VexParams const& in);

    vex::HostSession m_session;
};

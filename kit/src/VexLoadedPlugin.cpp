#include "VexLoadedPlugin.h"

#include "KRLException.h"
#include "VexException.h"
#include "VexHostSession.h"
#include "VexTrace.h"
#include "host/service/LastingException.h"
#include "host/service/PluginLibrary.h"
#include "host/service/PluginObject.h"

#include <exception>
#include <optional>

namespace {

constexpr int isReady = 1;
constexpr int isDone = 1;

std::string described(std::string const& file, std::string const& operation) {
    return "the plug-in " + file + ": " + operation;
}

// Runs a call into a plug-in of that library. What it raises often unloads the plug-in on
// its way out, and the code of the plug-in's own types is gone with it.
template <class Call>
auto guarded(vex::PluginLibrary const& library, char const* operation, Call const& call) {
    try {
        return call();
    } catch (...) {
        vex::raiseLasting(library, described(library.getFile(), operation));
    }
}

} // namespace

struct VexLoadedPlugin::State {
    explicit State(std::string const& file) : library(file) {}

    vex::PluginLibrary library;
    std::optional<vex::PluginObject> object; // goes before the library that holds its code
};

VexLoadedPlugin::VexLoadedPlugin(std::string const& file, std::string const& name,
                                 char const* parameters)
    : m_state(std::make_unique<State>(file)) {
    VexPluginFactory::Creator const& creator = m_state->library.findCreator(name);
    int const result = guarded(m_state->library, "Initialize", [&] {
        m_state->object.emplace(creator);
        return get()->Initialize(parameters);
    });
    if (result != isReady) {
        throw KRLException(described(this->file(), "Initialize") + " gave " +
                           std::to_string(result) +
                           ": the plug-in is not ready; look at what it was given");
    }
}

VexLoadedPlugin::~VexLoadedPlugin() {
    try {
        terminate();
    } catch (std::exception const& problem) {
        OutputDebugString(problem.what()); // nobody is left to be told
    } catch (...) {
        OutputDebugString(described(file(), "Terminate raised something unknown").c_str());
    }
}

bool VexLoadedPlugin::act(VexSession& session, long action, VexParams const& in, VexParams& out) {
    VexException unused(0);
    VexPluginInterface& plugin = ready("DoAction");
    long const code = guarded(m_state->library, "DoAction", [&] {
        return plugin.DoAction(session, VexVariant(action), unused, in, out).GetCode();
    });
    if (code != VexErrorCode::Handled && code != VexErrorCode::NotHandled) {
        throw KRLException(described(file(), "DoAction") + " gave " + std::to_string(code) +
                           ", which means nothing to a host; it is neither done nor unknown");
    }
    return code == VexErrorCode::Handled;
}

void VexLoadedPlugin::notify(VexSession& session, int kind) {
    VexPluginInterface& plugin = ready("Notify");
    guarded(m_state->library, "Notify", [&] { plugin.Notify(VexSessionEvent(kind, session)); });
}

void VexLoadedPlugin::terminate(char const* parameters) {
    if (!m_state->object) {
        return;
    }
    // The object goes whatever it says.
    struct Reset {
        ~Reset() { object.reset(); }
        std::optional<vex::PluginObject>& object;
    } const reset{m_state->object};
    int const result =
        guarded(m_state->library, "Terminate", [&] { return get()->Terminate(parameters); });
    if (result != isDone) {
        throw KRLException(described(file(), "Terminate") + " gave " + std::to_string(result) +
                           ": the plug-in did not end its work in order");
    }
}

std::string const& VexLoadedPlugin::file() const {
    return m_state->library.getFile();
}

VexPluginInterface* VexLoadedPlugin::get() const {
    return m_state->object ? m_state->object->get() : nullptr;
}

void const* VexLoadedPlugin::findExtension(char const* id) const {
    auto const entry =
        reinterpret_cast<VexGetExtension>(m_state->library.findExport(VexGetExtensionName));
    return entry == nullptr || id == nullptr ? nullptr : entry(id);
}

VexPluginInterface& VexLoadedPlugin::ready(char const* operation) const {
    if (get() == nullptr) {
        throw KRLException(described(file(), operation) + " was called after terminate");
    }
    return *get();
}

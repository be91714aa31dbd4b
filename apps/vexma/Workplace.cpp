#include "apps/vexma/Workplace.h"

#include "VexNotification.h"
#include "VexTrace.h"
#include "apps/vexma/Interrupt.h"
#include "apps/vexma/Progress.h"
#include "host/import/xml/FileText.h"
#include "host/store/image/CallLimits.h"

#include <cmath>
#include <filesystem>

namespace vex {

namespace {

std::shared_ptr<Catalogue const> readCatalogueOf(SourceOptions const& options) {
    std::shared_ptr<Catalogue const> const read = loadCatalogue(options.catalogFile);
    if (options.replacingFile.empty()) {
        return read;
    }
    auto const changed = std::make_shared<Catalogue>(*read);
    for (CatalogueModel& model : changed->models) {
        if (model.path.toUtf8() == options.modelPath) {
            model.file = options.replacingFile;
        }
    }
    return changed;
}

/// A model file alone gets a path outside the content store, under which nobody
/// is restricted.
I18NString modelPathOf(SourceOptions const& options) {
    return I18NString::fromUtf8(
        options.catalogFile.empty()
            ? "file:" + std::filesystem::path(options.modelFile).filename().string()
            : options.modelPath);
}

ActionLimits limitsOf(SourceOptions const& options) {
    constexpr double longest = 1e9; // a deadline of thirty years is none
    constexpr double millisecondsPerSecond = 1e3;
    ActionLimits limits;
    limits.response = options.response;
    if (options.deadlineSeconds && *options.deadlineSeconds < longest) {
        limits.time = std::chrono::milliseconds(
            std::llround(*options.deadlineSeconds * millisecondsPerSecond));
    }
    return limits;
}

} // namespace

std::unique_ptr<HostSession> openSession(SourceOptions const& options, Console& console) {
    Progress progress(console);
    LoadOptions load;
    load.progress = [&](std::size_t done, std::size_t total) { progress.Report(done, total); };

    I18NLocale const locale{I18NString::fromUtf8(options.locale)};
    if (!options.catalogFile.empty()) {
        Host host(readCatalogueOf(options), load);
        return host.openSession(
            {I18NString::fromUtf8(options.modelPath), I18NString::fromUtf8(options.user), locale});
    }
    if (options.modelFile == "-") {
        return Host::openSession(loadModelText(readFileText("-"), "standard input", load), locale);
    }
    return Host::openSession(loadModel(options.modelFile, load), locale);
}

Workplace::Workplace(SourceOptions const& options, Console& console)
    : m_limits(limitsOf(options)), m_modelPath(modelPathOf(options)),
      m_session(openSession(options, console)),
      m_plugin(std::make_shared<PluginProxy>(options.pluginFile.empty() ? findPluginFile()
                                                                        : options.pluginFile)) {
    m_plugin->Initialize();
    m_plugin->Notify(*m_session, VexNotification::SessionOpened);
}

Workplace::Workplace(Workplace const& other, SourceOptions const& options,
                     std::unique_ptr<HostSession> session)
    : m_limits(limitsOf(options)), m_modelPath(modelPathOf(options)), m_session(std::move(session)),
      m_plugin(other.m_plugin) {
    m_plugin->Notify(*m_session, VexNotification::SessionOpened);
}

Workplace::~Workplace() {
    try {
        m_plugin->Notify(*m_session, VexNotification::SessionClosed);
    } catch (KRLException const& problem) {
        OutputDebugString(problem.what()); // the answers are out already
    }
}

ActionOutcome Workplace::Call(VexVariant const& action, VexParams const& in) {
    InterruptScope const interrupt;
    ActionLimits limits = m_limits;
    limits.cancelled = &interrupt.isInterrupted();
    return callAction(*m_plugin, *m_session, action, in, limits);
}

VexAccessExplanation Workplace::explain(Vex_Handle_Collection const& objects, bool skipViewLists) {
    InterruptScope const interrupt;
    ActionLimits limits = m_limits;
    limits.cancelled = &interrupt.isInterrupted();
    CallLimits const callLimits(deadlineOf(limits), limits.cancelled);
    VexAccessExplanation explanation;
    m_plugin->explainAccess(*m_session, m_modelPath, objects, skipViewLists, explanation);
    return explanation;
}

bool isHandled(ActionOutcome const& outcome) {
    return outcome.end == ActionOutcome::End::Returned && outcome.code == VexErrorCode::Handled;
}

int complainAbout(VexException const& raised, Console& console) {
    console.complain(std::string(raised.what()) + " (failure " + std::to_string(raised.GetId()) +
                     " of " + raised.GetFunction() + ')');
    return Refused;
}

int complainAbout(ActionOutcome const& outcome, Console& console) {
    if (outcome.raised) {
        return complainAbout(*outcome.raised, console);
    }
    if (outcome.end == ActionOutcome::End::Stopped) {
        console.complain(outcome.text);
    } else {
        console.complain("the plug-in does not know this action (code " +
                         std::to_string(outcome.code) + "); is --plugin the right library?");
    }
    return Refused;
}

} // namespace vex

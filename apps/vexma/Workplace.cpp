#include "apps/vexma/Workplace.h"

#include "apps/vexma/Interrupt.h"
#include "apps/vexma/Progress.h"
#include "apps/vexma/TracedPlugin.h"
#include "apps/vexma/UserCache.h"
#include "host/content/FileContent.h"
#include "host/content/MemoryContent.h"
#include "host/import/xml/FileText.h"

#include <cmath>
#include <filesystem>

namespace vex {

namespace {

std::shared_ptr<Catalogue const> readCatalogueOf(SourceOptions const& options) {
    std::shared_ptr<Catalogue const> const read = loadCatalogue(
        options.catalogFile, options.sizes.catalogue(), {.limit = options.sizes.policy()});
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

} // namespace

std::shared_ptr<ContentStore> contentOf(SourceOptions const& options, Console& console,
                                        LoadOptions load) {
    console.setVerbose(options.verbose);
    load.input = options.sizes.model();
    std::shared_ptr<ImageCache> const cache = options.noCache ? nullptr : openUserCache(console);
    if (!options.catalogFile.empty()) {
        return std::make_shared<FileContent>(readCatalogueOf(options), load,
                                             options.keepPolicyTrace, cache);
    }
    I18NString const path = modelPathOf(options);
    if (options.modelFile != "-") {
        return std::make_shared<FileContent>(path, options.modelFile, load, cache);
    }
    auto const content = std::make_shared<MemoryContent>();
    content->setModel(path, loadModelText(readFileText("-", load.input), "standard input", load));
    return content;
}

VisitRequest visitRequestOf(SourceOptions const& options) {
    return {modelPathOf(options), I18NString::fromUtf8(options.user),
            I18NLocale(I18NString::fromUtf8(options.locale))};
}

namespace {

/// Makes a call that the user may interrupt.
template <class Call> auto interruptible(ActionLimits limits, Call const& call) {
    InterruptScope const interrupt;
    limits.cancelled = &interrupt.isInterrupted();
    return call(limits);
}

} // namespace

Visit openVisit(SourceOptions const& options, Console& console) {
    Progress progress(console);
    LoadOptions load;
    load.progress = [&](std::size_t done, std::size_t total) { progress.report(done, total); };
    load.keepPositions = options.keepPositions;
    std::shared_ptr<ContentStore> const content = contentOf(options, console, load);
    VisitRequest request = visitRequestOf(options);
    std::shared_ptr<Catalogue const> const catalogue = content->getCatalogue();
    if (options.forAllUsers && request.user.empty() && catalogue != nullptr) {
        if (catalogue->users.empty()) {
            throw UsageException("the catalogue has no user");
        }
        request.user = catalogue->users.front().name; // whose turn comes first
    }
    return openVisit(*content, request);
}

std::optional<std::chrono::milliseconds> deadlineOf(std::optional<double> const& seconds) {
    constexpr double longest = 1e9; // a deadline of thirty years is none
    constexpr double millisecondsPerSecond = 1e3;
    if (!seconds || *seconds >= longest) {
        return std::nullopt;
    }
    return std::chrono::milliseconds(std::llround(*seconds * millisecondsPerSecond));
}

ActionLimits limitsOf(SourceOptions const& options) {
    ActionLimits limits;
    limits.response = options.response;
    limits.time = deadlineOf(options.deadlineSeconds);
    return limits;
}

Workplace::Workplace(SourceOptions const& options, Console& console)
    : m_limits(limitsOf(options)), m_visit(openVisit(options, console)),
      m_service(std::make_shared<Service>(loadPlugin(options, console))) {}

Workplace::Workplace(Workplace const& other, SourceOptions const& options, Console& console)
    : m_limits(limitsOf(options)), m_visit(openVisit(options, console)),
      m_service(other.m_service) {}

Workplace::Workplace(Workplace const& other, I18NLocale const& locale)
    : m_limits(other.m_limits), m_visit(other.m_visit), m_service(other.m_service) {
    m_visit.asked = locale;
    m_visit.locale = negotiateLocale(m_visit.model(), locale);
}

Workplace::Workplace(Workplace const& other, std::shared_ptr<CatalogueUser const> user)
    : m_limits(other.m_limits), m_visit(other.m_visit), m_service(other.m_service) {
    m_visit.user = std::move(user);
}

MetadataAnswer Workplace::metadata(MetadataRequest const& request) {
    return interruptible(m_limits, [&](ActionLimits const& limits) {
        return m_service->metadata(m_visit, request, limits);
    });
}

MetadataAnswer Workplace::metadata(KRLIDOM_Document const& request) {
    return interruptible(m_limits, [&](ActionLimits const& limits) {
        return m_service->metadata(m_visit, request, limits);
    });
}

MetadataAnswer Workplace::observedMetadata(KRLIDOM_Document const& request,
                                           VexTreeObserver& observer) {
    return interruptible(m_limits, [&](ActionLimits const& limits) {
        return m_service->observedMetadata(m_visit, request, observer, limits);
    });
}

MetadataAnswer Workplace::metadataAt(I18NString const& idOrReference,
                                     KRLIDOM_Document const& request) {
    return interruptible(m_limits, [&](ActionLimits const& limits) {
        return idOrReference.empty()
                   ? m_service->metadata(m_visit, request, limits)
                   : m_service->metadataAt(m_visit, idOrReference, request, limits);
    });
}

CallEnd Workplace::explainTreeAt(I18NString const& idOrReference, KRLIDOM_Document const& request,
                                 VexTreeObserver& observer) {
    return interruptible(m_limits, [&](ActionLimits const& limits) {
        return idOrReference.empty()
                   ? m_service->explainTree(m_visit, request, observer, limits)
                   : m_service->explainTreeAt(m_visit, idOrReference, request, observer, limits);
    });
}

AccessAnswer Workplace::access(Vex_Handle_Collection const& objects, long mode) {
    return interruptible(m_limits, [&](ActionLimits const& limits) {
        return m_service->access(m_visit, objects, mode, limits);
    });
}

AccessReasons Workplace::explain(Vex_Handle_Collection const& objects, bool skipViewLists) {
    return interruptible(m_limits, [&](ActionLimits const& limits) {
        return m_service->explainAccess(m_visit, objects, skipViewLists, limits);
    });
}

CallEnd Workplace::explainTree(KRLIDOM_Document const& request, VexTreeObserver& observer) {
    return interruptible(m_limits, [&](ActionLimits const& limits) {
        return m_service->explainTree(m_visit, request, observer, limits);
    });
}

CallEnd Workplace::together(std::function<void()> const& work) const {
    return workWithin(m_limits, work);
}

CallEnd workWithin(ActionLimits limits, std::function<void()> const& work) {
    return interruptible(limits, [&](ActionLimits const& interrupted) -> CallEnd {
        Budget const budget(budgetOf(interrupted));
        try {
            work();
            return {.kind = CallEnd::Kind::Answered};
        } catch (KRLLimitException const& stopped) {
            return {.text = stopped.what()};
        }
    });
}

int complainAbout(CallEnd const& end, Console& console) {
    std::string text = end.text;
    if (end.failure && console.isVerbose()) {
        text +=
            " (failure " + std::to_string(end.failure->id) + " of " + end.failure->function + ')';
    } else if (end.kind == CallEnd::Kind::NotHandled) {
        text += "; is --plugin the right library?";
    }
    console.complain(text);
    return end.kind == CallEnd::Kind::Unknown ? Unreadable : Refused;
}

} // namespace vex

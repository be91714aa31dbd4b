#pragma once

#include "host/content/ContentStore.h"
#include "host/service/HostSession.h"

#include <memory>

namespace vex {

/// Which model is asked about, by whom and in which language.
struct VisitRequest {
    I18NString modelPath;
    I18NString user;   // of the catalogue; not looked at where nobody is restricted
    I18NLocale locale; // nameless: the model's default
};

/// One caller before one version of a model, which stays loaded as long. A value
/// that is cheap to copy. Threads: any.
struct Visit {
    std::shared_ptr<ModelVersion const> version;
    std::shared_ptr<Catalogue const> catalogue; // null: nobody is restricted
    std::shared_ptr<CatalogueUser const> user;  // null where nobody is restricted
    I18NLocale asked;
    I18NLocale locale; // that is answered in

    Model const& model() const { return *version->model(); }
};

/// Raises `HostException` for an unknown user, and what `ContentStore::getModel`
/// raises.
Visit openVisit(ContentStore& content, VisitRequest const& request);

/// Which model paths a session may be asked about where somebody is restricted.
enum class SessionPaths {
    Own, // the visit's, with or without the prefix "path:"
    Any, // for trying a plug-in by hand: most paths lift every restriction
};

/// A session for whoever calls actions with values of their own. Without a catalogue
/// nobody is restricted, and any path will do.
std::unique_ptr<HostSession> openSession(Visit const& visit,
                                         SessionPaths paths = SessionPaths::Own);

} // namespace vex

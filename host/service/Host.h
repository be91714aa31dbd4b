#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/import/xml/ModelLoader.h"
#include "host/service/HostSession.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace vex {

/// What a session is opened with.
struct SessionRequest {
    I18NString modelPath;
    I18NString user;
    I18NLocale locale; // nameless: the model's default
};

/// Keeps the models of a catalogue loaded and opens sessions on them. Sessions
/// that open one model share it. Threads: any.
class Host {
public:
    explicit Host(std::shared_ptr<Catalogue const> catalogue, LoadOptions options = {});

    /// The newest version of a model, loaded when it is first asked for.
    /// Raises `HostException` for a path that the catalogue lacks, and what
    /// `loadModel` raises.
    std::shared_ptr<Model const> getModel(I18NString const& path);

    /// Reads a model's file again. Sessions keep the version that they opened
    /// until `HostSession::takeModel`; when reading fails everything stays as
    /// it was.
    std::shared_ptr<Model const> reloadModel(I18NString const& path);

    /// Raises `HostException` for an unknown user, and what `getModel` raises.
    std::unique_ptr<HostSession> openSession(SessionRequest const& request);

    /// A session on a model that stands in no catalogue: nobody is restricted.
    static std::unique_ptr<HostSession> openSession(std::shared_ptr<Model const> model,
                                                    I18NLocale locale);

private:
    CatalogueModel const& findEntry(I18NString const& path) const;
    std::shared_ptr<Model const> findLoaded(I18NString const& path);
    std::shared_ptr<Model const> load(CatalogueModel const& entry);

    std::shared_ptr<Catalogue const> m_catalogue;
    LoadOptions m_options;
    std::mutex m_loading; // one model is read at a time; loaded ones stay reachable meanwhile
    std::mutex m_mutex;   // guards m_models
    std::map<I18NString, std::shared_ptr<Model const>> m_models;
};

} // namespace vex

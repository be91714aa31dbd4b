#include "host/service/Host.h"

#include "host/store/image/HostException.h"

namespace vex {

namespace {

/// "unknown user "x"; the catalogue has "ann", "carl"".
template <class Entries, class Name>
std::string unknownText(char const* what, I18NString const& asked, Entries const& entries,
                        Name name) {
    constexpr std::size_t shown = 10;
    std::string text = std::string("unknown ") + what + " \"" + asked.toUtf8() + '"';
    if (entries.empty()) {
        return text + "; the catalogue has none";
    }
    text += "; the catalogue has ";
    for (std::size_t index = 0; index < entries.size() && index < shown; ++index) {
        text += (index == 0 ? "\"" : ", \"") + (entries[index].*name).toUtf8() + '"';
    }
    return entries.size() > shown ? text + ", ..." : text;
}

} // namespace

Host::Host(std::shared_ptr<Catalogue const> catalogue, LoadOptions options)
    : m_catalogue(std::move(catalogue)), m_options(std::move(options)) {}

std::shared_ptr<Model const> Host::getModel(I18NString const& path) {
    CatalogueModel const& entry = findEntry(path);
    if (auto model = findLoaded(path)) {
        return model;
    }
    std::lock_guard const loading(m_loading);
    auto model = findLoaded(path); // loaded by whoever held the lock
    return model ? model : load(entry);
}

std::shared_ptr<Model const> Host::reloadModel(I18NString const& path) {
    CatalogueModel const& entry = findEntry(path);
    std::lock_guard const loading(m_loading);
    return load(entry);
}

std::unique_ptr<HostSession> Host::openSession(SessionRequest const& request) {
    CatalogueUser const* const user = m_catalogue->findUser(request.user);
    if (user == nullptr) {
        throw HostException(
            unknownText("user", request.user, m_catalogue->users, &CatalogueUser::name));
    }
    return std::make_unique<HostSession>(getModel(request.modelPath), request.locale, m_catalogue,
                                         user);
}

std::unique_ptr<HostSession> Host::openSession(std::shared_ptr<Model const> model,
                                               I18NLocale locale) {
    return std::make_unique<HostSession>(std::move(model), locale, nullptr, nullptr);
}

CatalogueModel const& Host::findEntry(I18NString const& path) const {
    CatalogueModel const* const entry = m_catalogue->findModel(path);
    if (entry == nullptr) {
        throw HostException(
            unknownText("model path", path, m_catalogue->models, &CatalogueModel::path));
    }
    return *entry;
}

std::shared_ptr<Model const> Host::findLoaded(I18NString const& path) {
    std::lock_guard const lock(m_mutex);
    auto const at = m_models.find(path);
    return at == m_models.end() ? nullptr : at->second;
}

std::shared_ptr<Model const> Host::load(CatalogueModel const& entry) {
    std::shared_ptr<Model const> const model = loadModel(entry.file, m_options);
    std::shared_ptr<Model const> earlier = model; // let go of after the lock
    std::lock_guard const lock(m_mutex);
    m_models[entry.path].swap(earlier);
    return model;
}

} // namespace vex

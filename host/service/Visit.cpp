#include "host/service/Visit.h"

#include "host/content/UnknownName.h"

namespace vex {

namespace {

CatalogueUser const& findUser(Catalogue const& catalogue, I18NString const& name) {
    if (CatalogueUser const* const user = catalogue.findUser(name)) {
        return *user;
    }
    std::vector<I18NString> known;
    for (CatalogueUser const& user : catalogue.users) {
        known.push_back(user.name);
    }
    refuseUnknownName("user", name, known);
}

} // namespace

Visit openVisit(ContentStore& content, VisitRequest const& request) {
    Visit visit;
    visit.catalogue = content.getCatalogue();
    if (visit.catalogue != nullptr) {
        visit.user = {visit.catalogue, &findUser(*visit.catalogue, request.user)};
    }
    visit.version = content.getModel(request.modelPath);
    visit.asked = request.locale;
    visit.locale = negotiateLocale(visit.model(), request.locale);
    return visit;
}

std::unique_ptr<HostSession> openSession(Visit const& visit, SessionPaths paths) {
    auto session = std::make_unique<HostSession>(visit.version->model(), visit.asked,
                                                 visit.catalogue, visit.user.get());
    if (visit.catalogue != nullptr && paths == SessionPaths::Own) {
        session->confineTo(visit.version->path());
    }
    return session;
}

} // namespace vex

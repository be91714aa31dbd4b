#include "VexCatalogue.h"

#include "KRLException.h"
#include "host/catalogue/Catalogue.h"
#include "host/catalogue/PolicyViews.h"
#include "host/content/UnknownName.h"
#include "host/import/xml/ModelLoader.h"
#include "host/service/SessionSecurity.h"
#include "kit/src/VexModelState.h"

#include <optional>

struct VexCatalogue::State {
    std::shared_ptr<vex::Catalogue const> catalogue;
};

VexCatalogue::VexCatalogue(std::unique_ptr<State> state) : m_state(std::move(state)) {}

VexCatalogue::~VexCatalogue() = default;

std::shared_ptr<VexCatalogue const> VexCatalogue::readFile(std::string const& file) {
    auto state = std::make_unique<State>(State{vex::loadCatalogue(file)});
    return std::shared_ptr<VexCatalogue const>(new VexCatalogue(std::move(state)));
}

std::shared_ptr<VexCatalogue const>
VexCatalogue::readText(std::string_view xml, std::string const& name, std::string const& folder) {
    auto state = std::make_unique<State>(State{vex::loadCatalogueText(xml, name, folder)});
    return std::shared_ptr<VexCatalogue const>(new VexCatalogue(std::move(state)));
}

std::vector<I18NString> VexCatalogue::modelPaths() const {
    std::vector<I18NString> paths;
    for (vex::CatalogueModel const& model : m_state->catalogue->models) {
        paths.push_back(model.path);
    }
    return paths;
}

std::vector<I18NString> VexCatalogue::userNames() const {
    std::vector<I18NString> names;
    for (vex::CatalogueUser const& user : m_state->catalogue->users) {
        names.push_back(user.name);
    }
    return names;
}

std::string const& VexCatalogue::modelFile(I18NString const& modelPath) const {
    vex::CatalogueModel const* const model = m_state->catalogue->findModel(modelPath);
    if (model == nullptr) {
        vex::refuseUnknownName("model path", modelPath, modelPaths());
    }
    return model->file;
}

std::shared_ptr<VexModel const> VexCatalogue::readModel(I18NString const& modelPath) const {
    std::string const& file = modelFile(modelPath);
    vex::LoadOptions options;
    std::optional<vex::PolicyViews> views;
    if (auto const& policy = m_state->catalogue->findModel(modelPath)->policy) {
        options.addition = &views.emplace(*policy);
    }
    return std::shared_ptr<VexModel const>(
        new VexModel(std::make_unique<VexModel::State>(vex::loadModel(file, options))));
}

struct VexCatalogueSecurity::State {
    State(std::shared_ptr<vex::Catalogue const> catalogue, vex::CatalogueUser const* user)
        : security(std::move(catalogue), user) {}

    vex::SessionSecurity security;
};

VexCatalogueSecurity::VexCatalogueSecurity(std::shared_ptr<VexCatalogue const> catalogue,
                                           I18NString const& user) {
    if (catalogue == nullptr) {
        throw KRLException("there is no catalogue to find a user in; read one first");
    }
    std::shared_ptr<vex::Catalogue const> const& read = catalogue->m_state->catalogue;
    vex::CatalogueUser const* const known = read->findUser(user);
    if (known == nullptr) {
        vex::refuseUnknownName("user", user, catalogue->userNames());
    }
    m_state = std::make_unique<State>(read, known);
}

VexCatalogueSecurity::~VexCatalogueSecurity() = default;

VexSecurityInfoSource* VexCatalogueSecurity::GetSecurityInfoSource(I18NString const& modelPath) {
    return m_state->security.GetSecurityInfoSource(modelPath);
}

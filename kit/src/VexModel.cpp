#include "VexModel.h"

#include "host/import/xml/ModelLoader.h"
#include "kit/src/VexModelState.h"

VexModel::VexModel(std::unique_ptr<State> state) : m_state(std::move(state)) {}

VexModel::~VexModel() = default;

std::shared_ptr<VexModel const> VexModel::readFile(std::string const& file) {
    return std::shared_ptr<VexModel const>(
        new VexModel(std::make_unique<State>(vex::loadModel(file))));
}

std::shared_ptr<VexModel const> VexModel::readText(std::string_view xml, std::string const& name) {
    return std::shared_ptr<VexModel const>(
        new VexModel(std::make_unique<State>(vex::loadModelText(xml, name))));
}

VexObjectStore& VexModel::store() const {
    return m_state->open;
}

VEX_HANDLE VexModel::findById(I18NString const& id) const {
    return m_state->model().findById(id);
}

bool VexModel::getReference(VEX_HANDLE element, I18NString& reference) const {
    vex::Model const& model = m_state->model();
    return model.Holds(element) && model.getReference(element, reference);
}

I18NLocale const& VexModel::defaultLocale() const {
    return m_state->model().defaultLocale();
}

std::vector<I18NLocale> const& VexModel::locales() const {
    return m_state->model().locales();
}

std::size_t VexModel::elementCount() const {
    return m_state->model().elementCount();
}

std::size_t VexModel::byteCount() const {
    return m_state->model().byteCount();
}

#include "host/service/HostSession.h"

#include "host/service/ObjectByName.h"
#include "host/store/image/HostException.h"

#include <algorithm>

namespace vex {

I18NLocale negotiateLocale(Model const& model, I18NLocale asked) {
    std::vector<I18NLocale> const& supported = model.locales();
    I18NLocale const nameless;
    for (I18NLocale locale = asked; locale != nameless; locale = locale.getParent()) {
        if (std::find(supported.begin(), supported.end(), locale) != supported.end()) {
            return asked;
        }
    }
    return model.defaultLocale();
}

HostSession::HostSession(std::shared_ptr<Model const> model, I18NLocale asked,
                         std::shared_ptr<Catalogue const> catalogue, CatalogueUser const* user)
    : m_open(std::move(model)), m_asked(asked), m_locale(negotiateLocale(*getModel(), asked)),
      m_mayNameAll(catalogue == nullptr), m_security(std::move(catalogue), user) {}

HostSession::~HostSession() = default;

I18NLocale const* HostSession::GetLocale(I18NString const& name) const {
    return &m_locales.try_emplace(name, I18NLocale(name)).first->second;
}

void HostSession::takeModel(std::shared_ptr<Model const> model) {
    m_locale = negotiateLocale(*model, m_asked);
    m_open.setModel(std::move(model));
}

VEX_HANDLE HostSession::findObject(I18NString const& idOrReference) const {
    if (m_mayNameAll) {
        return vex::findObject(*getModel(), idOrReference);
    }
    VEX_HANDLE const object = lookUpObject(*getModel(), idOrReference);
    if (!object.IsNotNull()) {
        throw HostException(unknownObjectText(idOrReference, {}));
    }
    return object;
}

} // namespace vex

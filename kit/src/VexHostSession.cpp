#include "VexHostSession.h"

VexHostSession::VexHostSession(VexObjectStore& objects, I18NLocale const& locale,
                               VexModelService* service, VexCustomDataStore* customData)
    : m_objects(&objects), m_locale(locale), m_service(service),
      m_customData(customData != nullptr ? customData : &m_ownData) {}

VexHostSession::~VexHostSession() = default;

I18NLocale const* VexHostSession::GetLocale(I18NString const& name) const {
    return &m_locales.try_emplace(name, I18NLocale(name)).first->second;
}

void VexHostSession::takeObjects(VexObjectStore& objects, I18NLocale const& locale) {
    m_objects = &objects;
    m_locale = locale;
}

VexSessionEvent::~VexSessionEvent() = default;

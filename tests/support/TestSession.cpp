#include "tests/support/TestSession.h"

#include <utility>

TestSession::TestSession(TestModel& model) : m_model(model) {}

TestSession::~TestSession() = default;

void TestSession::setPackage(char const* value, std::map<I18NString, I18NString> properties) {
    m_packageValue = value;
    m_packageProperties = std::move(properties);
}

I18NLocale const* TestSession::GetCurrentLocale() const {
    calls().note(Call::GetCurrentLocale);
    return &m_locale;
}

I18NLocale const* TestSession::GetLocale(I18NString const& name) const {
    calls().note(Call::GetLocaleByName);
    return &m_namedLocales.try_emplace(name, name).first->second;
}

VexObjectStore& TestSession::GetObjectStore() const {
    calls().note(Call::GetObjectStore);
    return m_model;
}

VexModelService* TestSession::GetModelService() {
    calls().note(Call::GetModelService);
    return m_hasModelService ? this : nullptr;
}

VexCustomDataStore& TestSession::GetCustomDataStore() {
    calls().note(Call::GetCustomDataStore);
    return m_customData;
}

VexSecurityInfoSource* TestSession::GetSecurityInfoSource(I18NString const& modelPath) {
    calls().note(Call::GetSecurityInfoSource);
    m_askedPaths.push_back(modelPath);
    return m_hasSource ? this : nullptr;
}

void TestSession::GetAvailableViews(std::vector<I18NString>& views) {
    calls().note(Call::GetAvailableViews);
    views = m_views;
    m_filledViews = &views;
}

void TestSession::GetRoles(std::vector<I18NString>& roles) {
    calls().note(Call::GetRoles);
    roles = m_roles;
    if (m_withdrawsViews) {
        m_filledViews->clear();
    }
}

void TestSession::GetPackageValue(I18NString const& modelPath, I18NString& value,
                                  I18NLocale const& locale) {
    calls().note(Call::GetPackageValue);
    m_packageQuestions.push_back(modelPath + " " + locale.getName());
    value = m_packageValue;
}

I18NString TestSession::GetPackagePropertyValue(I18NString const& modelPath,
                                                I18NLocale const& locale, I18NString const& name) {
    calls().note(Call::GetPackagePropertyValue);
    m_packageQuestions.push_back(modelPath + " " + locale.getName() + " " + name);
    auto const found = m_packageProperties.find(name);
    return found != m_packageProperties.end() ? found->second : I18NString();
}

#pragma once

#include "VexObjectCustomData.h"
#include "VexSession.h"
#include "tests/support/TestModel.h"

#include <map>
#include <vector>

/// A session on a `TestModel`, with the security information of its user. Its
/// calls are counted, and fail, through the model's counter.
class TestSession final : public VexSession, public VexModelService, public VexSecurityInfoSource {
public:
    /// The locale is "en"; no views, no roles, no package.
    explicit TestSession(TestModel& model);
    ~TestSession() override;

    void setLocale(char const* name) { m_locale = I18NLocale(name); }
    void setViews(std::vector<I18NString> views) { m_views = std::move(views); }
    void setRoles(std::vector<I18NString> roles) { m_roles = std::move(roles); }
    void setPackage(char const* value, std::map<I18NString, I18NString> properties = {});
    /// The session has no model service from now on.
    void dropModelService() { m_hasModelService = false; }
    /// The model service knows no path, or every path again.
    void dropSource() { m_hasSource = false; }
    void restoreSource() { m_hasSource = true; }

    /// The list of views that the source filled last is emptied when the roles
    /// are asked for.
    void withdrawViewsWithRoles() { m_withdrawsViews = true; }

    CallCounter& calls() const { return m_model.calls(); }
    VexCustomDataStore& customData() { return m_customData; }
    /// The model paths that a source was asked for, in order.
    std::vector<I18NString> const& askedPaths() const { return m_askedPaths; }
    /// What the package was asked for, each as "path locale" or
    /// "path locale property", in order.
    std::vector<I18NString> const& packageQuestions() const { return m_packageQuestions; }

    I18NLocale const* GetCurrentLocale() const override;
    I18NLocale const* GetLocale(I18NString const& name) const override;
    VexObjectStore& GetObjectStore() const override;
    VexModelService* GetModelService() override;
    VexCustomDataStore& GetCustomDataStore() override;

    VexSecurityInfoSource* GetSecurityInfoSource(I18NString const& modelPath) override;

    void GetAvailableViews(std::vector<I18NString>& views) override;
    void GetRoles(std::vector<I18NString>& roles) override;
    void GetPackageValue(I18NString const& modelPath, I18NString& value,
                         I18NLocale const& locale) override;
    I18NString GetPackagePropertyValue(I18NString const& modelPath, I18NLocale const& locale,
                                       I18NString const& name) override;

private:
    TestModel& m_model;
    I18NLocale m_locale{"en"};
    mutable std::map<I18NString, I18NLocale> m_namedLocales;
    std::vector<I18NString> m_views;
    std::vector<I18NString> m_roles;
    I18NString m_packageValue;
    std::map<I18NString, I18NString> m_packageProperties;
    bool m_hasModelService = true;
    bool m_hasSource = true;
    bool m_withdrawsViews = false;
    std::vector<I18NString>* m_filledViews = nullptr;
    VexSessionCustomData m_customData;
    std::vector<I18NString> m_askedPaths;
    std::vector<I18NString> m_packageQuestions;
};

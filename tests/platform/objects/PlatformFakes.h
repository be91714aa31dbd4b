#pragma once

#include "VexObjectCustomData.h"
#include "VexObjectModel.h"
#include "VexSession.h"

#include <stdexcept>

/// A session with nothing but custom data.
class FakeSession final : public VexSession {
public:
    FakeSession() : m_store(m_ownStore) {}
    /// With a place of the host's for the data.
    explicit FakeSession(VexCustomDataStore& store) : m_store(store) {}

    I18NLocale const* GetCurrentLocale() const override { return &m_locale; }
    I18NLocale const* GetLocale(I18NString const&) const override { return &m_locale; }
    VexObjectStore& GetObjectStore() const override { throw std::logic_error("no object store"); }
    VexModelService* GetModelService() override { return nullptr; }
    VexCustomDataStore& GetCustomDataStore() override { return m_store; }

private:
    I18NLocale m_locale;
    VexSessionCustomData m_ownStore;
    VexCustomDataStore& m_store;
};

/// A model of any number of handles, up to all there are, and without memory for
/// what they name: all objects are alike, with the id and name "x" and no relations
/// but to the first one.
class FakeModel : public VexObjectModel {
public:
    explicit FakeModel(std::uint32_t count) { TakeHandles(count); }

    VEX_HANDLE At(std::uint32_t index) const { return VEX_HANDLE(FirstHandle() + index); }
    std::uint32_t First() const { return FirstHandle(); }

    bool IsObject(VEX_HANDLE object) const override {
        return object.Number() - FirstHandle() < HandleCount();
    }
    bool GetId(VEX_HANDLE, I18NString& text) const override { return fill(text); }
    bool GetName(VEX_HANDLE, I18NString& text) const override { return fill(text); }
    bool GetClass(VEX_HANDLE, I18NString& text) const override { return fill(text); }
    bool GetRole(VEX_HANDLE, I18NString& text) const override { return fill(text); }
    bool GetValue(VEX_HANDLE, I18NString& text, bool) const override { return fill(text); }
    I18NLocale const* GetLocale(VEX_HANDLE) const override { return &m_locale; }
    VEX_HANDLE GetParent(VEX_HANDLE) const override { return At(0); }
    VEX_HANDLE GetPropertyByName(VEX_HANDLE, I18NString const&, I18NLocale const*) const override {
        return At(0);
    }
    VEX_HANDLE GetPropertyByRole(VEX_HANDLE, I18NString const&, I18NLocale const*) const override {
        return At(0);
    }
    bool Properties(VEX_HANDLE, Vex_Handle_Collection& found, I18NString const*,
                    I18NString const*) const override {
        return fill(found);
    }
    bool childObjects(VEX_HANDLE, Vex_Handle_Collection& found, I18NString const*,
                      I18NString const*) const override {
        return fill(found);
    }
    bool getElementsByTagName(VEX_HANDLE, I18NString const&,
                              Vex_Handle_Collection& found) const override {
        return fill(found);
    }
    bool hasChildObjects(VEX_HANDLE) const override { return true; }
    bool hasProperties(VEX_HANDLE) const override { return true; }

private:
    static bool fill(I18NString& text) {
        text = "x";
        return true;
    }
    bool fill(Vex_Handle_Collection& found) const {
        found.push_back(At(0));
        return true;
    }
    I18NLocale m_locale;
};

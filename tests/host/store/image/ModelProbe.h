#pragma once

#include "VexObject.h"
#include "host/import/xml/ModelLoader.h"

#include <string>
#include <vector>

/// Shorthands for tests that look at one model.
class ModelProbe {
public:
    explicit ModelProbe(std::string const& text)
        : m_model(vex::loadModelText(text, "test.model.xml")) {}

    vex::Model const& model() const { return *m_model; }
    VEX_HANDLE root() const { return m_model->GetRootObject(); }
    VEX_HANDLE id(char const* id) const { return m_model->findById(id); }
    VEX_HANDLE reference(char const* reference) const {
        return m_model->GetObjectByReference(reference, 0);
    }

    static VEX_HANDLE property(VEX_HANDLE object, char const* name, char const* locale = nullptr) {
        if (locale == nullptr) {
            return VexObject(object).GetPropertyByName(name, nullptr);
        }
        I18NLocale const wanted{I18NString(locale)};
        return VexObject(object).GetPropertyByName(name, &wanted);
    }
    /// The property's value; "(none)" without a property, "(empty)" without a value.
    static std::string value(VEX_HANDLE object, char const* name, char const* locale = nullptr) {
        VEX_HANDLE const found = property(object, name, locale);
        return found.IsNotNull() ? text(found) : "(none)";
    }
    static std::string text(VEX_HANDLE object) {
        I18NString value;
        return VexObject(object).GetValue(value, true) ? value.toUtf8() : "(empty)";
    }
    static std::string name(VEX_HANDLE object) {
        I18NString name;
        return VexObject(object).GetName(name) ? name.toUtf8() : "(none)";
    }
    static std::string idOf(VEX_HANDLE object) {
        I18NString id;
        return VexObject(object).GetId(id) ? id.toUtf8() : "(none)";
    }

    static Vex_Handle_Collection properties(VEX_HANDLE object) {
        Vex_Handle_Collection found;
        VexObject(object).Properties(found, nullptr, nullptr, false);
        return found;
    }
    static Vex_Handle_Collection children(VEX_HANDLE object) {
        Vex_Handle_Collection found;
        VexObject(object).childObjects(found, nullptr, nullptr);
        return found;
    }
    static Vex_Handle_Collection below(VEX_HANDLE object, char const* tag) {
        Vex_Handle_Collection found;
        VexObject(object).getElementsByTagName(tag, found);
        return found;
    }
    static std::vector<std::string> names(Vex_Handle_Collection const& objects) {
        std::vector<std::string> names;
        for (VEX_HANDLE const object : objects) {
            names.push_back(name(object));
        }
        return names;
    }
    static std::vector<std::string> ids(Vex_Handle_Collection const& objects) {
        std::vector<std::string> ids;
        for (VEX_HANDLE const object : objects) {
            ids.push_back(idOf(object));
        }
        return ids;
    }
    static std::vector<std::string> values(Vex_Handle_Collection const& objects) {
        std::vector<std::string> values;
        for (VEX_HANDLE const object : objects) {
            values.push_back(text(object));
        }
        return values;
    }

private:
    std::shared_ptr<vex::Model const> m_model;
};

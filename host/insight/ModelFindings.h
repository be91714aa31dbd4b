#pragma once

#include "host/insight/DiagnosticRules.h"
#include "host/store/image/Model.h"

namespace vex {

/// What the checks of a model have found so far, and what they say alike.
class ModelFindings {
public:
    ModelFindings(Model const& model, std::string const& file, Diagnostics& found)
        : m_model(model), m_file(file), m_found(found) {}

    Model const& getModel() const { return m_model; }

    void add(RuleName rule, VEX_HANDLE element, std::string text);

    /// The elements of a class in the model, or below an element.
    Vex_Handle_Collection elementsOf(I18NString const& tag) const;
    static Vex_Handle_Collection elementsBelow(VEX_HANDLE element, I18NString const& tag);

    /// A property's value as a locale finds it; null finds the unlocalised or
    /// default one. "" when there is none.
    static I18NString valueOf(VEX_HANDLE element, I18NString const& property,
                              I18NLocale const* locale);

    /// The element's name in the model's default locale, in quotes.
    std::string nameOf(VEX_HANDLE element) const;
    /// Its reference, else its id, else its class.
    std::string describe(VEX_HANDLE element) const;

private:
    Model const& m_model;
    std::string const& m_file;
    Diagnostics& m_found;
};

std::string inQuotes(I18NString const& text);

/// The steps of `checkModel`.
void checkShortcuts(ModelFindings& findings);
void checkNames(ModelFindings& findings);
void checkTranslations(ModelFindings& findings);
void checkViews(ModelFindings& findings);
void checkWords(ModelFindings& findings);
void checkIdentities(ModelFindings& findings);
void checkExpressions(ModelFindings& findings);

} // namespace vex

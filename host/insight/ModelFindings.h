#pragma once

#include "host/catalogue/Policy.h"
#include "host/insight/DiagnosticRules.h"
#include "host/store/build/FindingLimit.h"
#include "host/store/image/Model.h"

namespace vex {

/// What the checks of a model have found so far, and what they say alike.
class ModelFindings {
public:
    /// The limit is that of the file. Views of the policy, if there is one, stand there.
    ModelFindings(Model const& model, std::string const& file, Diagnostics& found,
                  FindingLimit& limit, Policy const* policy = nullptr)
        : m_model(model), m_file(file), m_found(found), m_limit(limit), m_policy(policy) {}

    Model const& getModel() const { return m_model; }

    /// `tell` makes the text of one that is kept.
    template <class Tell> void add(RuleName rule, VEX_HANDLE element, Tell const& tell) {
        if (m_limit.admits((*rule).name)) {
            addKept(rule, element, tell());
        }
    }

    /// The elements of a class in the model, or below an element.
    Vex_Handle_Collection elementsOf(I18NString const& tag) const;
    static Vex_Handle_Collection elementsBelow(VEX_HANDLE element, I18NString const& tag);

    /// A property's value as a locale finds it; null finds the unlocalised or
    /// default one. "" when there is none.
    static I18NString valueOf(VEX_HANDLE element, I18NString const& property,
                              I18NLocale const* locale);

    /// The element's name in the model's default locale, in quotes; not all of a long one.
    std::string nameOf(VEX_HANDLE element) const;
    /// Its reference, else its id, else its class; not all of what is long.
    std::string describe(VEX_HANDLE element) const;

private:
    void addKept(RuleName rule, VEX_HANDLE element, std::string text);
    PolicyView const* findPolicyView(VEX_HANDLE element) const;

    Model const& m_model;
    std::string const& m_file;
    Diagnostics& m_found;
    FindingLimit& m_limit;
    Policy const* m_policy;
};

/// Not all of a long text.
std::string inQuotes(I18NString const& text);

/// @{
/// A list as long as people read: "de, ja", "de, ja, ... and 70 more". `count` is that of all
/// that was added.
void addToShortList(std::string& list, std::size_t& count, std::string const& entry);
void endShortList(std::string& list, std::size_t count);
/// @}

/// The steps of `checkModel`.
void checkShortcuts(ModelFindings& findings);
void checkNames(ModelFindings& findings);
void checkTranslations(ModelFindings& findings);
void checkViews(ModelFindings& findings);
void checkWords(ModelFindings& findings);
void checkIdentities(ModelFindings& findings);
void checkExpressions(ModelFindings& findings);

} // namespace vex

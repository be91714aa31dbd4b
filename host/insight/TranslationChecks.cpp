#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "resources.h"

namespace vex {

namespace {

/// The supported locales that find no text for a property, as "de, ja"; "" when
/// none does.
std::string localesWithout(Model const& model, VEX_HANDLE element, I18NString const& property) {
    std::string missing;
    std::size_t count = 0;
    for (I18NLocale const locale : model.locales()) {
        if (ModelFindings::valueOf(element, property, &locale).empty()) {
            addToShortList(missing, count, locale.getName().toUtf8());
        }
    }
    endShortList(missing, count);
    return missing;
}

void checkElement(ModelFindings& findings, VEX_HANDLE element) {
    Vex_Handle_Collection properties;
    VexObject(element).Properties(properties, nullptr, nullptr, false);
    for (VEX_HANDLE const property : properties) {
        if (VexObject(property).GetLocale() == nullptr) {
            continue; // one value for all languages, or none
        }
        I18NString name;
        VexObject(property).GetName(name);
        std::string const missing = localesWithout(findings.getModel(), element, name);
        if (missing.empty()) {
            continue;
        }
        if (name == resources::getString(resources::Name)) {
            findings.add("untranslated-name", element,
                         [&] { return findings.nameOf(element) + " has no name in " + missing; });
        } else {
            findings.add("untranslated-property", element, [&] {
                return "the property " + inQuotes(name) + " of " + findings.nameOf(element) +
                       " has no value in " + missing;
            });
        }
    }
}

} // namespace

void checkTranslations(ModelFindings& findings) {
    Model const& model = findings.getModel();
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        checkElement(findings, model.getElement(index));
    }
}

} // namespace vex

// What a request asks of the model as a whole: locales and separators.

#include "I18NNumericFormat.h"
#include "VexSession.h"
#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"
#include "provider/VexMDMaProvider.h"
#include "provider/request/VexMDMaProviderHelper.h"

namespace {

// What the entries are answered from.
struct GlobalFacts {
    KRLIDOM_Document const& document;
    I18NNumericFormat const& format;
    I18NLocale const& locale;
    I18NString const& defaultLocale;
    Vex_I18NString_Collection const& supportedLocales;
};

using Filler = void (*)(GlobalFacts const& facts, KRLIDOM_Element const& element);

I18NString decimalSeparator(GlobalFacts const& facts) {
    I18NString separator;
    facts.format.getDecimalSeparator(separator);
    return separator;
}

void fillDecimalSeparator(GlobalFacts const& facts, KRLIDOM_Element const& element) {
    element.setAttribute("value", decimalSeparator(facts));
}

void fillListSeparator(GlobalFacts const& facts, KRLIDOM_Element const& element) {
    element.setAttribute("value", decimalSeparator(facts) == "." ? "comma" : "semiColon");
}

void fillDefaultLocale(GlobalFacts const& facts, KRLIDOM_Element const& element) {
    element.appendChild(facts.document.createTextNode(facts.defaultLocale));
}

void fillSupportedLocales(GlobalFacts const& facts, KRLIDOM_Element const& element) {
    for (std::size_t index = 0; index < facts.supportedLocales.Size(); ++index) {
        KRLIDOM_Element const locale = facts.document.createElement("locale");
        locale.appendChild(facts.document.createTextNode(facts.supportedLocales[index]));
        element.appendChild(locale);
    }
}

void fillEffectiveLocale(GlobalFacts const& facts, KRLIDOM_Element const& element) {
    element.appendChild(facts.document.createTextNode(facts.locale.getName()));
}

struct GlobalEntry {
    char const* request;
    char const* element;
    Filler fill; // null: the request is known and writes nothing
};

constexpr GlobalEntry globalEntries[] = {
    {"/@decimal_separator", "decimalSeparator", fillDecimalSeparator},
    {"/@decimalSeparator", "decimalSeparator", fillDecimalSeparator},
    {"/@list_separator", "listSeparator", fillListSeparator},
    {"/@listSeparator", "listSeparator", fillListSeparator},
    // quirk: model-path-not-told
    {"/@modelSearchPath", nullptr, nullptr}, // answered with nothing on purpose
    {"/@defaultLocale", "defaultLocale", fillDefaultLocale},
    {"/@supportedLocales", "locales", fillSupportedLocales},
    {"/@effectiveLocale", "effectiveLocale", fillEffectiveLocale},
};

GlobalEntry const* findEntry(I18NString const& request) {
    if (request.empty() || request[0] != u'/') {
        return nullptr;
    }
    for (GlobalEntry const& entry : globalEntries) {
        if (request == entry.request) {
            return &entry;
        }
    }
    return nullptr;
}

} // namespace

void VexMDMaProvider::getModelLocales() {
    VEX_HANDLE const root = m_session->GetObjectStore().GetRootObject();
    I18NString defaultLocaleName("defaultLocale");
    VEX_HANDLE const property =
        VexMDMaProviderUtility::GetPropertyByName(root, defaultLocaleName, nullptr);
    if (property.IsNotNull()) {
        I18NString value = m_defaultLocale;
        VexMDMaProviderUtility::GetValue(property, value, true);
        m_defaultLocale = value; // a copy: the provider outlives the call
    } else {
        m_defaultLocale = "en_US";
    }

    Vex_Handle_Collection properties;
    VexMDMaProviderUtility::Properties(root, properties, nullptr, nullptr, false);
    for (VEX_HANDLE const candidate : properties) {
        I18NString name;
        VexMDMaProviderUtility::GetName(candidate, name);
        if (name != "locales") {
            continue;
        }
        Vex_Handle_Collection entries;
        VexMDMaProviderUtility::Properties(candidate, entries, nullptr, nullptr, false);
        for (VEX_HANDLE const entry : entries) {
            I18NString locale;
            VexMDMaProviderUtility::GetValue(entry, locale, true);
            m_supportedLocales.Add(locale);
        }
        return; // a second "locales" is not looked at
    }
}

void VexMDMaProvider::ProcessGlobal(VexMDMaProviderHelper const& helper, I18NLocale const* locale,
                                    KRLIDOM_Element& response) {
    I18NNumericFormat const format(*locale, I18NNumericFormatDecimal, nullptr, nullptr);
    GlobalFacts const facts{m_document, format, *locale, m_defaultLocale, m_supportedLocales};
    for (I18NString const& request : helper.GetAttributeRequests()) {
        GlobalEntry const* const entry = findEntry(request);
        if (entry == nullptr || entry->fill == nullptr) {
            continue;
        }
        KRLIDOM_Element const element = m_document.createElement(entry->element);
        entry->fill(facts, element);
        response.appendChild(element);
    }
}

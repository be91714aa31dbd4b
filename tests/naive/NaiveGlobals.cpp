#include "tests/naive/NaiveProvider.h"

#include <algorithm>

#include <unicode/dcfmtsym.h>

namespace naive {

namespace {

const Text noLocale;

Text decimalSeparator(const Text& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(icu::Locale(toUtf8(locale).c_str()), status);
    const icu::UnicodeString separator =
        symbols.getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
    return Text(separator.getBuffer(), static_cast<std::size_t>(separator.length()));
}

} // namespace

void NaiveProvider::getModelLocales() {
    const Handle root = m_model.root();
    if (const Handle property = m_model.propertyByName(root, u"defaultLocale", noLocale)) {
        m_model.getValue(property, m_defaultLocale);
    } else {
        m_defaultLocale = u"en_US";
    }
    for (Handle property : m_model.properties(root)) {
        if (classOf(property) != u"locales") {
            continue;
        }
        for (Handle entry : m_model.properties(property)) {
            Text locale;
            m_model.getValue(entry, locale);
            // The host's list drops a value that it holds already.
            if (std::find(m_supportedLocales.begin(), m_supportedLocales.end(), locale) ==
                m_supportedLocales.end()) {
                m_supportedLocales.push_back(locale);
            }
        }
        return;
    }
}

void NaiveProvider::writeGlobals(const NaiveRequest& request, ResponseDocument& document) const {
    const Text decimal = decimalSeparator(m_host.locale);
    for (const Text& entry : request.attributeRequests()) {
        std::unique_ptr<ResponseElement> element;
        if (entry == u"/@decimal_separator" || entry == u"/@decimalSeparator") {
            element = document.createElement(u"decimalSeparator");
            element->attributes[u"value"] = decimal;
        } else if (entry == u"/@list_separator" || entry == u"/@listSeparator") {
            element = document.createElement(u"listSeparator");
            element->attributes[u"value"] = decimal == u"." ? u"comma" : u"semiColon";
        } else if (entry == u"/@defaultLocale") {
            element = document.createElement(u"defaultLocale");
            element->text = m_defaultLocale;
        } else if (entry == u"/@supportedLocales") {
            element = document.createElement(u"locales");
            for (const Text& locale : m_supportedLocales) {
                std::unique_ptr<ResponseElement> child = document.createElement(u"locale");
                child->text = locale;
                element->children.push_back(std::move(child));
            }
        } else if (entry == u"/@effectiveLocale") {
            element = document.createElement(u"effectiveLocale");
            element->text = m_host.locale;
        } else {
            continue;
        }
        document.response().children.push_back(std::move(element));
    }
}

} // namespace naive

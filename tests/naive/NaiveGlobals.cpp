#include "tests/naive/NaiveProvider.h"

#include <algorithm>

#include <unicode/dcfmtsym.h>

namespace naive {

namespace {

Text const noLocale;

Text decimalSeparator(Text const& locale) {
    UErrorCode status = U_ZERO_ERROR;
    icu::DecimalFormatSymbols const symbols(icu::Locale(toUtf8(locale).c_str()), status);
    icu::UnicodeString const separator =
        symbols.getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
    return Text(separator.getBuffer(), static_cast<std::size_t>(separator.length()));
}

} // namespace

void NaiveProvider::getModelLocales() {
    Handle const root = m_model.root();
    if (Handle const property = m_model.propertyByName(root, u"defaultLocale", noLocale)) {
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

void NaiveProvider::writeGlobals(NaiveRequest const& request, ResponseDocument& document) const {
    Text const decimal = decimalSeparator(m_host.locale);
    for (Text const& entry : request.attributeRequests()) {
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
            for (Text const& locale : m_supportedLocales) {
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

// The names, locales and texts that a writer takes or refuses.

#include "KRLIDOM_Helper.h"
#include "host/store/build/ModelWriter.h"
#include "host/store/build/StoreBuilder.h"
#include "host/store/build/WritableText.h"
#include "host/store/image/SameText.h"

#include <string>

namespace vex {

ModelWriter::Name ModelWriter::name(std::u16string_view text) {
    if (isSameText(text, u"name")) { // by far the most are this one
        return m_name;
    }
    if (text.empty()) {
        return {};
    }
    return isHeldByDocument(text) ? Name(m_store->addName(text)) : m_name;
}

ModelWriter::Name ModelWriter::countedName(std::u16string_view text) {
    if (text.empty()) {
        return {};
    }
    Name const name(m_store->addName(text));
    KnownName& known = this->known(name.m_number);
    if (!known.isCounted) {
        if (!isHeldByDocument(text)) {
            return m_name;
        }
        known.isCounted = true;
        countName(text);
    }
    return name;
}

// Apart from what is asked for every name.
void ModelWriter::countName(std::u16string_view text) {
    ++m_countedNames;
    if (text.size() > m_limits.nameLength) {
        m_report.stop("name-too-long", "the name " + inQuotes(text) + " has more than " +
                                           std::to_string(m_limits.nameLength) +
                                           " characters; shorten it");
    }
    if (m_countedNames > m_limits.distinctNames) {
        SourceTerms const terms = m_report.source().terms();
        m_report.stop("too-many-names", "the " + std::string(terms.source) + " has more than " +
                                            std::to_string(m_limits.distinctNames) +
                                            " different names of " +
                                            std::string(terms.countedNames) + "; " +
                                            std::string(terms.onTooManyNames));
    }
}

bool ModelWriter::isHeldByDocument(std::u16string_view text) {
    std::size_t const at = findUnwritable(text);
    if (at == text.npos) {
        return true;
    }
    m_report.report("unwritable-text", describeUnwritable(text[at]));
    return false;
}

// A class becomes the name of an element.
void ModelWriter::checkClass(Name cls) {
    if (cls.isEmpty()) {
        m_report.report("unwritable-text", "an object has no class; give it one");
        return;
    }
    KnownName& known = this->known(cls.m_number);
    if (known.isCheckedClass) {
        return;
    }
    known.isCheckedClass = true;
    std::u16string_view const text = m_store->nameText(cls.m_number);
    if (cls == m_property || cls == m_localesName || !KRLIDOM_Helper::isName(I18NString(text))) {
        m_report.report("unwritable-text", inQuotes(text) + " cannot be a class; name it like an "
                                                            "element of XML, other than "
                                                            "\"property\" and \"locales\"");
    }
}

I18NLocale ModelWriter::locale(std::u16string_view name) {
    if (!isHeldByDocument(name)) {
        return {};
    }
    KnownName& known = this->known(m_store->addName(name));
    if (!known.isLocale) {
        I18NString const text(name);
        if (!I18NLocale::isKnown(text)) {
            m_report.report("unknown-locale",
                            "the locale " + inQuotes(name) +
                                " is unknown; write a language and, if need be, a region, "
                                "such as \"de\" or \"de_AT\"");
            return {};
        }
        known.isLocale = true;
        known.locale = I18NLocale(text);
        m_usedLocales.add(known.locale);
    }
    return known.locale;
}

} // namespace vex

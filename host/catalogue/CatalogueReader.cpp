#include "host/catalogue/CatalogueReader.h"

#include "I18NStringIterator.h"
#include "KRLException.h"
#include "host/store/build/WritableText.h"
#include "host/store/image/ShortText.h"

#include <algorithm>
#include <filesystem>

#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>

namespace vex {

struct CatalogueReader::Attribute {
    char16_t const* name;
    bool required;
};

/// An element of the grammar: where it may stand, its attributes, and whether
/// it holds text.
struct CatalogueReader::Rule {
    char16_t const* tag;
    Place parent;
    Place place;
    bool holdsText;
    Attribute attributes[3]; // unused ones have no name
};

CatalogueReader::Rule const CatalogueReader::Rules[] = {
    {u"catalog", Place::Document, Place::Catalogue, false, {}},
    {u"model",
     Place::Catalogue,
     Place::Model,
     false,
     {{u"path", true}, {u"file", true}, {u"policy", false}}},
    {u"package", Place::Model, Place::Package, false, {{u"value", false}}},
    {u"property", Place::Package, Place::Property, true, {{u"name", true}, {u"locale", false}}},
    {u"grant", Place::Model, Place::Grant, false, {{u"role", true}, {u"view", true}}},
    {u"user", Place::Catalogue, Place::User, false, {{u"name", true}}},
    {u"role", Place::User, Place::Role, true, {}},
};

namespace {

I18NString valueOf(xercesc::Attributes const& attributes, char16_t const* name) {
    XMLCh const* const value = attributes.getValue(name);
    return value == nullptr ? I18NString() : I18NString(std::u16string_view(value));
}

I18NString trimmed(I18NString const& text) {
    int start = 0;
    int end = text.length();
    while (start < end && I18NCodePointIsWhitespace(text[start])) {
        ++start;
    }
    while (end > start && I18NCodePointIsWhitespace(text[end - 1])) {
        --end;
    }
    return text.substring(start, end - start);
}

std::string quotedUnits(char16_t const* text) {
    return quotedShort(I18NString(std::u16string_view(text)));
}

} // namespace

CatalogueReader::CatalogueReader(Catalogue& catalogue, std::string name, std::string folder,
                                 Diagnostics& found)
    : m_catalogue(catalogue), m_name(std::move(name)), m_folder(std::move(folder)), m_found(found) {
}

void CatalogueReader::startDTD(XMLCh const* /*name*/, XMLCh const* /*publicId*/,
                               XMLCh const* /*systemId*/) {
    refuse("document-type", "a document type is not allowed; remove the DOCTYPE");
}

void CatalogueReader::startElement(XMLCh const* /*uri*/, XMLCh const* /*localName*/,
                                   XMLCh const* tag, xercesc::Attributes const& attributes) {
    if (m_skipped > 0) {
        ++m_skipped;
        return;
    }
    Rule const* const rule = findRule(tag);
    if (rule == nullptr) {
        report("catalogue-element",
               m_open.empty()
                   ? "the root element is " + quotedUnits(tag) + "; a catalogue's is \"catalog\""
                   : quotedUnits(tag) + " has no place in " + quotedUnits(m_open.back()->tag));
        ++m_skipped;
        return;
    }
    checkAttributes(*rule, attributes);
    m_open.push_back(rule);
    m_text.clear();
    enter(*rule, attributes);
}

CatalogueReader::Rule const* CatalogueReader::findRule(std::u16string_view tag) const {
    Place const parent = m_open.empty() ? Place::Document : m_open.back()->place;
    auto const at = std::find_if(std::begin(Rules), std::end(Rules), [&](Rule const& rule) {
        return rule.parent == parent && rule.tag == tag;
    });
    return at == std::end(Rules) ? nullptr : at;
}

void CatalogueReader::checkAttributes(Rule const& rule, xercesc::Attributes const& attributes) {
    for (Attribute const& attribute : rule.attributes) {
        if (attribute.name != nullptr && attribute.required &&
            valueOf(attributes, attribute.name).empty()) {
            report("catalogue-attribute",
                   quotedUnits(rule.tag) + " needs the attribute " + quotedUnits(attribute.name));
        }
    }
    for (XMLSize_t index = 0; index < attributes.getLength(); ++index) {
        std::u16string_view const name = attributes.getQName(index);
        bool const known = std::any_of(
            std::begin(rule.attributes), std::end(rule.attributes),
            [&](Attribute const& each) { return each.name != nullptr && name == each.name; });
        if (!known) {
            report("catalogue-attribute",
                   quotedUnits(rule.tag) + " has no attribute " + quotedShort(I18NString(name)));
        }
        checkWritable(attributes.getValue(index));
    }
}

// Names of users and roles and what is said of packages reach answers.
void CatalogueReader::checkWritable(std::u16string_view text) {
    if (std::size_t const at = findUnwritable(text); at != text.npos) {
        report("unwritable-text", describeUnwritable(text[at]));
    }
}

void CatalogueReader::enter(Rule const& rule, xercesc::Attributes const& attributes) {
    switch (rule.place) {
    case Place::Model:
        return enterModel(attributes);
    case Place::Package:
        return enterPackage(attributes);
    case Place::Property:
        return enterProperty(attributes);
    case Place::Grant:
        return enterGrant(attributes);
    case Place::User:
        return enterUser(attributes);
    case Place::Document:
    case Place::Catalogue:
    case Place::Role:
        return;
    }
}

void CatalogueReader::enterGrant(xercesc::Attributes const& attributes) {
    DocumentPosition const at = positionOf(*m_locator);
    m_catalogue.models.back().grants.push_back(
        {valueOf(attributes, u"role"), valueOf(attributes, u"view"), at.line, at.column});
}

void CatalogueReader::enterModel(xercesc::Attributes const& attributes) {
    DocumentPosition const at = positionOf(*m_locator);
    CatalogueModel model;
    model.path = valueOf(attributes, u"path");
    model.file = (std::filesystem::path(m_folder) / valueOf(attributes, u"file").toUtf8()).string();
    if (I18NString const policy = valueOf(attributes, u"policy"); !policy.empty()) {
        model.policyFile = (std::filesystem::path(m_folder) / policy.toUtf8()).string();
    }
    model.line = at.line;
    model.column = at.column;
    if (!m_modelPaths.insert(model.path).second) {
        report("catalogue-model-twice", "the model path " + quotedShort(model.path) +
                                            " stands here for "
                                            "the second time; a path names one model");
    }
    m_catalogue.models.push_back(std::move(model));
}

void CatalogueReader::enterPackage(xercesc::Attributes const& attributes) {
    CatalogueModel& model = m_catalogue.models.back();
    if (std::exchange(model.hasPackage, true)) {
        report("catalogue-package-twice", "a model has one package; this is the second");
        return;
    }
    if (XMLCh const* const value = attributes.getValue(u"value")) {
        model.package["value"].add(I18NLocale(), trimmed(I18NString(std::u16string_view(value))));
    }
}

void CatalogueReader::enterProperty(xercesc::Attributes const& attributes) {
    I18NString const locale = valueOf(attributes, u"locale");
    if (!locale.empty() && !I18NLocale::isKnown(locale)) {
        report("catalogue-locale",
               "the locale " + quotedShort(locale) + " is unknown; write one like de or de_AT");
    }
    m_propertyName = valueOf(attributes, u"name");
    m_propertyLocale = I18NLocale(locale);
}

void CatalogueReader::enterUser(xercesc::Attributes const& attributes) {
    DocumentPosition const at = positionOf(*m_locator);
    CatalogueUser user;
    user.line = at.line;
    user.column = at.column;
    user.name = valueOf(attributes, u"name");
    if (!m_userNames.insert(user.name).second) {
        report("catalogue-user-twice", "the user " + quotedShort(user.name) +
                                           " stands here for the "
                                           "second time");
    }
    m_catalogue.users.push_back(std::move(user));
}

void CatalogueReader::endElement(XMLCh const* /*uri*/, XMLCh const* /*localName*/,
                                 XMLCh const* /*tag*/) {
    if (m_skipped > 0) {
        --m_skipped;
        return;
    }
    Place const place = m_open.back()->place;
    m_text = trimmed(m_text);
    checkWritable(m_text.view());
    if (place == Place::Property) {
        leaveProperty();
    } else if (place == Place::Role) {
        leaveRole();
    } else if (!m_text.empty()) {
        report("catalogue-text", quotedUnits(m_open.back()->tag) + " holds no text, but " +
                                     quotedShort(m_text.substring(0, 40)) + " stands in it");
    }
    m_open.pop_back();
    m_text.clear();
}

void CatalogueReader::leaveProperty() {
    LocalisedText& property = m_catalogue.models.back().package[m_propertyName];
    if (!property.add(m_propertyLocale, m_text)) {
        report("catalogue-property-twice",
               "the package property " + quotedShort(m_propertyName) +
                   " has two values for one locale; the second is here");
    }
}

void CatalogueReader::leaveRole() {
    if (m_text.empty()) {
        report("catalogue-role", "a role needs its name as text");
        return;
    }
    m_catalogue.users.back().roles.push_back(m_text);
}

void CatalogueReader::characters(XMLCh const* text, XMLSize_t length) {
    if (m_skipped == 0) {
        m_text.append(std::u16string_view(text, length));
    }
}

void CatalogueReader::fatalError(xercesc::SAXParseException const& problem) {
    DocumentPosition const at = positionOf(problem);
    throw KRLDocumentException(m_name, at.line, at.column,
                               I18NString(std::u16string_view(problem.getMessage())).toUtf8());
}

void CatalogueReader::refuse(char const* /*rule*/, std::string text) {
    DocumentPosition const at = positionOf(*m_locator);
    throw KRLDocumentException(m_name, at.line, at.column, text);
}

void CatalogueReader::report(char const* rule, std::string text) {
    if (m_limit.admits(rule)) {
        DocumentPosition const at = positionOf(*m_locator);
        m_found.push_back({Severity::Error, rule, m_name, at.line, at.column, std::move(text)});
    }
}

} // namespace vex

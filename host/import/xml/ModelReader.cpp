#include "host/import/xml/ModelReader.h"

#include "I18NStringIterator.h"

#include <algorithm>

#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>

namespace vex {

namespace {

constexpr std::size_t maxReported = 1'000;

std::string toUtf8(std::u16string_view text) {
    constexpr std::size_t longest = 100;
    std::string shown = I18NString(text.substr(0, longest)).toUtf8();
    return text.size() > longest ? shown + "..." : shown;
}

std::string quoted(std::u16string_view text) {
    return '"' + toUtf8(text) + '"';
}

bool isWhiteSpace(char16_t unit) {
    constexpr char16_t firstBeyondAscii = 0x80;
    if (unit < firstBeyondAscii) {
        return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
    }
    return I18NCodePointIsWhitespace(unit);
}

std::u16string_view withoutLeadingSpace(std::u16string_view text) {
    constexpr std::u16string_view blanks = u"    "; // four are compared as fast as one
    for (;;) {
        if (text.starts_with(blanks)) {
            text.remove_prefix(blanks.size());
        } else if (!text.empty() && isWhiteSpace(text.front())) {
            text.remove_prefix(1);
        } else {
            return text;
        }
    }
}

// `xml:lang`, `xmlns` and the like say something about the document, not about
// the model.
bool belongsToXml(std::u16string_view attribute) {
    return attribute == u"xmlns" || attribute.starts_with(u"xml:") ||
           attribute.starts_with(u"xmlns:");
}

} // namespace

ModelReader::ModelReader(std::string const& file, std::size_t size, LoadOptions const& options,
                         Diagnostics& found)
    : m_file(file), m_limits(options.limits), m_keepPositions(options.keepPositions),
      m_found(found), m_builder(options.keepPositions, size), m_defaultLocale(I18NString("en_US")) {
    m_reserved = {m_builder.addName(u"model"),        m_builder.addName(u"property"),
                  m_builder.addName(u"locales"),      m_builder.addName(u"locale"),
                  m_builder.addName(u"id"),           m_builder.addName(u"role"),
                  m_builder.addName(u"class"),        m_builder.addName(u"name"),
                  m_builder.addName(u"defaultLocale")};
}

std::unique_ptr<StoreData const> ModelReader::finish() && {
    std::sort(m_usedLocales.begin(), m_usedLocales.end(),
              [](I18NLocale a, I18NLocale b) { return a.getNumber() < b.getNumber(); });
    return std::move(m_builder).finish(m_defaultLocale, std::move(m_locales),
                                       std::move(m_usedLocales));
}

void ModelReader::startDTD(XMLCh const*, XMLCh const*, XMLCh const*) {
    stop("document-type", "a document type is not allowed; remove the DOCTYPE");
}

void ModelReader::fatalError(xercesc::SAXParseException const& problem) {
    DocumentPosition const at = positionOf(problem);
    m_found.push_back({Severity::Error, "not-well-formed", m_file, at.line, at.column,
                       "the text is not well-formed XML, correct it here: " +
                           I18NString(problem.getMessage()).toUtf8()});
    throw Stop();
}

void ModelReader::startElement(XMLCh const*, XMLCh const*, XMLCh const* name,
                               xercesc::Attributes const& attributes) {
    if (m_open.size() >= m_limits.depth) {
        stop("too-deep", "elements stand inside each other more than " +
                             std::to_string(m_limits.depth) + " deep; flatten the model here");
    }
    if (attributes.getLength() > m_limits.attributesPerElement) {
        stop("too-many-attributes", "the element has " + std::to_string(attributes.getLength()) +
                                        " attributes, more than the " +
                                        std::to_string(m_limits.attributesPerElement) +
                                        " allowed; write some as property elements");
    }
    // Half of a document's elements are properties, most of them names: neither
    // needs the table of names.
    std::u16string_view const tag(name);
    Atom const atom = isSameText(tag, u"property") ? m_reserved.property : nameOf(tag);
    open(placeOf(atom), atom, attributes);
}

// Where an element of that name belongs; one that belongs nowhere is reported.
ModelReader::Place ModelReader::placeOf(Atom name) {
    if (m_open.empty()) {
        if (name != m_reserved.model) {
            stop("root", "the document's outermost element is not \"model\"; a model document "
                         "begins with <model>");
        }
        return Place::Element;
    }
    switch (m_open.back().place) {
    case Place::Element:
        if (name == m_reserved.property) {
            return Place::Property;
        }
        if (name != m_reserved.locales) {
            return Place::Element;
        }
        if (m_open.size() == 1) {
            return Place::Locales;
        }
        report("locales-outside-model",
               "\"locales\" stands directly in \"model\" only; move it there");
        break;
    case Place::Property:
        if (name == m_reserved.property) {
            return Place::Property;
        }
        report("element-in-property",
               "inside \"property\" only \"property\" may stand; move the element out of it");
        break;
    case Place::Locales:
        if (name == m_reserved.locale) {
            return Place::Locale;
        }
        report("element-in-locales",
               "inside \"locales\" only \"locale\" may stand; move the element out of it");
        break;
    case Place::Locale:
        report("element-in-locale", "inside \"locale\" only the name of a locale may stand; move "
                                    "the element out of it");
        break;
    case Place::Skipped:
        break;
    }
    return Place::Skipped;
}

void ModelReader::open(Place place, Atom name, xercesc::Attributes const& attributes) {
    ShapeEntry entry{};
    switch (place) {
    case Place::Element:
        openElement(name, attributes);
        break;
    case Place::Property:
        if (Open& outer = m_open.back(); outer.place == Place::Property) {
            openProperties(outer);
        }
        entry = readProperty(attributes);
        break;
    case Place::Locale:
        openProperties(m_open.back());
        break;
    case Place::Locales:
    case Place::Skipped:
        break;
    }
    m_open.push_back({place, false, m_text.size(), entry});
}

// Few properties have properties of their own.
void ModelReader::openProperties(Open& property) {
    if (!property.hasProperties) {
        property.hasProperties = true;
        m_builder.openProperty();
    }
}

std::uint32_t ModelReader::closeProperties(Open const& property) {
    return property.hasProperties ? m_builder.closeProperty() : NotFound;
}

void ModelReader::openElement(Atom name, xercesc::Attributes const& attributes) {
    bool const isRoot = m_open.empty();
    m_builder.openElement(name, m_keepPositions ? position() : DocumentPosition());
    std::u16string_view id;
    std::uint32_t idHash = 0;
    XMLSize_t const count = attributes.getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        std::u16string_view const attribute = attributes.getQName(i);
        std::u16string_view const value = attributes.getValue(i);
        Atom const atom = nameOf(attribute);
        if (atom == m_reserved.id) {
            id = value;
            idHash = m_builder.prepareText(value);
        } else if (atom == m_reserved.role) {
            m_builder.setOwn(Own::Role, value);
        } else if (atom == m_reserved.cls) {
            m_builder.setOwn(Own::Class, value);
        } else if (isRoot && atom == m_reserved.defaultLocale && !value.empty()) {
            m_defaultLocale = readLocale(value);
            m_builder.addValue({atom, 0, 0}, m_defaultLocale.getName().view());
        } else if (!belongsToXml(attribute)) {
            m_builder.addValue({atom, 0, 0}, value);
        }
    }
    if (!id.empty() && !m_builder.setId(id, idHash)) {
        report("duplicate-id", "another element has the id " + quoted(id) +
                                   " too; give one of them an id of its own");
    }
}

Atom ModelReader::propertyName(std::u16string_view name) {
    if (isSameText(name, u"name")) {
        return m_reserved.name;
    }
    return name.empty() ? NoAtom : m_builder.addName(name);
}

ShapeEntry ModelReader::readProperty(xercesc::Attributes const& attributes) {
    ShapeEntry entry{NoAtom, 0, 0};
    XMLSize_t const count = attributes.getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        std::u16string_view const attribute = attributes.getQName(i);
        std::u16string_view const value = attributes.getValue(i);
        if (isSameText(attribute, u"name")) {
            entry.name = propertyName(value);
        } else if (isSameText(attribute, u"locale")) {
            entry.locale = readLocale(value).getNumber();
        } else if (isSameText(attribute, u"role")) {
            entry.role = m_builder.addText(value);
        } else {
            nameOf(attribute);
        }
    }
    if (entry.name == NoAtom) {
        report("property-without-name", "the property has no name; add the attribute name=\"...\"");
        entry.name = m_reserved.property;
    } else if (entry.locale != 0 && m_builder.hasValue(entry.name, entry.locale)) {
        report("duplicate-value", "the property has a value for this locale already; remove one "
                                  "of the two or correct its locale");
    }
    return entry;
}

void ModelReader::endElement(XMLCh const*, XMLCh const*, XMLCh const*) {
    Open const element = m_open.back();
    m_open.pop_back();
    std::u16string_view const text = takeText(element);
    switch (element.place) {
    case Place::Element:
        m_builder.setOwn(Own::Text, text);
        m_builder.closeElement();
        break;
    case Place::Property:
        m_builder.addValue(element.entry, text, closeProperties(element));
        break;
    case Place::Locales:
        m_builder.addValue({m_reserved.locales, 0, 0}, {}, closeProperties(element));
        break;
    case Place::Locale:
        m_locales.push_back(readLocale(text));
        m_builder.addValue({m_reserved.locale, 0, 0}, m_locales.back().getName().view());
        break;
    case Place::Skipped:
        break;
    }
    m_text.resize(element.text);
}

// White space before the first character of an element is dropped at once: most
// of it indents the document.
void ModelReader::characters(XMLCh const* text, XMLSize_t length) {
    Place const place = m_open.back().place;
    if (place == Place::Locales || place == Place::Skipped) {
        return;
    }
    std::u16string_view rest(text, length);
    if (m_text.size() == m_open.back().text) {
        rest = withoutLeadingSpace(rest);
    }
    m_text += rest;
}

// Valid until the next text comes in.
std::u16string_view ModelReader::takeText(Open const& element) {
    std::u16string_view text = std::u16string_view(m_text).substr(element.text);
    while (!text.empty() && isWhiteSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

Atom ModelReader::nameOf(std::u16string_view name) {
    Atom const atom = m_builder.addName(name);
    if (atom >= m_names.size()) {
        m_names.resize(atom + 1);
    }
    if (!m_names[atom].isMarkup) {
        m_names[atom].isMarkup = true;
        ++m_markupNames;
        if (name.size() > m_limits.nameLength) {
            stop("name-too-long", "the name " + quoted(name) + " has more than " +
                                      std::to_string(m_limits.nameLength) +
                                      " characters; shorten it");
        }
        if (m_markupNames > m_limits.distinctNames) {
            stop("too-many-names", "the document has more than " +
                                       std::to_string(m_limits.distinctNames) +
                                       " different names of elements and attributes; write some "
                                       "as property elements");
        }
    }
    return atom;
}

I18NLocale ModelReader::readLocale(std::u16string_view name) {
    Atom const atom = m_builder.addName(name);
    if (atom >= m_names.size()) {
        m_names.resize(atom + 1);
    }
    KnownName& known = m_names[atom];
    if (!known.isLocale) {
        I18NString const text(name);
        if (!I18NLocale::isKnown(text)) {
            report("unknown-locale", "there is no locale " + quoted(name) +
                                         "; write a language and, if need be, a region, such as "
                                         "\"de\" or \"de_AT\"");
            return {};
        }
        known.isLocale = true;
        known.locale = I18NLocale(text);
        if (std::find(m_usedLocales.begin(), m_usedLocales.end(), known.locale) ==
            m_usedLocales.end()) {
            m_usedLocales.push_back(known.locale);
        }
    }
    return known.locale;
}

DocumentPosition ModelReader::position() const {
    return positionOf(*m_locator);
}

void ModelReader::report(char const* rule, std::string text) {
    DocumentPosition const at = position();
    m_found.push_back({Severity::Error, rule, m_file, at.line, at.column, std::move(text)});
    if (m_found.size() >= maxReported) {
        throw Stop();
    }
}

void ModelReader::stop(char const* rule, std::string text) {
    report(rule, std::move(text));
    throw Stop();
}

} // namespace vex

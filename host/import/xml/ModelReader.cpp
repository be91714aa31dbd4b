#include "host/import/xml/ModelReader.h"

#include "host/import/xml/WhiteSpace.h"
#include "host/store/image/SameText.h"

#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>

namespace vex {

namespace {

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
    : m_report(file, *this, found), m_writer(m_report, {.limits = options.limits,
                                                        .keepPositions = options.keepPositions,
                                                        .sourceSize = size,
                                                        .isDocument = true,
                                                        .addition = options.addition}),
      m_reserved{m_writer.name(u"model"),   m_writer.name(u"property"),
                 m_writer.name(u"locales"), m_writer.name(u"locale"),
                 m_writer.name(u"id"),      m_writer.name(u"role"),
                 m_writer.name(u"class"),   m_writer.name(u"defaultLocale")} {}

SourcePosition ModelReader::position() const {
    return {positionOf(*m_locator)};
}

SourceTerms ModelReader::terms() const {
    return {.source = "document",
            .countedNames = "elements and attributes",
            .onTooManyNames = "write some as property elements",
            .onPropertyWithoutName = "add the attribute name=\"...\""};
}

void ModelReader::startDTD(XMLCh const*, XMLCh const*, XMLCh const*) {
    m_report.stop("document-type", "a document type is not allowed; remove the DOCTYPE");
}

void ModelReader::fatalError(xercesc::SAXParseException const& problem) {
    m_report.stop("not-well-formed",
                  "the text is not well-formed XML, correct it here: " +
                      I18NString(problem.getMessage()).toUtf8(),
                  {positionOf(problem)});
}

void ModelReader::startElement(XMLCh const*, XMLCh const*, XMLCh const* name,
                               xercesc::Attributes const& attributes) {
    m_writer.admitDepth(m_open.size() + 1);
    // Half of a document's elements are properties, most of them names: neither
    // needs the table of names.
    std::u16string_view const tag(name);
    Kind const kind = open(
        isSameText(tag, u"property") ? m_reserved.property : m_writer.countedName(tag), attributes);
    m_open.push_back({kind, m_text.size()});
}

// Opens an element of that name; one that belongs nowhere is reported.
ModelReader::Kind ModelReader::open(ModelWriter::Name name, xercesc::Attributes const& attributes) {
    if (m_open.empty()) {
        if (name != m_reserved.model) {
            if (name == m_writer.name(u"catalog")) {
                m_report.stop("root",
                              "the document is a catalogue, not a model; use --catalog for it");
            }
            m_report.stop("root", "the document's outermost element is not \"model\"; a model "
                                  "document begins with <model>");
        }
        openObject(name, attributes);
        return Kind::Object;
    }
    switch (m_open.back().kind) {
    case Kind::Object:
        return openInObject(name, attributes);
    case Kind::Property:
        if (name == m_reserved.property) {
            openProperty(attributes);
            return Kind::Property;
        }
        m_report.report("element-in-property",
                        "inside \"property\" only \"property\" may stand; move the element out "
                        "of it");
        break;
    case Kind::Locales:
        if (name == m_reserved.locale) {
            return Kind::Locale;
        }
        m_report.report("element-in-locales",
                        "inside \"locales\" only \"locale\" may stand; move the element out of it");
        break;
    case Kind::Locale:
        m_report.report("element-in-locale", "inside \"locale\" only the name of a locale may "
                                             "stand; move the element out of it");
        break;
    case Kind::Skipped:
        break;
    }
    return Kind::Skipped;
}

ModelReader::Kind ModelReader::openInObject(ModelWriter::Name name,
                                            xercesc::Attributes const& attributes) {
    if (name == m_reserved.property) {
        openProperty(attributes);
        return Kind::Property;
    }
    if (name == m_reserved.locales) {
        return m_writer.openLocales() ? Kind::Locales : Kind::Skipped;
    }
    openObject(name, attributes);
    return Kind::Object;
}

void ModelReader::openObject(ModelWriter::Name name, xercesc::Attributes const& attributes) {
    bool const isRoot = m_open.empty();
    m_writer.openObject(name);
    ModelWriter::PreparedId id{};
    XMLSize_t const count = attributes.getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        std::u16string_view const attribute = attributes.getQName(i);
        std::u16string_view const value = attributes.getValue(i);
        ModelWriter::Name const what = m_writer.countedName(attribute);
        if (what == m_reserved.id) {
            id = m_writer.prepareId(value);
        } else if (what == m_reserved.role) {
            m_writer.setRole(value);
        } else if (what == m_reserved.cls) {
            m_writer.setClass(value);
        } else if (isRoot && what == m_reserved.defaultLocale && !value.empty()) {
            m_writer.setDefaultLocale(value);
        } else if (!belongsToXml(attribute)) {
            m_writer.addProperty({what}, value);
        }
    }
    m_writer.setId(id);
}

void ModelReader::openProperty(xercesc::Attributes const& attributes) {
    ModelWriter::Property property;
    XMLSize_t const count = attributes.getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        std::u16string_view const attribute = attributes.getQName(i);
        std::u16string_view const value = attributes.getValue(i);
        if (isSameText(attribute, u"name")) {
            property.name = m_writer.name(value);
        } else if (isSameText(attribute, u"locale")) {
            property.locale = m_writer.locale(value);
        } else if (isSameText(attribute, u"role")) {
            property.role = value;
        } else {
            m_writer.countedName(attribute);
        }
    }
    m_writer.openProperty(property);
}

void ModelReader::endElement(XMLCh const*, XMLCh const*, XMLCh const*) {
    Open const element = m_open.back();
    m_open.pop_back();
    std::u16string_view const text = takeText(element);
    switch (element.kind) {
    case Kind::Object:
        m_writer.setText(text);
        m_writer.closeObject();
        break;
    case Kind::Property:
        m_writer.closeProperty(text);
        break;
    case Kind::Locales:
        m_writer.closeLocales();
        break;
    case Kind::Locale:
        m_writer.addLocale(text);
        break;
    case Kind::Skipped:
        break;
    }
    m_text.resize(element.text);
}

// White space before the first character of an element is dropped at once: most
// of it indents the document.
void ModelReader::characters(XMLCh const* text, XMLSize_t length) {
    Kind const kind = m_open.back().kind;
    if (kind == Kind::Locales || kind == Kind::Skipped) {
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

} // namespace vex

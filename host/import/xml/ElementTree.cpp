#include "host/import/xml/ElementTree.h"

#include "I18NString.h"
#include "KRLException.h"

#include <algorithm>
#include <utility>

#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>

namespace vex {

namespace {

constexpr std::string_view prefixMark = "xmlns:";
constexpr std::string_view spaceOfXml = "http://www.w3.org/XML/1998/namespace";
// Each is compared with those before, and each element looks through those in force.
constexpr std::size_t mostSpaces = 100;

void append(std::string& texts, std::u16string_view text) {
    constexpr char16_t firstBeyondAscii = 0x80;
    bool const isAscii = std::all_of(text.begin(), text.end(),
                                     [](char16_t unit) { return unit < firstBeyondAscii; });
    if (isAscii) {
        std::transform(text.begin(), text.end(), std::back_inserter(texts),
                       [](char16_t unit) { return static_cast<char>(unit); });
    } else {
        texts += I18NString(text).toUtf8();
    }
}

bool isDeclaration(std::u16string_view attribute) {
    return attribute == u"xmlns" || attribute.starts_with(u"xmlns:");
}

std::uint32_t keepLength(std::u16string_view text) {
    std::string written;
    append(written, text);
    return static_cast<std::uint32_t>(written.size());
}

} // namespace

class ElementTreeReader final : public SaxHandler {
public:
    ElementTreeReader(std::string const& name, ElementLimits const& limits)
        : m_name(name), m_limits(limits) {
        m_tree.m_spaces = {"", std::string(spaceOfXml)};
        m_declared = {{"", 0}, {"xml", 1}};
    }

    ElementTree take() && { return std::move(m_tree); }

    [[noreturn]] void refuse(char const* /*rule*/, std::string text) override {
        fail(std::move(text), positionOf(*m_locator));
    }
    void setDocumentLocator(xercesc::Locator const* locator) override { m_locator = locator; }
    void startDTD(XMLCh const*, XMLCh const*, XMLCh const*) override {
        refuse("", "a document type is not allowed; remove the DOCTYPE");
    }
    void warning(xercesc::SAXParseException const&) override {}
    void error(xercesc::SAXParseException const& problem) override { fatalError(problem); }
    void fatalError(xercesc::SAXParseException const& problem) override {
        fail("the text is not well-formed XML, correct it here: " +
                 I18NString(problem.getMessage()).toUtf8(),
             positionOf(problem));
    }

    void startElement(XMLCh const*, XMLCh const*, XMLCh const* name,
                      xercesc::Attributes const& attributes) override {
        if (m_open.size() >= m_limits.depth) {
            refuse("", "elements are nested more than " + std::to_string(m_limits.depth) +
                           " deep; flatten the document here");
        }
        std::size_t const declaredBefore = m_declared.size();
        ElementTree::Entry entry{};
        entry.position = positionOf(*m_locator);
        entry.firstAttribute = static_cast<std::uint32_t>(m_tree.m_attributes.size());
        for (bool const declares : {false, true}) {
            for (XMLSize_t each = 0; each < attributes.getLength(); ++each) {
                if (isDeclaration(attributes.getQName(each)) == declares) {
                    addAttribute(attributes.getQName(each), attributes.getValue(each));
                    ++(declares ? entry.declarations : entry.attributes);
                }
            }
        }
        std::u16string_view const whole(name);
        std::size_t const colon = whole.find(u':');
        bool const hasPrefix = colon != std::u16string_view::npos;
        entry.space = spaceOfPrefix(hasPrefix ? whole.substr(0, colon) : std::u16string_view());
        entry.name = keep(whole);
        entry.prefix = hasPrefix ? keepLength(whole.substr(0, colon + 1)) : 0;
        add(entry, declaredBefore);
    }

    void endElement(XMLCh const*, XMLCh const*, XMLCh const*) override {
        m_declared.resize(m_open.back().declaredBefore);
        m_open.pop_back();
    }

    void characters(XMLCh const* text, XMLSize_t length) override {
        ElementTree::Entry& owner = m_tree.m_elements[m_open.back().element];
        auto const piece = static_cast<std::uint32_t>(m_tree.m_pieces.size());
        ElementTree::Span const span = keep({text, length});
        if (owner.lastText != ElementTree::None && owner.lastText + 1 == piece) {
            ElementTree::Span& last = m_tree.m_pieces[owner.lastText].text;
            if (last.start + last.length == span.start) {
                last.length += span.length;
                return;
            }
        }
        takeValue();
        (owner.lastText == ElementTree::None ? owner.firstText
                                             : m_tree.m_pieces[owner.lastText].next) = piece;
        owner.lastText = piece;
        m_tree.m_pieces.push_back({span});
    }

private:
    struct Open {
        ElementTree::Element element;
        ElementTree::Element last = ElementTree::None; // of what stands in it
        std::size_t declaredBefore;
    };

    [[noreturn]] void fail(std::string const& text, DocumentPosition at) const {
        throw KRLDocumentException(m_name, at.line, at.column, text);
    }

    void takeValue() {
        if (++m_values > m_limits.values) {
            refuse("", "the document has more than " + std::to_string(m_limits.values) +
                           " elements, attributes and texts; split it");
        }
    }

    ElementTree::Span keep(std::u16string_view text) {
        auto const start = static_cast<std::uint32_t>(m_tree.m_texts.size());
        append(m_tree.m_texts, text);
        return {start, static_cast<std::uint32_t>(m_tree.m_texts.size()) - start};
    }

    void addAttribute(std::u16string_view name, std::u16string_view value) {
        takeValue();
        if (isDeclaration(name)) {
            if (m_declared.size() >= mostSpaces) {
                refuseSpaces();
            }
            std::string prefix;
            append(prefix, name);
            prefix.erase(0, std::min(prefix.size(), prefixMark.size()));
            std::string space;
            append(space, value);
            m_declared.push_back({std::move(prefix), numberOfSpace(std::move(space))});
        }
        ElementTree::Span const nameSpan = keep(name);
        m_tree.m_attributes.push_back({nameSpan, keep(value)});
    }

    [[noreturn]] void refuseSpaces() {
        refuse("", "the document declares more than " + std::to_string(mostSpaces) +
                       " XML namespaces; use fewer");
    }

    std::uint32_t numberOfSpace(std::string space) {
        auto const known = std::find(m_tree.m_spaces.begin(), m_tree.m_spaces.end(), space);
        if (known == m_tree.m_spaces.end()) {
            if (m_tree.m_spaces.size() >= mostSpaces) {
                refuseSpaces();
            }
            m_tree.m_spaces.push_back(std::move(space));
            return static_cast<std::uint32_t>(m_tree.m_spaces.size() - 1);
        }
        return static_cast<std::uint32_t>(known - m_tree.m_spaces.begin());
    }

    std::uint32_t spaceOfPrefix(std::u16string_view prefix) {
        std::string name;
        append(name, prefix);
        auto const declared =
            std::find_if(m_declared.rbegin(), m_declared.rend(),
                         [&](Declared const& each) { return each.prefix == name; });
        if (declared == m_declared.rend()) {
            refuse("", "no xmlns:... declares the prefix of the element; add one");
        }
        return declared->space;
    }

    void add(ElementTree::Entry const& entry, std::size_t declaredBefore) {
        takeValue();
        auto const element = static_cast<ElementTree::Element>(m_tree.m_elements.size());
        if (!m_open.empty()) {
            Open& owner = m_open.back();
            (owner.last == ElementTree::None ? m_tree.m_elements[owner.element].first
                                             : m_tree.m_elements[owner.last].next) = element;
            owner.last = element;
        }
        m_tree.m_elements.push_back(entry);
        m_open.push_back({.element = element, .declaredBefore = declaredBefore});
    }

    struct Declared {
        std::string prefix;
        std::uint32_t space;
    };

    std::string const& m_name;
    ElementLimits const m_limits;
    xercesc::Locator const* m_locator = nullptr;
    ElementTree m_tree;
    std::vector<Open> m_open;
    std::vector<Declared> m_declared; // the innermost last
    std::size_t m_values = 0;
};

std::string_view ElementTree::spaceOf(Element element) const {
    return m_spaces[m_elements[element].space];
}

std::string ElementTree::textOf(Element element) const {
    std::string whole;
    for (auto piece = m_elements[element].firstText; piece != None; piece = m_pieces[piece].next) {
        whole += text(m_pieces[piece].text);
    }
    return whole;
}

ElementTree::Attribute ElementTree::attributeOf(Element element, std::size_t number) const {
    AttributeEntry const& entry = m_attributes[m_elements[element].firstAttribute + number];
    return {text(entry.name), text(entry.value)};
}

std::optional<std::string_view> ElementTree::find(Element element,
                                                  std::string_view attribute) const {
    for (std::size_t each = 0; each < attributeCount(element); ++each) {
        if (auto const [name, value] = attributeOf(element, each); name == attribute) {
            return value;
        }
    }
    return std::nullopt;
}

ElementTree readElementTree(ByteSource& source, std::string const& name,
                            ElementLimits const& limits) {
    ElementTreeReader reader(name, limits);
    readSax(source, reader, limits.attributesPerElement);
    return std::move(reader).take();
}

} // namespace vex

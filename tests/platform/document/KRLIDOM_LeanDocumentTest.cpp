#include "KRLIDOM_Attr.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Platform.h"
#include "KRLIDOM_Text.h"
#include "tests/platform/document/LibraryDocument.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemoryManager.hpp>

// The documents of answers behave as those that the XML library makes itself: the same is done
// to one of each, and the two compared by every way to their nodes.

namespace {

using Library = OfLibrary<xercesc::DOMDocument>;

xercesc::DOMDocument* raw(KRLIDOM_OwnedDocument const& owner) {
    return static_cast<xercesc::DOMDocument*>(owner.document().raw());
}

std::string utf8(char16_t const* text) {
    return text == nullptr ? "(none)" : I18NString(text).toUtf8();
}

std::string labelOf(xercesc::DOMNode const* node) {
    return node == nullptr ? "(none)"
                           : std::to_string(node->getNodeType()) + utf8(node->getNodeName()) + '=' +
                                 utf8(node->getNodeValue());
}

// Everything that can be read of the nodes below `node`, each place by several ways.
void describe(xercesc::DOMNode* node, std::string& said) {
    said += labelOf(node) + " in " + labelOf(node->getParentNode()) + " after " +
            labelOf(node->getPreviousSibling()) + " before " + labelOf(node->getNextSibling()) +
            " last " + labelOf(node->getLastChild()) + " text " + utf8(node->getTextContent()) +
            " children " + std::to_string(node->hasChildNodes()) +
            std::to_string(node->getChildNodes()->getLength()) + '\n';
    if (xercesc::DOMNamedNodeMap const* const attributes = node->getAttributes()) {
        for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
            auto* const attribute = static_cast<xercesc::DOMAttr*>(attributes->item(i));
            said += "of " + labelOf(attribute->getOwnerElement()) + " given " +
                    std::to_string(attribute->getSpecified()) + " id " +
                    std::to_string(attribute->isId()) + ": ";
            describe(attribute, said);
        }
    }
    for (xercesc::DOMNode* child = node->getFirstChild(); child != nullptr;
         child = child->getNextSibling()) {
        describe(child, said);
    }
}

std::string valuesOf(xercesc::DOMNode* node) {
    std::string said = labelOf(node);
    if (xercesc::DOMNamedNodeMap const* const attributes = node->getAttributes()) {
        for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
            said += ' ' + labelOf(attributes->item(i));
        }
    }
    for (xercesc::DOMNode* child = node->getFirstChild(); child != nullptr;
         child = child->getNextSibling()) {
        said += '(' + valuesOf(child) + ')';
    }
    return said;
}

// Changes a document at random: the same for the same seed.
class Changes {
public:
    Changes(xercesc::DOMDocument* document, unsigned seed)
        : m_document(document), m_random(seed), m_elements{document->getDocumentElement()} {}

    // What came of one more change.
    std::string next() {
        try {
            return change();
        } catch (xercesc::DOMException const& failure) {
            return "refused " + std::to_string(failure.code);
        }
    }

private:
    unsigned below(std::size_t count) { return static_cast<unsigned>(m_random() % count); }
    xercesc::DOMElement* any() { return m_elements[below(m_elements.size())]; }

    char16_t const* name() {
        constexpr char16_t const* names[] = {u"a", u"b", u"c", u"d", u"e", u"f", u"g", u"no name"};
        return names[below(below(20) == 0 ? 8 : 7)];
    }

    char16_t const* text() {
        constexpr char16_t const* texts[] = {u"", u"x", u"longer than the others", u"\u00E4<"};
        return texts[below(4)];
    }

    xercesc::DOMNode* anyNode() {
        switch (below(4)) {
        case 0:
            return m_document->createTextNode(text());
        case 1:
            return m_document->createComment(text());
        default:
            return added(m_document->createElement(name()));
        }
    }

    xercesc::DOMElement* added(xercesc::DOMElement* element) {
        m_elements.push_back(element);
        return element;
    }

    std::string change() {
        xercesc::DOMElement* const element = any();
        xercesc::DOMAttr* const attribute = element->getAttributeNode(name());
        switch (below(attribute == nullptr ? 12 : 22)) {
        case 0:
        case 1:
            return labelOf(element->appendChild(anyNode()));
        case 2:
            if (xercesc::DOMElement* const other = any(); other != element) {
                return labelOf(element->appendChild(other)); // the library lets one be in itself
            }
            return {};
        case 3:
        case 4:
        case 5:
            element->setAttribute(name(), text());
            return valuesOf(element);
        case 6:
            return labelOf(element->insertBefore(anyNode(), element->getFirstChild()));
        case 7:
            element->normalize();
            return labelOf(element);
        case 8:
            if (xercesc::DOMNode* const parent = element->getParentNode();
                parent != nullptr && parent != m_document) {
                return labelOf(parent->removeChild(element));
            }
            return {};
        case 9:
            return labelOf(element->appendChild(
                added(static_cast<xercesc::DOMElement*>(element->cloneNode(below(2) == 0)))));
        case 10:
            if (below(10) == 0) {
                m_document->createRange()->selectNode(m_document->getDocumentElement());
            }
            return {};
        case 11:
            return labelOf(m_document->getElementById(text()));
        case 12:
            attribute->setValue(text());
            return labelOf(attribute);
        case 13:
            attribute->setTextContent(text());
            return labelOf(attribute);
        case 14:
            return labelOf(attribute->appendChild(m_document->createTextNode(text())));
        case 15:
            return labelOf(attribute->getFirstChild());
        case 16:
            return labelOf(any()->setAttributeNode(attribute));
        case 17:
            return labelOf(any()->setAttributeNode(
                static_cast<xercesc::DOMAttr*>(attribute->cloneNode(true))));
        case 18:
            element->removeAttribute(attribute->getName());
            return valuesOf(element);
        case 19:
            element->setIdAttribute(attribute->getName(), below(2) == 0);
            return labelOf(attribute);
        case 20:
            return std::to_string(attribute->isEqualNode(any()->getAttributeNode(name())));
        default:
            if (xercesc::DOMNode* const first = attribute->getFirstChild()) {
                return labelOf(attribute->replaceChild(m_document->createTextNode(text()), first));
            }
            return {};
        }
    }

    xercesc::DOMDocument* m_document;
    std::mt19937 m_random;
    std::vector<xercesc::DOMElement*> m_elements;
};

TEST(KRLIDOMLeanDocument, IsChangedAsOneOfTheLibrary) {
    for (unsigned seed = 0; seed < 1500; ++seed) {
        KRLIDOM_OwnedDocument const lean("root");
        Library const library = libraryDocument();
        library->appendChild(library->createElement(u"root"));
        Changes ours(raw(lean), seed);
        Changes theirs(library.get(), seed);
        for (unsigned step = 0; step < 60; ++step) {
            ASSERT_EQ(ours.next(), theirs.next()) << seed << ' ' << step;
        }
        ASSERT_EQ(valuesOf(raw(lean)), valuesOf(library.get())) << seed;
        std::string described;
        std::string expected;
        describe(raw(lean), described);
        describe(library.get(), expected);
        ASSERT_EQ(described, expected) << seed;
    }
}

TEST(KRLIDOMLeanDocument, IsImportedAndClonedWhole) {
    KRLIDOM_OwnedDocument const lean("root");
    KRLIDOM_Element const root = lean.document().getDocumentElement();
    root.setAttribute("a", "value");
    KRLIDOM_Element const child = lean.document().createElement("b");
    child.setAttribute("c", "");
    root.appendChild(child);
    std::string const whole = valuesOf(root.raw());
    EXPECT_EQ(valuesOf(root.raw()->cloneNode(true)), whole);
    Library const library = libraryDocument();
    EXPECT_EQ(valuesOf(library->importNode(root.raw(), true)), whole);
    EXPECT_EQ(valuesOf(raw(lean)->importNode(library->importNode(root.raw(), true), true)), whole);
    Library const copy(static_cast<xercesc::DOMDocument*>(raw(lean)->cloneNode(true)));
    EXPECT_EQ(valuesOf(copy->getDocumentElement()), whole);
    EXPECT_TRUE(copy->getDocumentElement()->isEqualNode(root.raw()));
}

TEST(KRLIDOMLeanDocument, MakesTheTextOfAnAttributeWhenAskedForIt) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    root.setAttribute("a", "value");
    KRLIDOM_Attr const attribute = root.getAttributes().item(0);
    EXPECT_TRUE(attribute.hasChildNodes());
    std::size_t const before = owner.byteCount();
    KRLIDOM_Node const text = attribute.getFirstChild();
    EXPECT_EQ(text.getNodeType(), KRLIDOM_Node::TextNode);
    EXPECT_EQ(text.getNodeValue(), "value");
    EXPECT_TRUE(text.getParentNode() == attribute);
    EXPECT_TRUE(attribute.getFirstChild() == text);
    EXPECT_EQ(owner.byteCount(), before);
    root.setAttribute("a", "another");
    EXPECT_EQ(attribute.getNodeValue(), "another");
}

TEST(KRLIDOMLeanDocument, KeepsAnAttributesValueOnce) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    std::size_t const before = owner.byteCount();
    root.setAttribute("a", I18NString(std::u16string(1'000'000, u'x')));
    EXPECT_LT(owner.byteCount(), before + 2'050'000);
}

// Counts what the library asks for.
class CountedMemory final : public xercesc::MemoryManager {
public:
    void* allocate(XMLSize_t size) override {
        bytes += size;
        return ::operator new(size);
    }
    void deallocate(void* block) override { ::operator delete(block); }
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }
    std::size_t bytes = 0;
};

TEST(KRLIDOMLeanDocument, TakesLessMemoryThanOneOfTheLibrary) {
    struct Case {
        std::size_t length;
        std::size_t tenths;
    };
    for (auto const [length, tenths] : {Case{0, 7}, {30, 7}, {200, 9}, {1900, 10}}) {
        KRLIDOM_OwnedDocument const lean("root");
        CountedMemory memory;
        KRLIDOM_Initialize();
        Library const library(
            xercesc::DOMImplementation::getImplementation()->createDocument(&memory));
        library->appendChild(library->createElement(u"root"));
        std::u16string const text(length, u'x');
        for (xercesc::DOMDocument* const document : {raw(lean), library.get()}) {
            for (int i = 0; i < 10'000; ++i) {
                xercesc::DOMElement* const element = document->createElement(u"queryItem");
                for (char16_t const* const name : {u"name", u"_path", u"_ref", u"ID"}) {
                    element->setAttribute(name, text.c_str());
                }
                document->getDocumentElement()->appendChild(element);
            }
        }
        EXPECT_LT(lean.byteCount() * 10, memory.bytes * tenths) << length;
    }
}

TEST(KRLIDOMLeanDocument, TakesNoMoreMemoryForAValueThatIsSetAgain) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    I18NString const large(std::u16string(500, u'x'));
    root.setAttribute("a", large);
    std::size_t const before = owner.byteCount();
    for (int i = 0; i < 10'000; ++i) {
        root.setAttribute("a", "small");
        root.setAttribute("a", large);
    }
    EXPECT_EQ(owner.byteCount(), before);
    EXPECT_EQ(root.getAttribute("a"), large);
}

TEST(KRLIDOMLeanDocument, TakesAPartOfTheValueForTheNextOne) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    root.setAttribute("a", "abcdef");
    auto* const attribute = static_cast<xercesc::DOMAttr*>(root.getAttributes().item(0).raw());
    attribute->setValue(attribute->getValue() + 2);
    EXPECT_EQ(root.getAttribute("a"), "cdef");
    attribute->setValue(attribute->getValue());
    EXPECT_EQ(root.getAttribute("a"), "cdef");
}

// Its memory comes in few pieces, whatever the length of its values.
TEST(KRLIDOMLeanDocument, KeepsValuesOfAnyLengthNextToEachOther) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    std::size_t const before = owner.byteCount();
    std::size_t held = 0;
    for (std::size_t length = 0; length < 3'000; ++length) {
        root.setAttribute("a", I18NString(std::u16string(length, u'x')));
        root.setAttribute("b", I18NString(std::u16string(length, u'y')));
        held += 2 * (2 * length + 2);
        ASSERT_EQ(root.getAttribute("a").length(), static_cast<std::int32_t>(length));
        ASSERT_EQ(root.getAttribute("b").view().find_first_not_of(u'y'), std::u16string::npos);
    }
    EXPECT_LT(owner.byteCount(), before + held * 21 / 20 + (1U << 20U));
}

} // namespace

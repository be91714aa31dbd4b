#include "KRLException.h"
#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "tests/platform/document/LibraryDocument.h"

#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/XMLFormatter.hpp>

// The writer's bytes are those of the XML library's own serialiser, which is slower, except
// that the serialiser begins an indented document with an empty line.

namespace {

// Behind what was written of a text that is refused.
std::string const refused = " (refused) ";

class Bytes final : public xercesc::XMLFormatTarget {
public:
    void writeChars(XMLByte const* bytes, XMLSize_t count, xercesc::XMLFormatter*) override {
        std::string_view text(reinterpret_cast<char const*>(bytes), count);
        if (written.empty() && !text.empty() && text.front() == '\n') {
            text.remove_prefix(1);
        }
        written += text;
    }

    std::string written{};
};

std::string serialised(xercesc::DOMNode const* node, bool pretty) {
    auto* const implementation = xercesc::DOMImplementation::getImplementation();
    OfLibrary<xercesc::DOMLSSerializer> const serializer(implementation->createLSSerializer());
    OfLibrary<xercesc::DOMLSOutput> const output(implementation->createLSOutput());
    xercesc::DOMConfiguration& configuration = *serializer->getDomConfig();
    configuration.setParameter(xercesc::XMLUni::fgDOMXMLDeclaration, false);
    configuration.setParameter(xercesc::XMLUni::fgDOMWRTFormatPrettyPrint, pretty);
    configuration.setParameter(xercesc::XMLUni::fgDOMWRTXercesPrettyPrint, false);
    Bytes bytes;
    output->setEncoding(xercesc::XMLUni::fgUTF8EncodingString);
    output->setByteStream(&bytes);
    try {
        serializer->write(node, output.get());
    } catch (xercesc::DOMLSException const& failure) {
        return bytes.written + refused + I18NString(failure.getMessage()).toUtf8();
    }
    if (pretty && (bytes.written.empty() || bytes.written.back() != '\n')) {
        bytes.written += '\n';
    }
    return bytes.written;
}

std::string written(xercesc::DOMNode* node, bool pretty) {
    std::ostringstream out;
    try {
        KRLIDOM_Writer::write(out, KRLIDOM_Node(node), pretty);
    } catch (KRLDocumentException const& failure) {
        std::string_view const said = "The document cannot be written as XML: ";
        EXPECT_EQ(std::string_view(failure.what()).substr(0, said.size()), said);
        return out.str() + refused + (failure.what() + said.size());
    }
    return out.str();
}

bool isRefused(xercesc::DOMNode* node) {
    try {
        KRLIDOM_Writer::check(KRLIDOM_Node(node));
    } catch (KRLDocumentException const&) {
        return true;
    }
    return false;
}

testing::AssertionResult isWrittenTheSame(xercesc::DOMNode* node) {
    for (bool const pretty : {false, true}) {
        std::string const expected = serialised(node, pretty);
        std::string const actual = written(node, pretty);
        if (isRefused(node) != (expected.find(refused) != std::string::npos)) {
            return testing::AssertionFailure() << "checked differently: " << expected;
        }
        if (actual != expected) {
            return testing::AssertionFailure()
                   << (pretty ? "pretty: " : "plain: ") << actual << "\nin place of: " << expected;
        }
    }
    return testing::AssertionSuccess();
}

using Document = OfLibrary<xercesc::DOMDocument>;

// One text in the places where a text can stand, each a document of its own.
testing::AssertionResult isWrittenTheSameEverywhere(char16_t const* text,
                                                    char16_t const* version = u"1.0") {
    Document const inElement = libraryDocument();
    inElement->setXmlVersion(version);
    auto* const content = inElement->createTextNode(text);
    inElement->appendChild(inElement->createElement(u"a"))->appendChild(content);
    Document const inAttribute = libraryDocument();
    inAttribute->setXmlVersion(version);
    auto* const element = inAttribute->createElement(u"a");
    element->setAttribute(u"n", text);
    inAttribute->appendChild(element);
    Document const inComment = libraryDocument();
    inComment->setXmlVersion(version);
    inComment->appendChild(inComment->createComment(text));
    Document const inInstruction = libraryDocument();
    inInstruction->setXmlVersion(version);
    inInstruction->appendChild(inInstruction->createProcessingInstruction(u"p", text));
    for (xercesc::DOMNode* const node :
         {static_cast<xercesc::DOMNode*>(inElement.get()), static_cast<xercesc::DOMNode*>(content),
          static_cast<xercesc::DOMNode*>(inAttribute.get()),
          static_cast<xercesc::DOMNode*>(element->getAttributeNode(u"n")),
          static_cast<xercesc::DOMNode*>(inComment.get()),
          static_cast<xercesc::DOMNode*>(inInstruction.get())}) {
        if (auto const same = isWrittenTheSame(node); !same) {
            return same;
        }
    }
    return testing::AssertionSuccess();
}

TEST(KRLIDOMWriterComparison, HoldsForEachUnitByItselfAndBetweenOthers) {
    for (unsigned unit = 1; unit < 0x10000; unit += unit < 0x300 || unit >= 0xFFF0 ? 1 : 61) {
        char16_t const alone[] = {static_cast<char16_t>(unit), 0};
        char16_t const between[] = {u'x', static_cast<char16_t>(unit), u'<', 0};
        ASSERT_TRUE(isWrittenTheSameEverywhere(alone)) << std::hex << unit;
        ASSERT_TRUE(isWrittenTheSameEverywhere(between)) << std::hex << unit;
    }
}

TEST(KRLIDOMWriterComparison, HoldsForAllUnitsOfXml10InOneText) {
    std::u16string all;
    for (unsigned unit = 1; unit < 0xFFFE; ++unit) {
        bool const isHalf = unit >= 0xD800 && unit < 0xE000;
        if (!isHalf && (unit >= 0x20 || unit == 9 || unit == 10 || unit == 13)) {
            all += static_cast<char16_t>(unit);
        }
    }
    EXPECT_TRUE(isWrittenTheSameEverywhere(all.c_str()));
}

TEST(KRLIDOMWriterComparison, HoldsForWhatXml11AllowsAndEscapes) {
    for (unsigned unit = 1; unit < 0x300; ++unit) {
        char16_t const text[] = {u'x', static_cast<char16_t>(unit), 0};
        ASSERT_TRUE(isWrittenTheSameEverywhere(text, u"1.1")) << std::hex << unit;
    }
    for (char16_t const unit : {u'\u2028', char16_t{0xD800}, u'\uFFFE', u'\uFFFF'}) {
        char16_t const text[] = {unit, 0};
        ASSERT_TRUE(isWrittenTheSameEverywhere(text, u"1.1")) << std::hex << unsigned{unit};
    }
}

TEST(KRLIDOMWriterComparison, HoldsForPairsAndHalvesOfThem) {
    constexpr char16_t low = 0xD800;
    constexpr char16_t lead = 0xDBFF;
    constexpr char16_t trail = 0xDC00;
    constexpr char16_t high = 0xDFFF;
    std::vector<char16_t> const units{low, lead, trail, high, u'x'};
    for (char16_t const a : units) {
        for (char16_t const b : units) {
            for (char16_t const c : units) {
                for (char16_t const d : units) {
                    char16_t const text[] = {a, b, c, d, 0};
                    ASSERT_TRUE(isWrittenTheSameEverywhere(text))
                        << std::hex << unsigned{a} << ' ' << unsigned{b} << ' ' << unsigned{c}
                        << ' ' << unsigned{d};
                }
            }
        }
    }
}

TEST(KRLIDOMWriterComparison, HoldsForBlanksAtTheStart) {
    for (char16_t const* const text :
         {u"", u"\n", u"\n\n", u"\n\nx", u"\r\n", u" \n", u"\t", u"\n<", u"<\n", u"\n  x\n"}) {
        EXPECT_TRUE(isWrittenTheSameEverywhere(text)) << I18NString(text).toUtf8();
        Document const document = libraryDocument();
        auto* const fragment = document->createDocumentFragment();
        fragment->appendChild(document->createTextNode(u"\n"));
        fragment->appendChild(document->createTextNode(text));
        EXPECT_TRUE(isWrittenTheSame(fragment)) << I18NString(text).toUtf8();
        fragment->appendChild(document->createElement(u"a"));
        EXPECT_TRUE(isWrittenTheSame(fragment)) << I18NString(text).toUtf8();
    }
}

TEST(KRLIDOMWriterComparison, HoldsForTextsLongerThanABlock) {
    for (char16_t const* const piece : {u"a", u"\u00E4", u"\u65E5", u"x\U0001F600", u"&\"<>\n"}) {
        std::u16string text;
        while (text.size() < 70'000) {
            text += piece;
        }
        for (std::size_t const before : {0U, 1U, 2U, 3U, 5U}) {
            std::u16string const whole = std::u16string(before, u'.') + text;
            EXPECT_TRUE(isWrittenTheSameEverywhere(whole.c_str())) << before;
        }
    }
}

TEST(KRLIDOMWriterComparison, HoldsForDocumentsWithoutContent) {
    Document const document = libraryDocument();
    EXPECT_TRUE(isWrittenTheSame(document.get()));
    EXPECT_TRUE(isWrittenTheSame(document->createDocumentFragment()));
}

TEST(KRLIDOMWriterComparison, HoldsForMarkedSections) {
    for (char16_t const* const text :
         {u"", u"a<b>&", u"]]>", u"a]]>b", u"a]]>", u"]]>b", u"a]", u"a]]", u"]]>]]>", u"a]]]>>"}) {
        Document const document = libraryDocument();
        auto* const root = document->appendChild(document->createElement(u"a"));
        root->appendChild(document->createCDATASection(text));
        root->appendChild(document->createElement(u"b"));
        EXPECT_TRUE(isWrittenTheSame(document.get())) << I18NString(text).toUtf8();
    }
}

// Comments, instructions and blank texts between elements, as documents that are read have.
TEST(KRLIDOMWriterComparison, HoldsForDocumentsThatWereRead) {
    for (char const* const text :
         {"<a><!--c--></a>", "<a>x<!--c-->y</a>", "<a><!--c--><b/></a>", "<a><b/>x<!--c--></a>",
          "<!--c--><a/><!--d-->", "<?p q?><a><?r?><b><?s t?></b></a><?u?>",
          "<a>\n  <b>\n    <c/>\n  </b>\n</a>", "<a>\n\n\n<b/>\n\t<c/> </a>", "<a> <b/>x<c/>\n</a>",
          "<a>\n            <b/></a>", "<a>\r\n<b>\r\n</b></a>", "<a>&#13;  <b/>&#13;</a>",
          "<a><![CDATA[x<y]]><b/></a>", "<a><b>x</b>y<c><d/>z</c></a>",
          "<?xml version='1.1'?><a n='&#1;'>&#x85;&#x7F;</a>",
          "<a xmlns='u' xmlns:p='v' p:q='1'><p:b xmlns=''/></a>"}) {
        KRLIDOM_OwnedDocument const owner = KRLIDOM_Reader::parse(text, "t");
        EXPECT_TRUE(isWrittenTheSame(owner.document().raw())) << text;
        EXPECT_TRUE(isWrittenTheSame(owner.document().getDocumentElement().raw())) << text;
    }
}

// Puts nodes at random below elements of a document.
class RandomDocument {
public:
    explicit RandomDocument(unsigned seed) : m_random(seed) {
        xercesc::DOMNode* at = m_document->appendChild(element());
        for (unsigned count = below(60); count > 0; --count) {
            switch (below(9)) {
            case 0:
            case 1:
                at = at->appendChild(element());
                break;
            case 2:
                at = at == m_document->getDocumentElement() ? at : at->getParentNode();
                break;
            case 3:
                at->appendChild(m_document->createComment(u"c"));
                break;
            case 4:
                at->appendChild(m_document->createProcessingInstruction(u"p", u"q"));
                break;
            case 5:
                at->appendChild(m_document->createTextNode(blank()));
                break;
            case 6:
                at->appendChild(m_document->createTextNode(text().c_str()));
                break;
            default:
                at->appendChild(element());
            }
        }
    }

    xercesc::DOMNode* node() const { return m_document.get(); }

private:
    unsigned below(unsigned count) { return static_cast<unsigned>(m_random() % count); }

    xercesc::DOMElement* element() {
        constexpr char16_t const* names[] = {u"a", u"bc", u"d-e.f", u"\u00E9t\u00E9", u"_", u"p:q"};
        auto* const made = m_document->createElement(names[below(6)]);
        for (unsigned count = below(4); count > 0; --count) {
            made->setAttribute(names[below(6)], text().c_str());
        }
        return made;
    }

    char16_t const* blank() {
        constexpr char16_t const* blanks[] = {u"\n", u"\n  ", u"  ", u"\n\n      ",
                                              u"\r", u"\t\n", u""};
        return blanks[below(7)];
    }

    std::u16string text() {
        std::u16string made;
        for (unsigned count = below(12); count > 0; --count) {
            switch (below(8)) {
            case 0:
                made += u"&<>\"'\t\n\r"[below(8)];
                break;
            case 1:
                made += u"\U0001F600";
                break;
            case 2:
                made += static_cast<char16_t>(0x80 + below(0xD000));
                break;
            default:
                made += static_cast<char16_t>(u'a' + below(26));
            }
        }
        if (below(200) == 0) {
            made += static_cast<char16_t>(below(2) == 0 ? 0xD800 + below(0x800) : 1 + below(8));
        }
        return made;
    }

    std::mt19937 m_random;
    Document m_document = libraryDocument();
};

TEST(KRLIDOMWriterComparison, HoldsForDocumentsMadeAtRandom) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        RandomDocument const document(seed);
        ASSERT_TRUE(isWrittenTheSame(document.node())) << seed;
    }
}

} // namespace

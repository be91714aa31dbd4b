#include "KRLIDOM_Writer.h"

#include "KRLException.h"
#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Platform.h"
#include "KRLIDOM_Reader.h"

#include <sstream>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

namespace {

KRLIDOM_OwnedDocument emptyResponse() {
    KRLIDOM_OwnedDocument owner("Response");
    owner.document().getDocumentElement().appendChild(owner.document().createElement("Result"));
    return owner;
}

TEST(KRLIDOMWriter, WritesADocumentWithoutDeclarationAndIndentation) {
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(emptyResponse().document()), "<Response><Result/></Response>");
}

TEST(KRLIDOMWriter, BreaksLinesWithoutEmptyOnesWhenPretty) {
    KRLIDOM_OwnedDocument const owner =
        KRLIDOM_Reader::parse("<a n='1'><b>text</b><c><d/></c></a>", "t");
    std::string const pretty = KRLIDOM_Writer::toUtf8(owner.document(), true);
    EXPECT_EQ(pretty, "<a n=\"1\">\n  <b>text</b>\n  <c>\n    <d/>\n  </c>\n</a>\n");
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(owner.document().getDocumentElement(), true), pretty);
}

TEST(KRLIDOMWriter, WritesToAStream) {
    std::ostringstream out;
    KRLIDOM_OwnedDocument const owner = emptyResponse();
    KRLIDOM_Writer::write(out, owner.document(), false);
    EXPECT_EQ(out.str(), "<Response><Result/></Response>");
}

TEST(KRLIDOMWriter, LeavesAFailureToTheStreamsState) {
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    KRLIDOM_OwnedDocument const owner = emptyResponse();
    KRLIDOM_Writer::write(out, owner.document(), false);
    EXPECT_TRUE(out.bad());
}

TEST(KRLIDOMWriter, LetsAStreamsExceptionThrough) {
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    EXPECT_THROW(out.exceptions(std::ios::badbit), std::ios_base::failure);
    KRLIDOM_OwnedDocument const owner = emptyResponse();
    EXPECT_THROW(KRLIDOM_Writer::write(out, owner.document(), false), std::ios_base::failure);
}

TEST(KRLIDOMWriter, WritesNothingForTheNullNode) {
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(KRLIDOM_Node()), "");
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(KRLIDOM_Node(), true), "");
    KRLIDOM_Writer::check(KRLIDOM_Node());
}

TEST(KRLIDOMWriter, WritesOnePartOfADocument) {
    KRLIDOM_OwnedDocument const owner = emptyResponse();
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(owner.document().getDocumentElement().getFirstChild()),
              "<Result/>");
}

TEST(KRLIDOMWriter, WritesTextSoThatItReadsBackTheSame) {
    KRLIDOM_OwnedDocument const owner("a");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    I18NString const hard(u"<&>\"'\t]]> \u00E4\u65E5\U0001F600\u0085\u2028");
    root.setAttribute("n", hard);
    root.appendChild(owner.document().createTextNode(hard));
    std::string const written = KRLIDOM_Writer::toUtf8(owner.document());
    KRLIDOM_OwnedDocument const again = KRLIDOM_Reader::parse(written, "again");
    EXPECT_EQ(again.document().getDocumentElement().getAttribute("n"), hard) << written;
    EXPECT_EQ(again.document().getDocumentElement().getFirstChild().getNodeValue(), hard);
}

TEST(KRLIDOMWriter, RefusesTextThatXmlCannotHold) {
    for (char16_t const unit : {u'\x1', u'\xB', char16_t{0xD83D}, char16_t{0xDE00}, u'\xFFFE'}) {
        KRLIDOM_OwnedDocument const owner("a");
        I18NString const text(&unit, 1);
        owner.document().getDocumentElement().setAttribute("n", text);
        KRLIDOM_Text const node = owner.document().createTextNode(text);
        for (KRLIDOM_Node const& each : {KRLIDOM_Node(owner.document()), KRLIDOM_Node(node)}) {
            try {
                KRLIDOM_Writer::toUtf8(each);
                ADD_FAILURE() << static_cast<unsigned>(unit) << " was written";
            } catch (KRLDocumentException const& failure) {
                EXPECT_STREQ(failure.what(), "The document cannot be written as XML: invalid or "
                                             "illegal XML character");
            }
        }
    }
}

TEST(KRLIDOMWriter, WritesADocumentOfAnyDepth) {
    KRLIDOM_OwnedDocument const owner("a");
    KRLIDOM_Node at = owner.document().getDocumentElement();
    constexpr std::size_t depth = 300'000;
    for (std::size_t level = 1; level < depth; ++level) {
        at = at.appendChild(owner.document().createElement("a"));
    }
    std::string const written = KRLIDOM_Writer::toUtf8(owner.document());
    EXPECT_EQ(written.size(), (depth - 1) * 7 + 4);
    EXPECT_EQ(written.substr((depth - 2) * 3, 14), "<a><a/></a></a");
    KRLIDOM_Writer::check(owner.document());
}

TEST(KRLIDOMWriter, HandsOverWhatComesBeforeTextThatXmlCannotHold) {
    KRLIDOM_OwnedDocument const owner = emptyResponse();
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    root.appendChild(owner.document().createTextNode(I18NString(u"good\x1")));
    std::ostringstream out;
    EXPECT_THROW(KRLIDOM_Writer::write(out, owner.document(), false), KRLDocumentException);
    EXPECT_EQ(out.str(), "<Response><Result/>");
}

TEST(KRLIDOMWriter, HandsOverLargeBlocksOnly) {
    class Counted final : public std::stringbuf {
    public:
        std::size_t count = 0;

    protected:
        std::streamsize xsputn(char const* text, std::streamsize size) override {
            ++count;
            return std::stringbuf::xsputn(text, size);
        }
    } buffer;
    std::ostream out(&buffer);
    KRLIDOM_OwnedDocument const owner("a");
    for (int i = 0; i < 10'000; ++i) {
        KRLIDOM_Element const element = owner.document().createElement("b");
        element.setAttribute("n", "<value>");
        owner.document().getDocumentElement().appendChild(element);
    }
    KRLIDOM_Writer::write(out, owner.document(), false);
    EXPECT_EQ(buffer.str(), KRLIDOM_Writer::toUtf8(owner.document()));
    EXPECT_LE(buffer.count, buffer.str().size() / 20'000);
}

TEST(KRLIDOMWriter, RefusesANodeThatIsNoPartOfAnAnswer) {
    KRLIDOM_Initialize();
    auto* const implementation = xercesc::DOMImplementation::getImplementation();
    auto* const type = implementation->createDocumentType(u"a", nullptr, nullptr);
    EXPECT_THROW(KRLIDOM_Writer::toUtf8(KRLIDOM_Node(type)), KRLDocumentException);
    EXPECT_THROW(KRLIDOM_Writer::check(KRLIDOM_Node(type)), KRLDocumentException);
    type->release();
}

TEST(KRLIDOMWriter, WritesMoreThanOneBufferOfText) {
    KRLIDOM_OwnedDocument const owner("a");
    std::u16string const large(1'000'000, u'x');
    owner.document().getDocumentElement().appendChild(
        owner.document().createTextNode(I18NString(large)));
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(owner.document()).size(), large.size() + 7);
}

} // namespace

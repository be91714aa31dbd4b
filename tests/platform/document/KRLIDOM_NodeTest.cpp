#include "KRLException.h"
#include "KRLIDOM_Helper.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"

#include <gtest/gtest.h>

namespace {

TEST(KRLIDOMNode, DefinesEveryOperationOnTheNullNode) {
    KRLIDOM_Node const none;
    EXPECT_TRUE(none.isNull());
    EXPECT_EQ(none.getNodeType(), 0);
    EXPECT_EQ(none.getNodeName(), "");
    EXPECT_EQ(none.getNodeValue(), "");
    EXPECT_TRUE(none.getParentNode().isNull());
    EXPECT_TRUE(none.getFirstChild().isNull());
    EXPECT_TRUE(none.getNextSibling().isNull());
    EXPECT_FALSE(none.hasChildNodes());
    EXPECT_TRUE(none.getOwnerDocument().isNull());
    EXPECT_EQ(none.getAttributes().getLength(), 0U);
    EXPECT_TRUE(none.getAttributes().item(0).isNull());
    EXPECT_TRUE(none.appendChild(none).isNull());
    EXPECT_TRUE(KRLIDOM_Helper::findFirstElement(none, "a").isNull());
}

TEST(KRLIDOMNode, DefinesEveryOperationOnTheNullElementAttributeTextAndDocument) {
    KRLIDOM_Element const element;
    EXPECT_EQ(element.getTagName(), "");
    EXPECT_EQ(element.getAttribute("name"), "");
    element.setAttribute("name", "value");
    KRLIDOM_Attr const attribute;
    EXPECT_EQ(attribute.getName(), "");
    EXPECT_EQ(attribute.getValue(), "");
    EXPECT_FALSE(attribute.getSpecified());
    EXPECT_EQ(KRLIDOM_Text().getData(), "");
    KRLIDOM_Document const document;
    EXPECT_TRUE(document.getDocumentElement().isNull());
    EXPECT_TRUE(document.createElement("a").isNull());
    EXPECT_TRUE(document.createTextNode("a").isNull());
    EXPECT_TRUE(KRLIDOM_Document(KRLIDOM_Node()).isNull());
}

TEST(KRLIDOMNode, IsNullAsAnotherKind) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Document const document = owner.document();
    KRLIDOM_Element const root = document.getDocumentElement();
    KRLIDOM_Text const text = document.createTextNode("t");
    root.setAttribute("a", "1");
    KRLIDOM_Attr const attribute = root.getAttributes().item(0);
    EXPECT_TRUE(KRLIDOM_Element(text).isNull());
    EXPECT_TRUE(KRLIDOM_Element(document).isNull());
    EXPECT_TRUE(KRLIDOM_Text(root).isNull());
    EXPECT_TRUE(KRLIDOM_Attr(root).isNull());
    EXPECT_FALSE(KRLIDOM_Attr(KRLIDOM_Node(attribute)).isNull());
    EXPECT_FALSE(KRLIDOM_Text(KRLIDOM_Node(text)).isNull());
}

TEST(KRLIDOMNode, TellsItsTypeAndName) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Document const document = owner.document();
    EXPECT_EQ(document.getNodeType(), 9);
    EXPECT_EQ(document.getNodeName(), "#document");
    EXPECT_EQ(document.getDocumentElement().getNodeType(), 1);
    EXPECT_EQ(document.getDocumentElement().getTagName(), "root");
    KRLIDOM_Text const text = document.createTextNode("hello");
    EXPECT_EQ(text.getNodeType(), 3);
    EXPECT_EQ(text.getNodeName(), "#text");
    EXPECT_EQ(text.getData(), "hello");
}

TEST(KRLIDOMNode, LeadsToItsNeighbours) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Document const document = owner.document();
    KRLIDOM_Element const root = document.getDocumentElement();
    EXPECT_FALSE(root.hasChildNodes());
    KRLIDOM_Node const a = root.appendChild(document.createElement("a"));
    KRLIDOM_Node const b = root.appendChild(document.createElement("b"));
    EXPECT_TRUE(root.hasChildNodes());
    EXPECT_TRUE(root.getFirstChild() == a);
    EXPECT_TRUE(a.getNextSibling() == b);
    EXPECT_TRUE(b.getNextSibling().isNull());
    EXPECT_TRUE(b.getParentNode() == root);
    EXPECT_TRUE(root.getParentNode() == document);
    EXPECT_TRUE(document.getParentNode().isNull());
    EXPECT_TRUE(a.getOwnerDocument() == document);
    EXPECT_TRUE(document.getOwnerDocument().isNull());
    EXPECT_TRUE(KRLIDOM_Document(a) == document);
    EXPECT_TRUE(a != b);
}

TEST(KRLIDOMNode, MovesANodeThatAlreadyHasAPlace) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Document const document = owner.document();
    KRLIDOM_Element const root = document.getDocumentElement();
    KRLIDOM_Node const a = root.appendChild(document.createElement("a"));
    KRLIDOM_Node const b = root.appendChild(document.createElement("b"));
    b.appendChild(a);
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(document), "<root><b><a/></b></root>");
}

TEST(KRLIDOMNode, RefusesAChangeThatTheStructureForbids) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_OwnedDocument const other("other");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    KRLIDOM_Node const child = root.appendChild(owner.document().createElement("a"));
    EXPECT_THROW(child.appendChild(root), KRLDocumentException);
    EXPECT_THROW(root.appendChild(other.document().createElement("b")), KRLDocumentException);
    EXPECT_THROW(owner.document().appendChild(owner.document().createElement("second")),
                 KRLDocumentException);
    EXPECT_TRUE(root.appendChild(KRLIDOM_Node()).isNull());
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(root), "<root><a/></root>");
}

TEST(KRLIDOMElement, KeepsAttributes) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    EXPECT_EQ(root.getAttribute("name"), "");
    root.setAttribute("name", "one");
    root.setAttribute("name", "two");
    root.setAttribute("empty", "");
    EXPECT_EQ(root.getAttribute("name"), "two");
    KRLIDOM_NamedNodeMap const attributes = root.getAttributes();
    ASSERT_EQ(attributes.getLength(), 2U);
    EXPECT_TRUE(attributes.item(2).isNull());
    for (std::size_t i = 0; i < attributes.getLength(); ++i) {
        KRLIDOM_Attr const attribute = attributes.item(i);
        EXPECT_EQ(attribute.getNodeType(), 2);
        EXPECT_TRUE(attribute.getSpecified());
        EXPECT_EQ(attribute.getValue(), attribute.getName() == "name" ? "two" : "");
    }
}

TEST(KRLIDOMElement, RefusesNamesThatXmlDoesNotHave) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    for (char const* name : {"", "a b", "*", "1a", "-", "<"}) {
        EXPECT_THROW(root.setAttribute(name, "x"), KRLDocumentException) << name;
        EXPECT_THROW(owner.document().createElement(name), KRLDocumentException) << name;
    }
    EXPECT_EQ(owner.elementCount(), 1U);
    EXPECT_EQ(root.getAttributes().getLength(), 0U);
}

TEST(KRLIDOMElement, CarriesAllOfUnicode) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    I18NString const text(u"Vertr\u00E4ge \u65E5\u672C \U0001F600");
    root.setAttribute(I18NString(u"\u65E5\u672C"), text);
    root.appendChild(owner.document().createTextNode(text));
    EXPECT_EQ(root.getAttribute(I18NString(u"\u65E5\u672C")), text);
    EXPECT_EQ(root.getFirstChild().getNodeValue(), text);
}

TEST(KRLIDOMElement, CopiesTextIntoTheDocument) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    char16_t units[] = u"before";
    I18NString alias;
    alias.setAlias(units, 6);
    root.setAttribute("a", alias);
    units[0] = u'B';
    EXPECT_EQ(root.getAttribute("a"), "before");
}

TEST(KRLIDOMElement, HandsOutTextThatOutlivesTheDocument) {
    I18NString text;
    {
        KRLIDOM_OwnedDocument const owner("root");
        KRLIDOM_Element const root = owner.document().getDocumentElement();
        root.setAttribute("a", "a text of more than twenty-seven units");
        text = root.getAttribute("a");
    }
    EXPECT_EQ(text, "a text of more than twenty-seven units");
}

TEST(KRLIDOMHelper, FindsTheFirstElementInDocumentOrder) {
    KRLIDOM_OwnedDocument const owner = KRLIDOM_Reader::parse(
        "<a><b n='1'><c n='2'/></b><!--c--><c n='3'/>c<d><c n='4'/></d></a>", "test");
    KRLIDOM_Node const root = owner.document().getDocumentElement();
    auto const found = [](KRLIDOM_Node const& from, char const* tag) {
        return KRLIDOM_Helper::findFirstElement(from, tag).getAttribute("n");
    };
    EXPECT_EQ(found(owner.document(), "c"), "2");
    EXPECT_EQ(found(root, "c"), "2");
    EXPECT_EQ(found(root.getFirstChild(), "b"), "1");
    EXPECT_TRUE(KRLIDOM_Helper::findFirstElement(root, "a") == root);
    EXPECT_TRUE(KRLIDOM_Helper::findFirstElement(root, "missing").isNull());
}

TEST(KRLIDOMHelper, DoesNotLeaveTheTreeThatItSearches) {
    KRLIDOM_OwnedDocument const owner = KRLIDOM_Reader::parse("<a><b><x/></b><c/></a>", "test");
    KRLIDOM_Node const b = owner.document().getDocumentElement().getFirstChild();
    EXPECT_TRUE(KRLIDOM_Helper::findFirstElement(b, "c").isNull());
    EXPECT_TRUE(KRLIDOM_Helper::findFirstElement(b.getFirstChild(), "c").isNull());
}

TEST(KRLIDOMHelper, TellsXmlNames) {
    for (char const* name : {"a", "_", ":", "a-b.c1", "\xC3\xA4", "\xE6\x97\xA5"}) {
        EXPECT_TRUE(KRLIDOM_Helper::isName(name)) << name;
    }
    for (char const* name : {"", "*", "a b", "1", "-a", ".", "a<", "./@name"}) {
        EXPECT_FALSE(KRLIDOM_Helper::isName(name)) << name;
    }
}

} // namespace

#include "KRLIDOM_OwnedDocument.h"

#include "KRLException.h"
#include "KRLIDOM_Platform.h"
#include "KRLIDOM_Writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

namespace {

using testing::EndsWith;

std::string failureOf(KRLIDOM_Document const& document, char const* tag) {
    try {
        document.createElement(tag);
    } catch (KRLLimitException const& failure) {
        return failure.what();
    }
    return {};
}

TEST(KRLIDOMOwnedDocument, HoldsOneEmptyElementAtFirst) {
    KRLIDOM_OwnedDocument const owner("Response");
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(owner.document()), "<Response/>");
    EXPECT_EQ(owner.elementCount(), 1U);
}

TEST(KRLIDOMOwnedDocument, OwnsNothingByDefault) {
    KRLIDOM_OwnedDocument const owner;
    EXPECT_TRUE(owner.document().isNull());
    EXPECT_EQ(owner.elementCount(), 0U);
    EXPECT_EQ(owner.byteCount(), 0U);
}

TEST(KRLIDOMOwnedDocument, KeepsNodesAndLimitsWhenMoved) {
    KRLIDOM_OwnedDocument first("root", {.elements = 2});
    KRLIDOM_Document const document = first.document();
    KRLIDOM_OwnedDocument second(std::move(first));
    EXPECT_TRUE(first.document().isNull()); // NOLINT: the state after a move is promised
    EXPECT_TRUE(second.document() == document);
    document.getDocumentElement().appendChild(document.createElement("a"));
    EXPECT_EQ(second.elementCount(), 2U);
    EXPECT_NE(failureOf(document, "b"), "");
    KRLIDOM_OwnedDocument third("other");
    third = std::move(second);
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(third.document()), "<root><a/></root>");
}

TEST(KRLIDOMOwnedDocument, RefusesARootThatIsNoName) {
    EXPECT_THROW(KRLIDOM_OwnedDocument("a b"), KRLDocumentException);
    EXPECT_THROW(KRLIDOM_OwnedDocument(""), KRLDocumentException);
}

TEST(KRLIDOMOwnedDocument, EndsAtItsElementLimit) {
    KRLIDOM_OwnedDocument const owner("root", {.elements = 3});
    KRLIDOM_Document const document = owner.document();
    document.createElement("a");
    document.createElement("b");
    EXPECT_EQ(failureOf(document, "c"),
              "The document holds 3 elements, which is the limit. Ask for less with \"Depth\" or a "
              "start path, or raise the limit.");
    EXPECT_EQ(owner.elementCount(), 3U);
    document.getDocumentElement().setAttribute("still", "usable");
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(document), "<root still=\"usable\"/>");
}

TEST(KRLIDOMOwnedDocument, NamesWhatMovesItsLimitsWhenTheHostSaysIt) {
    KRLIDOM_OwnedDocument const few(
        "root", {.elements = 1, .elementsName = "-e", .bytesName = "another option"});
    EXPECT_THAT(failureOf(few.document(), "a"), EndsWith(", or raise the limit with -e."));
    try {
        KRLIDOM_OwnedDocument const small("root", {.bytes = 1, .bytesName = "-b"});
        FAIL() << "nothing was raised";
    } catch (KRLLimitException const& failure) {
        EXPECT_THAT(failure.what(), EndsWith(", or raise the limit with -b."));
    }
}

TEST(KRLIDOMOwnedDocument, CountsASpareElementWhenItGetsAPlace) {
    KRLIDOM_OwnedDocument const owner("root", {.elements = 2});
    KRLIDOM_Document const document = owner.document();
    KRLIDOM_Element const root = document.getDocumentElement();
    KRLIDOM_Element const first = document.createSpareElement("first");
    KRLIDOM_Element const second = document.createSpareElement("second");
    EXPECT_EQ(owner.elementCount(), 1U);
    EXPECT_TRUE(document.appendSpare(root, first) == first);
    EXPECT_EQ(owner.elementCount(), 2U);
    EXPECT_THROW(document.appendSpare(root, second), KRLLimitException);
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(document), "<root><first/></root>");
    EXPECT_EQ(owner.elementCount(), 2U);
    document.createSpareElement("third"); // at the limit too
}

TEST(KRLIDOMOwnedDocument, CountsNothingWhereNothingIsAppended) {
    KRLIDOM_OwnedDocument const owner("root", {.elements = 2});
    KRLIDOM_Document const document = owner.document();
    EXPECT_TRUE(document.appendSpare(KRLIDOM_Node(), document.createSpareElement("a")).isNull());
    EXPECT_TRUE(document.appendSpare(document.getDocumentElement(), KRLIDOM_Element()).isNull());
    EXPECT_TRUE(KRLIDOM_Document().createSpareElement("a").isNull());
    EXPECT_THROW(document.createSpareElement("a b"), KRLDocumentException);
    EXPECT_EQ(owner.elementCount(), 1U);
}

TEST(KRLIDOMOwnedDocument, CountsByWhateverWayTheDocumentIsReached) {
    KRLIDOM_OwnedDocument const owner("root", {.elements = 2});
    KRLIDOM_Document const reached(KRLIDOM_Node(owner.document().getDocumentElement()));
    reached.createElement("a");
    EXPECT_NE(failureOf(owner.document(), "b"), "");
    EXPECT_NE(failureOf(owner.document().getDocumentElement().getOwnerDocument(), "b"), "");
}

TEST(KRLIDOMOwnedDocument, AllowsTwoMillionElementsUnlessToldOtherwise) {
    EXPECT_EQ(KRLIDOM_Limits().elements, 2'000'000U);
    EXPECT_EQ(KRLIDOM_Limits().bytes, 0U);
}

TEST(KRLIDOMOwnedDocument, EndsAtItsByteBudget) {
    constexpr std::size_t budget = 200'000;
    KRLIDOM_OwnedDocument const owner("root", {.elements = 1'000'000, .bytes = budget});
    KRLIDOM_Document const document = owner.document();
    KRLIDOM_Element const root = document.getDocumentElement();
    std::string said;
    try {
        for (;;) {
            root.appendChild(document.createElement("a"));
        }
    } catch (KRLLimitException const& failure) {
        said = failure.what();
    }
    EXPECT_EQ(said, "The document takes more than 200000 bytes of memory, which is the limit. Ask "
                    "for less with \"Depth\" or a start path, or raise the limit.");
    EXPECT_LE(owner.byteCount(), budget);
    EXPECT_GT(owner.elementCount(), 100U);
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(root).substr(0, 10), "<root><a/>");
}

TEST(KRLIDOMOwnedDocument, EndsAtItsByteBudgetForAttributesAndText) {
    KRLIDOM_OwnedDocument const owner("root", {.elements = 10, .bytes = 100'000});
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    I18NString const large(std::u16string(100'000, u'x'));
    EXPECT_THROW(root.setAttribute("a", large), KRLLimitException);
    EXPECT_THROW(owner.document().createTextNode(large), KRLLimitException);
    EXPECT_THROW(owner.document().createElement(large), KRLLimitException);
    root.setAttribute("b", "small");
    EXPECT_EQ(root.getAttribute("b"), "small");
}

TEST(KRLIDOMOwnedDocument, MakesNoDocumentInTooSmallABudget) {
    EXPECT_THROW(KRLIDOM_OwnedDocument("root", {.elements = 10, .bytes = 100}), KRLLimitException);
    EXPECT_THROW(KRLIDOM_OwnedDocument("root", {.elements = 0, .bytes = 0}), KRLLimitException);
}

TEST(KRLIDOMOwnedDocument, CountsItsBytes) {
    KRLIDOM_OwnedDocument const owner("root");
    std::size_t const before = owner.byteCount();
    owner.document().createTextNode(I18NString(std::u16string(1'000'000, u'x')));
    EXPECT_GE(owner.byteCount(), before + 2'000'000);
    EXPECT_LT(owner.byteCount(), before + 2'100'000);
}

// Memory that answers as a machine without any would.
class NoMemory final : public xercesc::MemoryManager {
public:
    void* allocate(XMLSize_t size) override {
        if (m_empty) {
            throw xercesc::OutOfMemoryException();
        }
        return ::operator new(size);
    }
    void deallocate(void* block) override { ::operator delete(block); }
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }
    void runOut() { m_empty = true; }

private:
    bool m_empty = false;
};

TEST(KRLIDOMDocument, PassesMissingMemoryOnAsALimit) {
    KRLIDOM_Initialize();
    NoMemory memory;
    auto* const made = xercesc::DOMImplementation::getImplementation()->createDocument(&memory);
    KRLIDOM_Document const document{KRLIDOM_Node(made)};
    EXPECT_FALSE(document.createElement("counted-by-nobody").isNull());
    memory.runOut();
    EXPECT_THROW(document.createTextNode(I18NString(std::u16string(100'000, u'x'))),
                 KRLLimitException);
    made->release();
}

} // namespace

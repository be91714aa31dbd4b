// Names that are put into a document, and how slowly the XML library finds them.

#include "KRLException.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "KRLIDOM_OwnedDocument.h"
#include "tests/support/AlikeNames.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>

namespace {

constexpr unsigned mostAlike = 320;
constexpr int mostNames = 50'000;

/// Puts in names that are alike until it is refused; gives how many there were.
unsigned alikeNamesUntilRefused(std::function<void(I18NString const& name)> const& put) {
    for (unsigned number = 0; number < 1'000; ++number) {
        try {
            put(alikeName(number).c_str());
        } catch (KRLLimitException const& failure) {
            EXPECT_STREQ(failure.what(),
                         "Too many names in the document are so much alike that the XML library "
                         "finds them slowly (321; at most 320 allowed). Ask for fewer properties "
                         "at a time.");
            return number;
        }
    }
    return 0;
}

TEST(KRLIDOMDocumentNames, OfAttributesThatAreAlikeAreRefusedBeforeTheyAreSlowToFind) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    auto const put = [&](I18NString const& name) { root.setAttribute(name, "x"); };
    EXPECT_EQ(alikeNamesUntilRefused(put), mostAlike);
    EXPECT_EQ(root.getAttributes().getLength(), mostAlike);
    EXPECT_THROW(put(alikeName(mostAlike).c_str()), KRLLimitException); // now as then
    put(alikeName(0).c_str());                                          // known since
    put("another");
    EXPECT_EQ(root.getAttribute("another"), "x");
}

TEST(KRLIDOMDocumentNames, OfElementsThatAreAlikeAreRefusedBeforeTheyAreSlowToFind) {
    KRLIDOM_OwnedDocument const owner("root");
    EXPECT_EQ(alikeNamesUntilRefused(
                  [&](I18NString const& name) { owner.document().createElement(name); }),
              mostAlike);
    KRLIDOM_OwnedDocument const other("root");
    EXPECT_EQ(alikeNamesUntilRefused(
                  [&](I18NString const& name) { other.document().createSpareElement(name); }),
              mostAlike);
}

TEST(KRLIDOMDocumentNames, OfElementsAndAttributesLieInOneTable) {
    KRLIDOM_OwnedDocument const owner("root");
    bool isElement = false;
    EXPECT_EQ(alikeNamesUntilRefused([&](I18NString const& name) {
                  isElement = !isElement;
                  isElement ? static_cast<void>(owner.document().createElement(name))
                            : owner.document().getDocumentElement().setAttribute(name, "x");
              }),
              mostAlike);
}

TEST(KRLIDOMDocumentNames, ThatNobodyChoseEndTheDocumentAtTheirNumberOnly) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Document const document = owner.document();
    for (int number = 1; number < mostNames; ++number) { // the root has one
        document.createElement(("property" + std::to_string(number)).c_str());
    }
    EXPECT_FALSE(document.createElement("property1").isNull());
    try {
        document.createElement("another");
        FAIL() << "nothing was raised";
    } catch (KRLLimitException const& failure) {
        EXPECT_STREQ(failure.what(), "The document has too many different names (50001; at most "
                                     "50000 allowed). Ask for fewer properties at a time.");
    }
}

TEST(KRLIDOMDocumentNames, AreCountedForEachDocument) {
    for (int round = 0; round < 3; ++round) {
        KRLIDOM_OwnedDocument const owner("root");
        KRLIDOM_OwnedDocument const other("root");
        for (unsigned number = 0; number < mostAlike; ++number) {
            owner.document().getDocumentElement().setAttribute(alikeName(number).c_str(), "x");
            other.document().getDocumentElement().setAttribute(
                alikeName(number + mostAlike).c_str(), "x");
        }
        EXPECT_EQ(owner.document().getDocumentElement().getAttributes().getLength(), mostAlike);
        EXPECT_EQ(other.document().getDocumentElement().getAttributes().getLength(), mostAlike);
    }
}

} // namespace

#include "host/import/xml/DocumentOutline.h"
#include "host/insight/RequestDocumentChecks.h"
#include "tests/growth/GeneratedText.h"
#include "tests/growth/Growth.h"

namespace {

// As many that what the XML library makes room for with any document weighs little.
testing::AssertionResult followsItsText(std::string const& part) {
    return staysInProportion(32'000, [&](std::size_t size) {
        std::string const text = "<Metadata>" + repeated(part, size) + "</Metadata>";
        return countWork(text.size(), [&] {
            vex::DocumentOutline const outline = vex::outlineOf(text);
            EXPECT_GE(outline.size(), 1U);
            vex::checkRequestDocument(outline, "r.xml");
        });
    });
}

} // namespace

TEST(DocumentOutlineGrowth, FollowsTheElementsOfARequest) {
    EXPECT_TRUE(followsItsText("<a/>"));
    EXPECT_TRUE(followsItsText("<Property n='*/@name'/>"));
    EXPECT_TRUE(followsItsText("<Property><Property/></Property>"));
}

TEST(DocumentOutlineGrowth, FollowsTheAttributesOfARequest) {
    EXPECT_TRUE(followsItsText("<Property a='' b='' c='' d='' e='' f='' g='' h=''/>"));
}

TEST(DocumentOutlineGrowth, FollowsTheTextsOfARequest) {
    EXPECT_TRUE(followsItsText("text "));
    EXPECT_TRUE(followsItsText("<a>x</a>"));
}

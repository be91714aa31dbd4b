#include "provider/tree/VexReferenceText.h"

#include <gtest/gtest.h>

namespace {

TEST(ReferenceText, ReadsFromTheOutermostPartToTheObject) {
    I18NString const object("Quantity");
    I18NString const subject("Orders");
    VexReferenceText text;
    text.putInFront(object);
    text.putInFront(subject);
    I18NString reference("x");
    text.appendTo(reference);
    EXPECT_EQ(reference.toUtf8(), "x.[Orders].[Quantity]");
}

TEST(ReferenceText, BeginsWithoutADot) {
    I18NString const part("Sales");
    VexReferenceText text;
    text.putInFront(part);
    I18NString reference;
    text.appendTo(reference);
    EXPECT_EQ(reference.toUtf8(), "[Sales]");
}

} // namespace

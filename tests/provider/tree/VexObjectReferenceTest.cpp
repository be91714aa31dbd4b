#include "provider/tree/VexObjectReference.h"

#include <gtest/gtest.h>

namespace {

TEST(ObjectReference, ReadsFromTheOutermostPartToTheObject) {
    I18NString reference("x");
    BuildObjectReference({"Orders", "Quantity"}, reference);
    EXPECT_EQ(reference.toUtf8(), "x.[Orders].[Quantity]");
}

TEST(ObjectReference, BeginsWithoutADot) {
    I18NString reference;
    BuildObjectReference({"Sales"}, reference);
    EXPECT_EQ(reference.toUtf8(), "[Sales]");
}

TEST(ObjectReference, OfNoPartsAddsNothing) {
    I18NString reference("x");
    BuildObjectReference({}, reference);
    EXPECT_EQ(reference.toUtf8(), "x");
}

} // namespace

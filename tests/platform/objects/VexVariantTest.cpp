#include "I18NString.h"
#include "KRLIDOM_Node.h"
#include "KRLThreadMutex.h"
#include "VexErrorCode.h"
#include "VexNotification.h"
#include "VexParams.h"
#include "VexTrace.h"
#include "Vex_I18NString_Collection.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(VexVariant, KeepsItsTypeNumbers) {
    I18NString text;
    KRLIDOM_Node node;
    VexVariant pointer;
    pointer = static_cast<void*>(&text);
    EXPECT_EQ(VexVariant().GetType(), 0);
    EXPECT_EQ(VexVariant(5L).GetType(), 2);
    EXPECT_EQ(VexVariant(&text).GetType(), 3);
    EXPECT_EQ(VexVariant(VEX_HANDLE(5)).GetType(), 4);
    EXPECT_EQ(pointer.GetType(), 7);
    EXPECT_EQ(VexVariant(&node).GetType(), 8);
}

TEST(VexVariant, GivesBackWhatItHolds) {
    I18NString text;
    KRLIDOM_Node node;
    EXPECT_EQ(static_cast<long>(VexVariant(-5L)), -5);
    EXPECT_EQ(static_cast<I18NString*>(VexVariant(&text)), &text);
    EXPECT_EQ(static_cast<KRLIDOM_Node*>(VexVariant(&node)), &node);
    EXPECT_TRUE(static_cast<VEX_HANDLE>(VexVariant(VEX_HANDLE(5))) == VEX_HANDLE(5));
    VexVariant variant(&text);
    variant = 7L;
    EXPECT_EQ(static_cast<long>(variant), 7);
    variant = static_cast<void*>(&text);
    EXPECT_EQ(static_cast<void*>(variant), &text);
}

TEST(VexVariant, GivesNothingAsAnotherType) {
    I18NString text;
    VexVariant const number(5L);
    EXPECT_EQ(static_cast<I18NString*>(number), nullptr);
    EXPECT_EQ(static_cast<KRLIDOM_Node*>(number), nullptr);
    EXPECT_EQ(static_cast<void*>(number), nullptr);
    EXPECT_FALSE(static_cast<VEX_HANDLE>(number).IsNotNull());
    EXPECT_EQ(static_cast<long>(VexVariant(&text)), 0);
    EXPECT_EQ(static_cast<long>(VexVariant()), 0);
}

TEST(VexParams, GiveAnEmptyVariantPastTheEnd) {
    VexParams parameters;
    parameters.AddParam(VexVariant(1L));
    EXPECT_EQ(parameters.size(), 1U);
    EXPECT_EQ(static_cast<long>(parameters[0]), 1);
    EXPECT_EQ(parameters[1].GetType(), VexVariant::Empty);
    parameters.clear();
    EXPECT_EQ(parameters.size(), 0U);
}

TEST(VexErrorCode, KeepsItsNumbers) {
    EXPECT_EQ(VexErrorCode::Handled, 1);
    EXPECT_EQ(VexErrorCode::NotHandled, 6);
    VexErrorCode const code(1, "text");
    EXPECT_EQ(code.GetCode(), 1);
    EXPECT_STREQ(code.GetText(), "text");
}

TEST(VexNotification, KeepsItsNumbers) {
    EXPECT_EQ(VexNotification::SessionOpened, 0);
    EXPECT_EQ(VexNotification::SessionClosed, 1);
    EXPECT_EQ(VexNotification::ModelReloaded, 2);
}

TEST(VexI18NStringCollection, DropsWhatIsAlreadyThere) {
    Vex_I18NString_Collection texts;
    texts.Add("en");
    texts.Add("de");
    texts.Add("en");
    EXPECT_EQ(texts.Size(), 2U);
    EXPECT_EQ(texts[0], "en");
    EXPECT_EQ(texts[1], "de");
}

TEST(VexI18NStringCollection, GivesTheEmptyTextPastTheEnd) {
    Vex_I18NString_Collection const texts;
    EXPECT_EQ(texts[0], "");
    EXPECT_EQ(texts[99], "");
}

TEST(KRLThreadGuard, LetsGoWhenAnExceptionPasses) {
    KRLThreadMutex mutex(0);
    try {
        KRLThreadGuard const guard(mutex);
        throw std::runtime_error("on the way");
    } catch (std::runtime_error const&) {
    }
    KRLThreadGuard const again(mutex);
}

std::string traced;

TEST(OutputDebugString, GoesToTheSinkWhileThereIsOne) {
    OutputDebugString("lost");
    VexSetTraceSink([](char const* text) { traced += text; });
    OutputDebugString("kept");
    VexSetTraceSink(nullptr);
    OutputDebugString("lost again");
    EXPECT_EQ(traced, "kept");
}

} // namespace

#include "VexException.h"

#include <exception>
#include <string>

#include <gtest/gtest.h>

namespace {

VexException notFound(char const* name) {
    VexMessage message(1171025905);
    message << KRLMessageParm(I18NString(name));
    VexException exception(1171025905);
    exception << message;
    return exception;
}

TEST(VexException, IsRaisedInThreeSteps) {
    try {
        notFound("Orders").raise({"VexMDMaProvider", 808}, "VexMDMaProvider::ProcessRequest",
                                 "KRL_THROW");
        FAIL() << "raise came back";
    } catch (VexException const& raised) {
        EXPECT_EQ(raised.GetId(), 1171025905U);
        EXPECT_STREQ(raised.GetLocation().source, "VexMDMaProvider");
        EXPECT_EQ(raised.GetLocation().line, 808);
        EXPECT_STREQ(raised.GetFunction(), "VexMDMaProvider::ProcessRequest");
        EXPECT_STREQ(raised.GetKind(), "KRL_THROW");
        ASSERT_EQ(raised.GetMessages().size(), 1U);
        VexMessage const& message = raised.GetMessages()[0];
        EXPECT_EQ(message.GetId(), 1171025905U);
        ASSERT_EQ(message.GetComponents().GetParameters().size(), 1U);
        EXPECT_EQ(message.GetComponents().GetParameters()[0].GetText(), "Orders");
        EXPECT_NE(std::string(raised.what()).find("\"Orders\""), std::string::npos);
    }
}

TEST(VexException, IsCaughtAsWhatPassesBetweenHostAndPlugIn) {
    EXPECT_THROW(notFound("x").raise({"s", 1}, "f", "k"), KRLException);
    EXPECT_THROW(notFound("x").raise({"s", 1}, "f", "k"), std::exception);
}

TEST(VexException, ThrowsACopyOfItself) {
    VexException exception = notFound("Orders");
    try {
        exception.raise({"s", 1}, "f", "k");
    } catch (VexException& raised) {
        EXPECT_NE(&raised, &exception);
        EXPECT_EQ(exception.GetLocation().line, 1);
        EXPECT_STREQ(exception.what(), raised.what());
    }
}

TEST(VexException, KeepsItsTextsWhenThoseItWasGivenAreGone) {
    std::string texts[] = {"Source", "Function", "Kind"};
    std::exception_ptr kept;
    try {
        VexException(42).raise({texts[0].c_str(), 7}, texts[1].c_str(), texts[2].c_str());
    } catch (VexException const& raised) {
        kept = std::make_exception_ptr(raised);
    }
    for (std::string& text : texts) {
        text.assign(text.size(), '?');
    }
    try {
        std::rethrow_exception(kept);
    } catch (VexException const& raised) {
        EXPECT_STREQ(raised.GetLocation().source, "Source");
        EXPECT_EQ(raised.GetLocation().line, 7);
        EXPECT_STREQ(raised.GetFunction(), "Function");
        EXPECT_STREQ(raised.GetKind(), "Kind");
    }
}

TEST(VexException, HasALocationOnlyAfterTheRaise) {
    VexException const exception(1171025905);
    EXPECT_STREQ(exception.GetLocation().source, "");
    EXPECT_EQ(exception.GetLocation().line, 0);
    EXPECT_STREQ(exception.GetFunction(), "");
    EXPECT_STREQ(exception.GetKind(), "");
    EXPECT_TRUE(exception.GetMessages().empty());
}

TEST(VexException, SaysWhatAllItsMessagesSay) {
    VexException exception = notFound("Orders");
    VexMessage const second(1170809568);
    exception << second;
    std::string const first = notFound("Orders").what();
    EXPECT_EQ(exception.what(), first + " " + second.GetText());
}

TEST(VexException, SaysWhatItsNumberSaysWithoutMessages) {
    EXPECT_EQ(VexException(1170809568).what(), VexMessage(1170809568).GetText());
}

TEST(VexMessage, PutsParametersInTheirPlaces) {
    VexMessage message(1170551942);
    message << KRLMessageParm(I18NString("v1, v2")) << KRLMessageParm(I18NString("v\xC3\xA4"));
    EXPECT_EQ(message.GetText(),
              "None of the requested security views may be used. Requested: v\xC3\xA4. Available "
              "to this user: v1, v2. Request an available view that the model holds, or none to "
              "use all of them.");
}

TEST(VexMessage, DoesNotLookForPlacesInsideAParameter) {
    VexMessage message(1170551942);
    message << KRLMessageParm(I18NString("{1}")) << KRLMessageParm(I18NString("{0}"));
    EXPECT_NE(message.GetText().find("Requested: {0}."), std::string::npos);
    EXPECT_NE(message.GetText().find("user: {1}."), std::string::npos);
}

TEST(VexMessage, ReadsWellWithoutItsParameters) {
    char const* const plain =
        "None of the security views in question can be used: this user may not use them, or the "
        "model does not hold them. Request an available view that the model holds, or none to use "
        "all of them.";
    VexMessage message(1170551942);
    EXPECT_EQ(message.GetText(), plain);
    message << KRLMessageParm(I18NString("v1")); // one of two
    EXPECT_EQ(message.GetText(), plain);
    EXPECT_EQ(VexException(1170551942).what(), std::string(plain));
}

TEST(VexMessage, SaysSoWhenItHasNoText) {
    EXPECT_EQ(VexMessage(42).GetText(), "Failure 42; it has no text.");
}

TEST(KRLDocumentException, SaysWhere) {
    KRLDocumentException const exception("a.xml", 3, 14, "It is wrong.");
    EXPECT_STREQ(exception.what(), "a.xml:3:14: It is wrong.");
    EXPECT_EQ(exception.GetProblem(), "It is wrong.");
    EXPECT_EQ(exception.GetLine(), 3U);
    EXPECT_EQ(exception.GetColumn(), 14U);
}

TEST(KRLDocumentException, LeavesOutWhatIsNotKnown) {
    EXPECT_STREQ(KRLDocumentException("a.xml", 0, 0, "It is wrong.").what(), "a.xml: It is wrong.");
    EXPECT_STREQ(KRLDocumentException("a.xml", 3, 0, "It is wrong.").what(),
                 "a.xml:3: It is wrong.");
    EXPECT_STREQ(KRLDocumentException("", 0, 0, "It is wrong.").what(), "It is wrong.");
    EXPECT_STREQ(KRLDocumentException("", 3, 1, "It is wrong.").what(), "3:1: It is wrong.");
}

TEST(KRLLimitException, SaysWhatItWasGiven) {
    KRLLimitException const exception("Too much.");
    EXPECT_STREQ(exception.what(), "Too much.");
    EXPECT_STREQ(KRLLimitException(exception).what(), "Too much.");
}

} // namespace

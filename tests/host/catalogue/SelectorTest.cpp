#include "host/catalogue/Selector.h"

#include <gtest/gtest.h>

namespace {

using vex::Selector;

std::string utf8(std::u16string const& text) {
    return I18NString(text).toUtf8();
}

/// What was read, in words; the complaint in brackets.
std::string told(std::string const& text) {
    Selector selector;
    std::string const complaint = Selector::read(I18NString::fromUtf8(text), selector);
    if (!complaint.empty()) {
        return '(' + complaint.substr(0, complaint.find(';')) + ')';
    }
    constexpr char const* reaches[] = {"", "members of ", "all in ", "everything"};
    std::string words = selector.className.empty() ? "" : utf8(selector.className) + " of ";
    words += reaches[static_cast<int>(selector.reach)];
    for (std::u16string const& name : selector.reference) {
        words += '<' + utf8(name) + '>';
    }
    words += selector.id.empty() ? "" : "id " + utf8(selector.id);
    for (Selector::Test const& test : selector.tests) {
        words += " with " + utf8(test.property) + (test.isWord ? "~" : "=") + utf8(test.value);
    }
    return words;
}

TEST(Selector, IsAReferenceOrAnId) {
    EXPECT_EQ(told("[Sales].[Orders]"), "<Sales><Orders>");
    EXPECT_EQ(told(" [Sales] . [Size [EU]]] "), "<Sales><Size [EU]>");
    EXPECT_EQ(told("#q1"), "id q1");
    EXPECT_EQ(told("#\"a/b@c\"\"d\"/**"), "all in id a/b@c\"d");
}

TEST(Selector, ReachesMembersWhatIsBelowAndEverything) {
    EXPECT_EQ(told("[Sales]/*"), "members of <Sales>");
    EXPECT_EQ(told("[Sales]/**"), "all in <Sales>");
    EXPECT_EQ(told("#n1/**"), "all in id n1");
    EXPECT_EQ(told("**"), "everything");
}

TEST(Selector, NarrowsByClass) {
    EXPECT_EQ(told("querySubject:"), "querySubject of everything");
    EXPECT_EQ(told("queryItem:[Sales]/**"), "queryItem of all in <Sales>");
    EXPECT_EQ(told("queryItem@usage=fact"), "queryItem of everything with usage=fact");
}

TEST(Selector, NarrowsByPropertiesAndTags) {
    EXPECT_EQ(told("**@usage=fact@datatype=int32"),
              "everything with usage=fact with datatype=int32");
    EXPECT_EQ(told("[Sales]/**@tag=pii"), "all in <Sales> with tags~pii");
    EXPECT_EQ(told("**@tags=pii"), "everything with tags=pii");
    EXPECT_EQ(told("**@mail=\"a@b\"@x=y z "), "everything with mail=a@b with x=y z");
}

TEST(Selector, SaysWhatToWriteInstead) {
    EXPECT_EQ(told(""), "(the selector is empty)");
    EXPECT_EQ(told("[Sales"), "(the reference \"[Sales\" does not end)");
    EXPECT_EQ(told("[Sales]."), "(the reference \"[Sales].\" does not end)");
    EXPECT_EQ(told("Sales"), "(nothing is known to be meant by \"Sales\")");
    EXPECT_EQ(told("#"), "(no id stands behind \"#\")");
    EXPECT_EQ(told("#\"a"), "(no id stands behind \"#\")");
    EXPECT_EQ(told("[Sales]/***"), "(\"*\" stands behind the end of the selector)");
    EXPECT_EQ(told("**@usage"),
              "(\"@\" is followed by a property and its value, such as @usage=fact or @tag=pii)");
    EXPECT_EQ(told("**@usage="), "(no value stands behind \"=\")");
    EXPECT_EQ(told("**@usage=\"a"), "(the quotes behind \"=\" are not closed)");
}

TEST(Selector, OfAnIdIsReadAgain) {
    for (std::string const id : {"q1", "a/b", "a@b", "a\"b", "a b", "[x]", "*"}) {
        Selector selector;
        EXPECT_EQ(Selector::read(I18NString::fromUtf8(vex::selectorOfId(id)), selector), "");
        EXPECT_EQ(utf8(selector.id), id);
    }
}

TEST(Selector, WordsOfTagsAreApartByBlanksAndCommas) {
    std::string words;
    vex::forEachWord(u" pii, finance;a\n", [&](std::u16string_view word) {
        words += '<' + I18NString(word).toUtf8() + '>';
    });
    EXPECT_EQ(words, "<pii><finance><a>");
}

} // namespace

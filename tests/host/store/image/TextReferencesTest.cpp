#include "host/store/image/TextReferences.h"

#include <gtest/gtest.h>

namespace {

/// "before|a|b", with "'" before what is quoted and "&" before a member's key.
std::vector<std::string> referencesIn(char const* text) {
    std::vector<std::string> found;
    I18NString const whole(text);
    vex::TextReferences references(whole);
    while (vex::TextReference const* const each = references.next()) {
        std::string line = (each->isQuoted() ? "'" : "") +
                           std::string(each->isMemberKey() ? "&" : "") +
                           I18NString(each->before()).toUtf8();
        for (std::u16string_view const name : each->names()) {
            line += '|' + I18NString(name).toUtf8();
        }
        found.push_back(line);
    }
    return found;
}

using Found = std::vector<std::string>;

TEST(TextReferences, AreRunsOfBracketedNames) {
    EXPECT_EQ(referencesIn("sum([A].[B] . [C]) - [D]"), (Found{"|A|B|C", "|D"}));
    EXPECT_EQ(referencesIn("[Size [EU]]] > 3"), (Found{"|Size [EU]"}));
    EXPECT_EQ(referencesIn("no names, an [open one"), Found{});
}

TEST(TextReferences, KnowTheWordOrQuotedNameRightBeforeThem) {
    EXPECT_EQ(referencesIn("Sales[Amount] + 'Order Lines'[Unit Cost] + sum([X])"),
              (Found{"Sales|Amount", "Order Lines|Unit Cost", "|X"}));
    EXPECT_EQ(referencesIn("'It''s'[Own]"), (Found{"It's|Own"}));
}

TEST(TextReferences, KnowWhatStandsInALiteral) {
    EXPECT_EQ(referencesIn("[A] = 'as in [B]' or \"[C]\" or [D]"),
              (Found{"|A", "'|B", "'|C", "|D"}));
    EXPECT_EQ(referencesIn("the customer's [A] and the shop's [B]"), (Found{"|A", "|B"}));
}

TEST(TextReferences, KnowWhichOfManyMarksCloses) {
    EXPECT_EQ(referencesIn("[A]][B] [[C] [D]]] []]] []] [E"), (Found{"|A][B", "|[C", "|D]", "|]"}));
    EXPECT_EQ(referencesIn("\"\"\"[A]\" \"\"[B]"), (Found{"'|A", "|B"}));
    EXPECT_EQ(referencesIn("'''[A] ''[B] 'c''[C] d"), (Found{"'|A", "'|B", "|C"}));
    EXPECT_EQ(referencesIn("'a'[B] \"a[C]"), (Found{"a|B", "a|C"}));
}

TEST(TextReferences, KnowKeysOfMembers) {
    EXPECT_EQ(referencesIn("[Time].[Year].&[2004]"), (Found{"|Time|Year", "&|2004"}));
}

} // namespace

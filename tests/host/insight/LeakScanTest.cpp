#include "host/insight/LeakScan.h"

#include "host/import/xml/ModelLoader.h"
#include "host/insight/ObjectText.h"

#include <gtest/gtest.h>

namespace {

std::shared_ptr<vex::Model const> leakyModel(std::string const& members) {
    return vex::loadModelText(R"(<model defaultLocale="en">
      <locales><locale>en</locale><locale>de</locale></locales>
      <namespace id="n" name="Sales"><querySubject id="q" name="Orders">
        <queryItem id="total" name="Total"/><queryItem id="odd" name="Odd ] name"/>
      </querySubject>)" + members +
                                  "</namespace></model>",
                              "leaks.model.xml");
}

/// "object property named" of each leak, nothing but the namespace and the
/// query subject being seen besides the object "x".
std::vector<std::string> leaksOf(std::string const& members) {
    auto const model = leakyModel(members);
    auto const canSee = [](VEX_HANDLE object) {
        I18NString const id = vex::idOf(object);
        return id == "n" || id == "q" || id == "x";
    };
    std::vector<std::string> found;
    for (vex::Leak const& leak : vex::findLeaks(*model, {model->findById("x")}, canSee)) {
        found.push_back(vex::idOf(leak.object).toUtf8() + ' ' + leak.property.toUtf8() + ' ' +
                        vex::idOf(leak.named).toUtf8());
    }
    return found;
}

using Leaks = std::vector<std::string>;

std::vector<std::string> namesIn(std::string const& text) {
    auto const model = leakyModel("");
    std::vector<std::string> found;
    for (auto const& named : vex::objectsNamedIn(*model, I18NString::fromUtf8(text))) {
        found.push_back(named.reference.toUtf8());
    }
    return found;
}

TEST(ObjectsNamedIn, AreThoseOfTheLongestReferenceInATextThatLeadsSomewhere) {
    EXPECT_EQ(namesIn("sum([Sales].[Orders].[Total]) + [Sales].[Orders]"),
              (Leaks{"[Sales].[Orders].[Total]", "[Sales].[Orders]"}));
    EXPECT_EQ(namesIn("[Sales].[Orders].[Gone]"), (Leaks{"[Sales].[Orders]"}));
}

TEST(ObjectsNamedIn, MayHaveBlanksAroundTheDotsAndDoubledBrackets) {
    EXPECT_EQ(namesIn("[Sales] . [Orders].[Odd ]] name]"),
              (Leaks{"[Sales].[Orders].[Odd ]] name]"}));
}

TEST(ObjectsNamedIn, AreNoneWhereNoReferenceIsWhole) {
    EXPECT_EQ(namesIn("[Orders] a[0] [Sales"), Leaks{});
    EXPECT_EQ(namesIn(""), Leaks{});
    EXPECT_EQ(namesIn("["), Leaks{});
    EXPECT_EQ(namesIn("[]]"), Leaks{});
    EXPECT_EQ(namesIn("[Sales]."), (Leaks{"[Sales]"}));
}

TEST(Leaks, AreTextsThatNameWhatCannotBeSeen) {
    EXPECT_EQ(leaksOf(R"(<calculation id="x" expression="[Sales].[Orders].[Total]"/>)"),
              (Leaks{"x expression total"}));
    EXPECT_EQ(leaksOf(R"(<shortcut id="x" refobj="[Sales].[Orders].[Total]"/>)"),
              (Leaks{"x refobj total"}));
    EXPECT_EQ(leaksOf(R"(<relationship id="x" left="[Sales].[Orders].[Total]"
                           right="[Sales].[Orders]"/>)"),
              (Leaks{"x left total"}));
}

TEST(Leaks, AreNotTextsThatNameWhatCanBeSeen) {
    EXPECT_EQ(leaksOf(R"(<filter id="x" expression="[Sales].[Orders] = 1"/>)"), Leaks{});
}

TEST(Leaks, AreFoundInEveryLanguageButCountedOnceForAProperty) {
    EXPECT_EQ(leaksOf(R"(<filter id="x">
        <property name="screenTip" locale="en">plain</property>
        <property name="screenTip" locale="de">[Sales].[Orders].[Total]</property></filter>)"),
              (Leaks{"x screenTip total"}));
    EXPECT_EQ(leaksOf(R"(<filter id="x" expression="[Sales].[Orders].[Total] or
        [Sales].[Orders].[Total]" note="[Sales].[Orders].[Total]"/>)"),
              (Leaks{"x expression total", "x note total"}));
}

TEST(Leaks, AreFoundInPropertiesOfProperties) {
    EXPECT_EQ(leaksOf(R"(<filter id="x"><property name="parts">
        <property name="part">[Sales].[Orders].[Total]</property></property></filter>)"),
              (Leaks{"x part total"}));
}

TEST(Leaks, AreNamesRelativeToTheNamespaceToo) {
    EXPECT_EQ(leaksOf(R"(<filter id="x" expression="[Orders].[Total] + Orders[Total]"/>)"),
              (Leaks{"x expression total"}));
    EXPECT_EQ(leaksOf(R"(<filter id="x" expression="[Total] &gt; 0"/>)"),
              (Leaks{"x expression total"}));
    EXPECT_EQ(leaksOf(R"(<filter id="x" screenTip="as in [Total]"/>)"), Leaks{});
}

TEST(Leaks, AreFoundBehindFoldersAndShortcutsThatATextNames) {
    EXPECT_EQ(leaksOf(R"(<folder name="Facts"><querySubject name="More"><queryItem id="secret"
                  name="Secret"/></querySubject></folder>
                  <filter id="x" expression="[Sales].[Facts].[More].[Secret]"/>)"),
              (Leaks{"x expression secret"}));
    EXPECT_EQ(leaksOf(R"(<shortcut name="Again" refobj="[Sales].[Orders]"/>
                  <filter id="x" expression="[Sales].[Again].[Total]"/>)"),
              (Leaks{"x expression total"}));
}

TEST(Leaks, KeepKeysThatRelationshipsJoinByApart) {
    auto const joinKeys = [](std::string const& members) {
        auto const model = leakyModel(members);
        auto const canSee = [](VEX_HANDLE object) {
            I18NString const id = vex::idOf(object);
            return id == "n" || id == "q" || id == "x";
        };
        std::vector<bool> found;
        for (vex::Leak const& leak : vex::findLeaks(*model, {model->findById("x")}, canSee)) {
            found.push_back(leak.isJoinKey);
        }
        return found;
    };
    EXPECT_EQ(joinKeys(R"(<relationship id="x" left="[Sales].[Orders].[Total]"/>)"),
              std::vector<bool>{true});
    EXPECT_EQ(joinKeys(R"(<filter id="x" expression="[Sales].[Orders].[Total]"/>)"),
              std::vector<bool>{false});
    // What the key belongs to is hidden itself.
    EXPECT_EQ(joinKeys(R"(<querySubject name="Dark"><queryItem name="Key"/></querySubject>
                          <relationship id="x" left="[Sales].[Dark].[Key]"/>)"),
              std::vector<bool>{false});
    EXPECT_EQ(joinKeys(R"(<querySubject name="Dark"/><relationship id="x"
                          left="[Sales].[Dark]"/>)"),
              std::vector<bool>{false});
}

} // namespace

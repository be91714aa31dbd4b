#include "host/insight/NameResolution.h"

#include "host/import/xml/ModelLoader.h"
#include "host/insight/ObjectText.h"

#include <gtest/gtest.h>

namespace {

std::shared_ptr<vex::Model const> const& namesModel() {
    static auto const loaded = vex::loadModelText(R"(<model defaultLocale="en">
      <namespace id="all" name="All"><namespace id="n" name="Sales">
        <folder id="f" name="Facts"><querySubject id="q" name="Orders">
          <queryItem id="total" name="Total"/>
          <queryItemFolder id="d" name="Dates"><queryItem id="day" name="Day"/></queryItemFolder>
        </querySubject></folder>
        <querySubject id="c" name="Customers"><queryItem id="city" name="City"/>
          <queryItem id="cday" name="Day"/></querySubject>
        <shortcut id="s" name="Again" refobj="[Sales].[Orders]"/>
        <filter id="x" name="Open"/>
      </namespace></namespace>
      <dataSources id="ds"><dataSource id="w" name="warehouse"/></dataSources></model>)",
                                                  "m.model.xml");
    return loaded;
}

/// "id of used", for each candidate.
std::vector<std::string> resolve(char const* reader,
                                 std::vector<std::u16string_view> const& names) {
    vex::NameResolution resolution(*namesModel());
    vex::ResolvedNames const found =
        *reader == '\0' ? resolution.resolve(names)
                        : resolution.resolveFor(namesModel()->findById(reader), names);
    std::vector<std::string> lines;
    for (VEX_HANDLE const each : found.candidates) {
        lines.push_back(vex::idOf(each).toUtf8() + " of " + std::to_string(found.used));
    }
    return lines;
}

using Found = std::vector<std::string>;

TEST(NameResolution, ReadsAReferenceInFull) {
    EXPECT_EQ(resolve("", {u"Sales", u"Orders", u"Total"}), Found{"total of 3"});
}

TEST(NameResolution, PassesOverFoldersAndGoesIntoNestedNamespaces) {
    EXPECT_EQ(resolve("", {u"Sales", u"Facts", u"Orders", u"Dates", u"Day"}), Found{"day of 5"});
    EXPECT_EQ(resolve("", {u"All", u"Sales", u"Orders", u"Total"}), Found{"total of 4"});
}

TEST(NameResolution, GoesOnFromTheTargetOfAShortcut) {
    EXPECT_EQ(resolve("", {u"Sales", u"Again", u"Total"}), Found{"total of 3"});
    EXPECT_EQ(resolve("", {u"Sales", u"Again"}), Found{"s of 2"});
}

TEST(NameResolution, TakesTheNamesThatLeadSomewhere) {
    EXPECT_EQ(resolve("", {u"Sales", u"Orders", u"Gone"}), Found{"q of 2"});
    EXPECT_EQ(resolve("", {u"Nowhere"}), Found{});
}

TEST(NameResolution, ReadsNamesRelativeToWhatTheReaderStandsIn) {
    EXPECT_EQ(resolve("x", {u"Orders", u"Total"}), Found{"total of 2"});
    EXPECT_EQ(resolve("city", {u"Day"}), Found{"cday of 1"});
    EXPECT_EQ(resolve("total", {u"Day"}), Found{"day of 1"});
    EXPECT_EQ(resolve("", {u"Orders", u"Total"}), Found{});
}

TEST(NameResolution, TakesOneNameAloneForAnythingInTheNamespace) {
    EXPECT_EQ(resolve("x", {u"City"}), Found{"city of 1"});
    EXPECT_EQ(resolve("x", {u"Day"}), (Found{"day of 1", "cday of 1"}));
}

TEST(NameResolution, KnowsTheNamesOutsideOfNamespaces) {
    vex::NameResolution resolution(*namesModel());
    EXPECT_TRUE(resolution.isOutsideName(u"warehouse"));
    EXPECT_FALSE(resolution.isOutsideName(u"Sales"));
    EXPECT_FALSE(resolution.isOutsideName(u"Orders"));
}

} // namespace

// What the searches find. They are given no response, so that they cannot write.

#include "VexObject.h"
#include "provider/start/VexReferenceSearch.h"
#include "provider/start/VexStartWalk.h"
#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

constexpr char Model[] = R"(
<model id="m" defaultLocale="en"><namespace id="n" name="Sales">
  <folder id="f" name="Facts"><querySubject id="q" name="Orders">
    <queryItem id="i" name="Quantity"/></querySubject></folder>
  <querySubject id="d" name="Direct"><queryItem id="p" name="Part"/></querySubject>
  <filter id="x" name="Open"/>
  <shortcut id="s" name="Link" refobj="[Sales].[Orders]"/>
  <shortcut id="s2" name="Space" refobj="[Sales]"/>
</namespace></model>)";

class FoundStart : public testing::Test {
protected:
    std::optional<VexFoundStart> find(char const* text, bool isReference = false) {
        TestRequest request("<Metadata><Property a='*/folder'/><Property a='*/querySubject'/>"
                            "<Property a='*/queryItem'/></Metadata>");
        VexMDMaProviderHelper helper(request.node());
        helper.ProcessClientRequest();
        Vex_Handle_Collection const namespaces = FindNamespaces(session);
        VexNameParts parts;
        EXPECT_TRUE(GetNamePartsFromStartPath(text, parts));
        return FindStart(context(namespaces[0]), helper, namespaces, {parts, text, isReference});
    }
    VexStartContext context(VEX_HANDLE root) {
        return {{session, session.GetCurrentLocale(), root}, defaultLocale, supportedLocales};
    }
    // "class id path", with the marks that are set.
    static std::string told(std::optional<VexFoundStart> const& start) {
        if (!start) {
            return "nothing";
        }
        EXPECT_EQ(start->objects.size(), 1U);
        I18NString id;
        VexObject(start->objects[0]).GetId(id);
        return start->className.toUtf8() + " " + id.toUtf8() + ", " + pathText(start->path) +
               (start->pathHoldsElement ? ", holds the element" : "") +
               (start->throughShortcut ? ", through a shortcut" : "");
    }

    TestModel model{Model};
    TestSession session{model};
    I18NString defaultLocale{"en"};
    Vex_I18NString_Collection supportedLocales;
};

TEST_F(FoundStart, OfAPathHasTheClassOfItsCollection) {
    EXPECT_EQ(told(find("[Sales]")), "namespace n, namespace:Sales");
    EXPECT_EQ(told(find("[Sales].[Facts].[Orders]")),
              "querySubject q, querySubject:Orders folder:Facts namespace:Sales "
              "namespace:Sales folder:Facts namespace:Sales");
}

TEST_F(FoundStart, TellsWhetherAShortcutWasPassed) {
    EXPECT_EQ(told(find("[Sales].[Link]")),
              "shortcut s, shortcut:Link namespace:Sales namespace:Sales");
    EXPECT_EQ(told(find("[Sales].[Link].[Quantity]")),
              "queryItem i, queryItem:Quantity shortcut:Link namespace:Sales namespace:Sales "
              "querySubject:Orders folder:Facts namespace:Sales, through a shortcut");
}

TEST_F(FoundStart, OfAReferenceHoldsTheElementInItsPath) {
    EXPECT_EQ(told(find("[Sales].[Open]", true)),
              "filter x, filter:Open namespace:Sales namespace:Sales, holds the element");
}

TEST_F(FoundStart, IsNothingForAReferenceOfTwoNamesThatLeadNowhere) {
    EXPECT_EQ(told(find("[Sales].[No]", true)), "nothing");
}

TEST_F(FoundStart, IsSoughtOnceMoreFromTheShortcutOfTheFirstName) {
    VexNameParts const names{"Space", "Direct", "Part"};
    Vex_Handle_Collection candidates = model.byIds({"q"});
    EXPECT_EQ(told(FindReferencedStart(context(model.byId("n")), names, "text", candidates)),
              "queryItem p, queryItem:Part querySubject:Direct shortcut:Space namespace:Sales "
              "querySubject:Direct namespace:Sales, holds the element");
    EXPECT_EQ(candidates[0], model.byId("q"));
}

TEST_F(FoundStart, IsSoughtFromAShortcutOnlyOnce) {
    Vex_Handle_Collection candidates = model.byIds({"s"});
    expectFailure(
        [&] {
            VEX_HANDLE const shortcut =
                FindReferencedShortcut(context(model.byId("n")), {"Link", "a", "b"}, candidates);
            EXPECT_FALSE(shortcut.IsNotNull());
        },
        1171025905, "VexMDMaProvider", 898, "VexMDMaProvider::processStartAtRefRequest", {"b"});
}

} // namespace

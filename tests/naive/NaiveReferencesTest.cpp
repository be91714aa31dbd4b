#include "tests/naive/NaiveTestSupport.h"

namespace naive {
namespace {

Text const expectedFunction = u"VexMDMaProvider::processStartAtRefRequest";
Text const itemFunction = u"VexMDMaProvider::FindReferencedItem";

std::string const nested = R"(<model defaultLocale="en"><namespace name="N">
    <filter name="F"/><calculation name="F" id="c"/><calculation name="C"/>
    <shortcut name="S" refobj="[N].[Q]"/><shortcut name="L"/>
    <folder name="D"><querySubject name="Q"><queryItem name="I"/>
      <queryItemFolder name="E"><queryItem name="J"/>
        <queryItemFolder name="G"><queryItem name="K"/></queryItemFolder></queryItemFolder>
      </querySubject><querySubject name="P"><queryItem name="I"/></querySubject></folder>
    <namespace name="M"><filter name="H"/></namespace>
    </namespace></model>)";

TEST(NaiveReferences, TwoNamesFindFiltersBeforeCalculations) {
    TestSession test(nested);
    EXPECT_EQ(test.result("start_atRef='[N].[F]'", {"*/@_ref", "*/@_path"}),
              R"(<filter _path="[N].[F]" _ref="[N].[F]"/>)");
    EXPECT_EQ(test.result("start_atRef='[N].[C]'", {"*/@name"}), R"(<calculation name="C"/>)");
    EXPECT_EQ(test.result("start_atRef='[N].[S]' Depth='1'", {"*/@name"}),
              R"(<querySubject name="S"/>)");
    EXPECT_EQ(test.result("start_atRef='[N].[D]'", {"*/@name"}), "");
    EXPECT_EQ(test.result("start_atRef='[M].[H]'", {"*/@name"}), R"(<filter name="H"/>)");
}

TEST(NaiveReferences, NeedTwoOrThreeNames) {
    TestSession test(nested);
    expectFailure(test.ask("start_atRef='[N]'", {"*/@name"}), 1171135124, 866, expectedFunction,
                  {u"[N]"});
    expectFailure(test.ask("start_atRef='[N].[a].[b].[c]'", {"*/@name"}), 1171135124, 866,
                  expectedFunction, {u"[N].[a].[b].[c]"});
}

TEST(NaiveReferences, ThreeNamesFindAQueryItem) {
    TestSession test(nested);
    EXPECT_EQ(test.result("start_atRef='[N].[Q].[I]'", {"*/@_ref", "*/@name"}),
              R"(<queryItem _ref="[N].[Q].[I]" name="I"/>)");
    EXPECT_EQ(test.result("start_atRef='[N].[Q].[J]'", {"*/@name"}), R"(<queryItem name="J"/>)");
    // The target's own name does not enter: the record is the shortcut's.
    EXPECT_EQ(test.result("start_atRef='[N].[S].[I]'", {"*/@_ref"}),
              R"(<queryItem _ref="[N].[I]"/>)");
}

TEST(NaiveReferences, SayWhichNameIsMissing) {
    TestSession test(nested);
    expectFailure(test.ask("start_atRef='[N].[Q].[K]'", {}), 1171025905, 1414, itemFunction,
                  {u"K"});
    expectFailure(test.ask("start_atRef='[N].[P].[K]'", {}), 1171025905, 1398, itemFunction,
                  {u"K"});
    expectFailure(test.ask("start_atRef='[N].[X].[K]'", {}), 1171025905, 1357, itemFunction,
                  {u"X"});
    expectFailure(test.ask("start_atRef='[N].[L].[I]'", {}), 1171025905, 1398, itemFunction,
                  {u"I"});
    expectFailure(test.ask("start_atRef='[M].[Q].[I]'", {}), 1171025905, 1357, itemFunction,
                  {u"Q"});
}

TEST(NaiveReferences, WithoutQuerySubjectsLookAtShortcuts) {
    TestSession test(
        R"(<model><namespace name="N"><folder name="D"><shortcut name="A" refobj="[N].[B]"/>
        </folder><shortcut name="B" refobj="[N]"/></namespace></model>)");
    expectFailure(test.ask("start_atRef='[N].[A].[I]'", {}), 1171025905, 1357, itemFunction,
                  {u"A"});
    expectFailure(test.ask("start_atRef='[N].[C].[I]'", {}), 1171025905, 1263, itemFunction,
                  {u"C"});
}

TEST(NaiveReferences, OfANamespaceWithoutANameGoThroughShortcuts) {
    TestSession none("<model><namespace><filter name='F'/></namespace></model>");
    EXPECT_EQ(none.result("start_atRef='[].[F]'", {"*/@name"}), "");
    expectFailure(none.ask("start_atRef='[].[a].[b]'", {}), 1170653716, 1080,
                  u"VexMDMaProvider::FindReferencedShortcutQI", {u""});
    TestSession named("<model><namespace><shortcut name='S'/></namespace></model>");
    expectFailure(named.ask("start_atRef='[].[a].[b]'", {}), 1171025905, 898, expectedFunction,
                  {u"b"});
    TestSession unnamed("<model><namespace><shortcut/></namespace></model>");
    expectFailure(unnamed.ask("start_atRef='[].[a].[b]'", {}), 1171025905, 898, expectedFunction,
                  {u"b"});
}

} // namespace
} // namespace naive

#include "tests/naive/NaiveTestSupport.h"

namespace naive {
namespace {

std::string withShortcuts(std::string const& shortcuts) {
    return R"(<model defaultLocale="en"><namespace id="n" name="N" tip="t">
        <querySubject id="q" name="Q" screenTip="target"><queryItem id="i" name="I"/></querySubject>)" +
           shortcuts + "</namespace></model>";
}

TEST(NaiveShortcuts, AreWrittenAsTheirTargetWithTheirOwnName) {
    TestSession test(withShortcuts("<shortcut name='S' refobj='[N].[Q]'/>"));
    EXPECT_EQ(test.result("", {"*/@name", "*/@ID", "*/@_path", "*/@_ref", "*/queryItem"}),
              R"(<folder ID="n" _path="[N]" _ref="[N]" name="N">)"
              R"(<querySubject ID="q" _path="[N].[S]" _ref="[N]" name="S">)"
              R"(<queryItem ID="i" _path="[N].[S].[I]" _ref="[N].[I]" name="I"/>)"
              R"(</querySubject></folder>)");
}

TEST(NaiveShortcuts, RepeatTheValueBeforeAMissingOne) {
    TestSession test(withShortcuts("<shortcut name='S' refobj='[N].[Q]'/>"
                                   "<shortcut name='T' refobj='[N].[Q]' screenTip='own'/>"));
    EXPECT_EQ(test.result("Depth='2'", {"*/@none", "*/@name", "*/@also", "*/@screenTip",
                                        "*/@description", "*/@a b"}),
              R"(<folder name="N">)"
              R"(<querySubject also="S" description="target" name="S" none="" screenTip="target"/>)"
              R"(<querySubject also="T" description="own" name="T" none="" screenTip="own"/>)"
              R"(</folder>)");
}

TEST(NaiveShortcuts, WithoutNameOrTargetAreNotWritten) {
    TestSession test(withShortcuts("<shortcut refobj='[N].[Q]'/><shortcut name='S'/>"));
    EXPECT_EQ(test.result("", {"*/@name"}), R"(<folder name="N"/>)");
}

TEST(NaiveShortcuts, TheLastReadableTargetIsWritten) {
    TestSession test(withShortcuts("<shortcut name='S' refobj='[N]'>"
                                   "<property name='refobj'>[N].[Q]</property>"
                                   "<property name='refobj'/></shortcut>"));
    EXPECT_EQ(test.result("Depth='2'", {"*/@name", "querySubject/@ID"}),
              R"(<folder name="N"><querySubject ID="q" name="S"/></folder>)");
}

TEST(NaiveShortcuts, ADanglingOneRaisesAndKeepsWhatWasAppended) {
    TestSession test(withShortcuts("<shortcut name='S' refobj='[N].[gone]'/>"));
    Outcome const outcome = test.ask("", {"*/@name"});
    expectFailure(outcome, 1170588191, 2080, u"VexMDMaProvider::processShortCutCollection", {});
    EXPECT_EQ(outcome.response, R"(<Response><Result><folder name="N"/></Result></Response>)");
    expectFailure(test.ask("start_at='[N].[S].[I]'", {"*/@name"}), 1171122674, 550,
                  u"VexMDMaProvider::FindShortcutReference", {u"S"});
}

TEST(NaiveShortcuts, InTheMiddleOfAPathAreFollowed) {
    TestSession test(withShortcuts("<shortcut name='S' refobj='[N].[Q]'/>"));
    EXPECT_EQ(test.result("start_at='[N].[S].[I]'", {"*/@_ref", "*/queryItem"}),
              R"(<queryItem _ref="[N].[I]"/>)");
    EXPECT_EQ(test.result("start_at='[N].[S]'", {"*/@_path", "*/@name", "*/queryItem"}),
              R"(<querySubject _path="[N].[S]" name="S">)"
              R"(<queryItem _path="[N].[S].[I]" name="I"/></querySubject>)");
}

TEST(NaiveShortcuts, OnlyEndlessExpansionIsCutAtDepthZero) {
    TestSession test(withShortcuts("<shortcut name='S' refobj='[N]'/>"));
    std::vector<std::string> const asked = {"*/@name", "*/@_path"};
    EXPECT_EQ(test.result("Depth='0'", asked),
              R"(<folder _path="[N]" name="N"><folder _path="[N].[S]" name="S">)"
              R"(<folder _path="[N].[S]" name="S"/></folder></folder>)");
    EXPECT_EQ(test.result("Depth='4'", {"*/@name"}),
              R"(<folder name="N"><folder name="S"><folder name="S"><folder name="S"/>)"
              R"(</folder></folder></folder>)");
}

TEST(NaiveShortcuts, TooManyLevelsRaise) {
    TestSession test(withShortcuts("<shortcut name='S' refobj='[N]'/>"));
    expectFailure(test.ask("Depth='5000'", {"*/@name", "*/@_path", "*/@_ref"}), 1444379514, anyLine,
                  u"VexMDMaProvider::GetRequestedElementTreeAtLevel", {u"[N].[S]"});
}

TEST(NaiveClassification, AShortcutRecordEndsTheReference) {
    // The target of the first like-named shortcut decides: a namespace gives the shortcut's name.
    TestSession test(withShortcuts(
        "<namespace name='M'><filter name='F'/></namespace><shortcut name='S' refobj='[M]'/>"));
    EXPECT_EQ(test.result("start_at='[N].[S]'", {"filter/@_ref", "./@name", "*/filter"}),
              R"(<folder name="S"><filter _ref="[S].[F]" name="F"/></folder>)");
}

} // namespace
} // namespace naive

// Plug-ins that end the program, or raise what they may not, wherever they are called.

#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// What the program says when the plug-in ends it so.
ToolResult endedBy(std::string const& ending, std::string const& limits = "true") {
    return ToolFolder().RunShell(limits + "; ENDING='" + ending +
                                 "' \"$VEXMA\" access small.model.xml q1 --plugin " +
                                 VEX_ENDING_PLUGIN);
}

/// Whether a sanitizer handles crashes, and has the memory and the stack.
#ifdef VEX_ENDING_MEMORY
constexpr bool isSanitized = false;
#else
constexpr bool isSanitized = true;
constexpr char const* VEX_ENDING_MEMORY = "";
#endif

/// Places, and what the program calls them.
struct Place {
    char const* name;
    char const* shown;
};

constexpr Place places[] = {{"initialiser", "the loading"},
                            {"version", "VexPlugin_platformVersion"},
                            {"hook", "create"},
                            {"constructor", "create"},
                            {"Initialize", "Initialize"},
                            {"DoAction", "DoAction"},
                            {"Notify", "Notify"},
                            {"Terminate", "Terminate"}};
constexpr Place lastPlaces[] = {{"destructor", "the deletion"}, {"last hook", "the deletion"}};

TEST(UntimelyEnd, IsNoneWhenThePluginBehaves) {
    ToolResult const result = endedBy("nowhere exit");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "1\tq1\n");
    EXPECT_THAT(result.error, IsEmpty());
}

TEST(UntimelyEnd, IsToldWithThePluginWhereverAndHoweverItComes) {
    std::vector<Place> all(std::begin(places), std::end(places));
    all.insert(all.end(), std::begin(lastPlaces), std::end(lastPlaces));
    for (Place const& place : all) {
        for (std::string const how :
             {"exit", "quick_exit", "_exit", "_Exit", "abort", "terminate"}) {
            ToolResult const result = endedBy(std::string(place.name) + ' ' + how);
            EXPECT_EQ(result.status, 1) << place.name << ' ' << how;
            EXPECT_THAT(result.out, IsEmpty()) << place.name << ' ' << how;
            EXPECT_THAT(result.error,
                        AllOf(HasSubstr("vexma: the plug-in "), HasSubstr("EndingPlugin.vpl: "),
                              HasSubstr(std::string(place.shown) + " ended the program ("),
                              HasSubstr(how == "terminate" ? "(abort)" : '(' + how + ')')))
                << place.name << ' ' << how;
        }
    }
}

TEST(UntimelyEnd, ComesOfNothingThatIsRaised) {
    for (Place const& place : places) {
        if (std::string(place.name) == "Notify") {
            continue; // the answer is there when a session is closed
        }
        for (char const* const what : {"foreign", "number", "platform", "memory"}) {
            ToolResult const result = endedBy(std::string(place.name) + ' ' + what);
            EXPECT_EQ(result.status, 1) << place.name << ' ' << what << result.error;
            if (std::string(what) != "platform" || std::string(place.name) != "DoAction") {
                EXPECT_THAT(result.error,
                            AllOf(HasSubstr("EndingPlugin.vpl"), HasSubstr(place.shown)))
                    << place.name << ' ' << what;
            }
            EXPECT_THAT(result.error, Not(HasSubstr("terminate called"))) << place.name << what;
        }
    }
}

TEST(UntimelyEnd, IsToldOfAnInitialiserThatRaisesOnASmallStackToo) {
    ToolResult const result = endedBy("initialiser foreign", "ulimit -s 256");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("the loading raised an exception"));
}

TEST(UntimelyEnd, IsAFailureWhenThePluginCannotEndItsWork) {
    ToolResult const result = endedBy("Terminate refuses");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("Terminate gave 0"));
    EXPECT_EQ(result.out, "1\tq1\n"); // the answer is whole
}

TEST(UntimelyEnd, IsToldWhenAThreadOfThePluginEndsTheProgram) {
    ToolResult const result = endedBy("DoAction thread");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error,
                HasSubstr("vexma: something in the program ended the program (exit)"));
}

TEST(UntimelyEnd, LeavesTheAnswersOfASession) {
    ToolFolder const folder;
    folder.Write("lines", "{\"notify\": 3}\n{\"action\": 1, \"in\": []}\n{\"notify\": 3}\n");
    ToolResult const result =
        folder.RunShell(std::string("ENDING='DoAction exit' \"$VEXMA\" session small.model.xml "
                                    "--plugin ") +
                        VEX_ENDING_PLUGIN + " < lines");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "{\"notified\":3}\n");
    EXPECT_THAT(result.error, HasSubstr("DoAction ended the program (exit)"));
}

TEST(UntimelyEnd, IsToldWhenAPluginCrashes) {
    if (isSanitized) {
        GTEST_SKIP();
    }
    ToolResult const result = endedBy("DoAction crash");
    EXPECT_NE(result.status, 0);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("EndingPlugin.vpl: DoAction crashed (signal 11)"));
}

TEST(UntimelyEnd, IsToldWhenTheStackIsUsedUp) {
    if (isSanitized) {
        GTEST_SKIP();
    }
    for (std::string const limit : {"true", "ulimit -s 512", "ulimit -s 8192"}) {
        ToolResult const result = endedBy("DoAction stack", limit);
        EXPECT_EQ(result.status, 1) << limit;
        EXPECT_THAT(result.error, HasSubstr("DoAction used up the stack; allow a larger one"))
            << limit;
    }
}

TEST(UntimelyEnd, IsNotNeededOnSmallStacks) {
    if (isSanitized) {
        GTEST_SKIP();
    }
    ToolFolder const folder;
    std::string model = "<model><namespace name='N' id='n'>";
    std::string ends;
    for (int depth = 0; depth < 500; ++depth) {
        model +=
            "<folder name='f" + std::to_string(depth) + "' id='f" + std::to_string(depth) + "'>";
        ends += "</folder>";
    }
    folder.Write("deep.xml", model + ends + "</namespace></model>");
    for (std::string const command :
         {"metadata deep.xml --depth 600", "tree deep.xml", "tree --why deep.xml",
          "validate deep.xml", "verify deep.xml", "explain deep.xml f499", "diff deep.xml deep.xml",
          "matrix deep.xml", "metadata deep.xml --start '[x]'"}) {
        ToolResult const usual = folder.RunShell("\"$VEXMA\" " + command);
        for (int kilobytes : {64, 128, 256, 1024}) {
            ToolResult const small = folder.RunShell("ulimit -s " + std::to_string(kilobytes) +
                                                     "; \"$VEXMA\" " + command);
            EXPECT_EQ(small.status, usual.status) << kilobytes << ' ' << command;
            EXPECT_EQ(small.out, usual.out) << kilobytes << ' ' << command;
            EXPECT_EQ(small.error, usual.error) << kilobytes << ' ' << command;
        }
    }
}

TEST(UntimelyEnd, IsNotNeededWhereverMemoryEnds) {
    if (isSanitized) {
        GTEST_SKIP();
    }
    ToolFolder const folder;
    std::string const whole = folder.RunShell("\"$VEXMA\" tree small.model.xml").out;
    int failures = 0;
    for (std::string const once : {"", "once"}) {
        for (int allocations = 0; allocations < 200'000; allocations += allocations / 4 + 1) {
            ToolResult const result = folder.RunShell(
                "ALLOCATIONS=" + once + std::to_string(allocations) +
                " LD_PRELOAD=" + VEX_ENDING_MEMORY + " \"$VEXMA\" tree small.model.xml");
            if (result.status == 0) {
                EXPECT_EQ(result.out, whole) << once << allocations;
            } else {
                ++failures;
                EXPECT_THAT(result.status, testing::AnyOf(1, 2, 3)) << once << allocations;
                EXPECT_THAT(result.out, IsEmpty()) << once << allocations;
                EXPECT_THAT(result.error, HasSubstr("vexma: ")) << once << allocations;
                EXPECT_THAT(result.error, Not(HasSubstr("terminate called")))
                    << once << allocations;
            }
        }
    }
    EXPECT_GT(failures, 20);
}

TEST(UntimelyEnd, IsNotNeededWithoutAFileSystemOfProcesses) {
    if (isSanitized) {
        GTEST_SKIP(); // the sanitizer reads it
    }
    ToolResult const result = ToolFolder().RunShell(
        "export LD_LIBRARY_PATH=$(dirname \"$VEXMA\"); " // the system's loader asks /proc too
        "unshare --mount sh -c 'mount -t tmpfs none /proc && exec \"$0\" tree small.model.xml' "
        "\"$VEXMA\"");
    if (result.status == 1 && result.out.empty() &&
        result.error.find("vexma") == std::string::npos) {
        GTEST_SKIP() << result.error; // that is not for everybody
    }
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.out, HasSubstr("Orders"));
}

} // namespace

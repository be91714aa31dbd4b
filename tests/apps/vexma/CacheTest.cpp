#include "host/content/FileState.h"
#include "tests/apps/vexma/ToolRun.h"
#include "tests/support/ShellText.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <gmock/gmock.h>

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;

std::string largeModel(std::string const& name) {
    std::string text = "<model defaultLocale=\"en\"><namespace id=\"n\" name=\"" + name + "\">\n";
    constexpr int items = 14'000;
    for (int item = 0; item < items; ++item) {
        std::string const number = std::to_string(item);
        text += "<queryItem id=\"i" + number + "\" name=\"Item " + number +
                "\" datatype=\"int32\" usage=\"attribute\"/>\n";
    }
    return text + "</namespace></model>";
}

/// Large documents that changed long enough ago to be trusted.
class SettledFiles {
public:
    SettledFiles() {
        std::string pattern = (std::filesystem::temp_directory_path() / "settledXXXXXX").string();
        m_folder = ::mkdtemp(pattern.data());
        write("m.xml", largeModel("Sales"));
        write("other.xml", largeModel("Costs"));
        write("bad.xml", largeModel("Sales") + "<");
        write("a\x1b[2J\nb.xml", largeModel("Sales"));
        auto const settled = [&](std::string const& name) {
            return vex::FileState::of(file(name))
                ->isSettled(std::chrono::system_clock::now(), std::chrono::seconds(2));
        };
        while (!settled("a\x1b[2J\nb.xml")) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    }
    SettledFiles(SettledFiles const&) = delete;
    SettledFiles& operator=(SettledFiles const&) = delete;
    ~SettledFiles() { std::filesystem::remove_all(m_folder); }

    std::string file(std::string const& name) const { return (m_folder / name).string(); }

private:
    void write(std::string const& name, std::string const& text) const {
        std::ofstream(file(name), std::ios::binary) << text;
    }

    std::filesystem::path m_folder;
};

class Cache : public testing::Test {
protected:
    static std::string file(std::string const& name = "m.xml") {
        static SettledFiles const files;
        return files.file(name);
    }
    static std::string inShell(std::string const& name = "m.xml") {
        return quotedForShell(file(name));
    }

    /// How many images there are.
    std::string images() const {
        return m_folder.RunShell("ls -A caches/vexma 2>/dev/null | grep -c vexm").out;
    }
    ToolResult top(std::vector<std::string> const& more = {}) const {
        std::vector<std::string> words{"tree", file(), "--depth", "1"};
        words.insert(words.end(), more.begin(), more.end());
        return m_folder.Run(words);
    }

    ToolFolder m_folder;
};

TEST_F(Cache, AnswersFromAnImageTheSecondTimeAsTheFirst) {
    ToolResult const plain = m_folder.Run({"metadata", file(), "--no-cache"});
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(images(), "0\n");
    for (int time = 0; time < 2; ++time) {
        ToolResult const result = m_folder.Run({"metadata", file(), "--verbose"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, plain.out);
        EXPECT_THAT(result.error, IsEmpty());
        EXPECT_EQ(images(), "1\n");
    }
    // What the image says is what is answered.
    m_folder.RunShell("$VEXMA compile " + inShell("other.xml") + " -o caches/vexma/*.vexm");
    EXPECT_EQ(top().out, "folder Costs\n");
    EXPECT_EQ(top({"--no-cache"}).out, "folder Sales\n");
}

TEST_F(Cache, IsListedAndCleared) {
    EXPECT_THAT(m_folder.Run({"cache", "list"}).error, HasSubstr("the cache is empty"));
    top();
    top();
    m_folder.Run({"tree", file("other.xml"), "--depth", "1"});
    ToolResult const listed = m_folder.Run({"cache", "list"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_THAT(listed.out, MatchesRegex("[0-9]+\t[-0-9]+T[:0-9]+Z\t" + file("other.xml") +
                                         "\n[0-9]+\t[-0-9]+T[:0-9]+Z\t" + file() + "\n"));
    ToolResult const cleared = m_folder.Run({"cache", "clear"});
    EXPECT_EQ(cleared.status, 0);
    EXPECT_THAT(cleared.out, MatchesRegex("removed: 2, bytes: [0-9]+\n"));
    EXPECT_EQ(m_folder.Run({"cache", "list"}).out, "");
    EXPECT_EQ(images(), "0\n");
    EXPECT_EQ(top().out, "folder Sales\n");
}

TEST_F(Cache, IsClearedOfWhatARunLeftThatWasEnded) {
    top();
    m_folder.RunShell("echo half > caches/vexma/.unfinished.123");
    EXPECT_EQ(m_folder.Run({"cache", "clear"}).status, 0);
    EXPECT_EQ(m_folder.RunShell("ls -A caches/vexma").out, "lock\n");
}

TEST_F(Cache, KeepsToItsSizeAndIsOffWithNone) {
    m_folder.RunShell("VEXMA_CACHE_SIZE=0 $VEXMA tree --depth 1 " + inShell());
    EXPECT_FALSE(m_folder.RunShell("test -e caches").status == 0);
    ToolResult const small =
        m_folder.RunShell("VEXMA_CACHE_SIZE=1000 $VEXMA tree --verbose --depth 1 " + inShell());
    EXPECT_EQ(small.out, "folder Sales\n");
    EXPECT_THAT(small.error, HasSubstr("larger than the cache may grow"));
    EXPECT_EQ(images(), "0\n");
    for (char const* const size : {"1G", "-1", " 1", "99999999999999999999"}) {
        ToolResult const wrong = m_folder.RunShell(std::string("VEXMA_CACHE_SIZE='") + size +
                                                   "' $VEXMA tree " + inShell());
        EXPECT_EQ(wrong.status, 2) << size;
        EXPECT_THAT(wrong.error, HasSubstr("write a number of bytes")) << size;
    }
}

TEST_F(Cache, LetsTheOldestGoForTheNewest) {
    top();
    std::string const size = m_folder.RunShell("$VEXMA cache list | cut -f 1 | tr -d '\\n'").out;
    // There is room for one and a half.
    m_folder.RunShell("VEXMA_CACHE_SIZE=$((" + size + " * 3 / 2)) $VEXMA tree --depth 1 " +
                      inShell("other.xml"));
    EXPECT_THAT(m_folder.Run({"cache", "list"}).out, EndsWith(file("other.xml") + "\n"));
    EXPECT_EQ(images(), "1\n");
}

TEST_F(Cache, OnAFullDiskIsDoneWithoutAndSaysSoWhenAsked) {
    std::string const limited = "ulimit -f 200; $VEXMA tree --depth 1 " + inShell();
    ToolResult const quiet = m_folder.RunShell(limited);
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.out, "folder Sales\n");
    EXPECT_THAT(quiet.error, IsEmpty());
    EXPECT_THAT(m_folder.RunShell(limited + " --verbose").error,
                AllOf(StartsWith("vexma: cache: " + file() + ": "), HasSubstr("File too large")));
    EXPECT_EQ(m_folder.RunShell("ls -A caches/vexma").out, "lock\n");
}

TEST_F(Cache, WithoutAPlaceIsDoneWithout) {
    ToolResult const unwritable = m_folder.RunShell(
        "XDG_CACHE_HOME=$PWD/small.model.xml $VEXMA tree --verbose --depth 1 " + inShell());
    EXPECT_EQ(unwritable.status, 0);
    EXPECT_EQ(unwritable.out, "folder Sales\n");
    EXPECT_THAT(unwritable.error, HasSubstr("Not a directory"));
    ToolResult const homeless =
        m_folder.RunShell("env -u HOME XDG_CACHE_HOME=relative $VEXMA tree --depth 1 " + inShell());
    EXPECT_EQ(homeless.out, "folder Sales\n");
    EXPECT_THAT(homeless.error, IsEmpty());
    ToolResult const listed =
        m_folder.RunShell("env -u HOME XDG_CACHE_HOME=relative $VEXMA cache list");
    EXPECT_EQ(listed.status, 2);
    EXPECT_THAT(listed.error, HasSubstr("set HOME or XDG_CACHE_HOME"));
    m_folder.RunShell("env -u XDG_CACHE_HOME HOME=$PWD/home $VEXMA tree --depth 1 " + inShell());
    EXPECT_EQ(m_folder.RunShell("ls home/.cache/vexma | grep -c vexm").out, "1\n");
}

TEST_F(Cache, ThatOthersMayWriteToIsNotUsed) {
    top();
    m_folder.RunShell("$VEXMA compile " + inShell("other.xml") +
                      " -o caches/vexma/*.vexm; chmod 777 caches/vexma");
    ToolResult const result = top({"--verbose"});
    EXPECT_EQ(result.out, "folder Sales\n");
    EXPECT_THAT(result.error, HasSubstr("nobody else may write to it"));
    ToolResult const listed = m_folder.Run({"cache", "list"});
    EXPECT_EQ(listed.status, 3);
    EXPECT_THAT(listed.error, HasSubstr("nobody else may write to it"));
}

TEST_F(Cache, ThrowsAwayWhatIsDamaged) {
    top();
    m_folder.RunShell("for f in caches/vexma/*.vexm; do printf X | "
                      "dd of=$f bs=1 seek=5000 conv=notrunc; done");
    EXPECT_THAT(top({"--verbose"}).error, HasSubstr("its image was thrown away: "));
    EXPECT_THAT(top({"--verbose"}).error, IsEmpty());
    EXPECT_EQ(top().out, "folder Sales\n");
}

TEST_F(Cache, TellsOfErrorsInADocumentAsWithout) {
    ToolResult const plain = m_folder.Run({"tree", file("bad.xml"), "--no-cache"});
    EXPECT_EQ(plain.status, 3);
    EXPECT_THAT(plain.error, HasSubstr("bad.xml:14002:"));
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(m_folder.Run({"tree", file("bad.xml")}).error, plain.error);
    }
    EXPECT_EQ(images(), "0\n");
}

TEST_F(Cache, KeepsNothingOfStandardInputAndOfPipes) {
    EXPECT_EQ(m_folder.RunShell("$VEXMA tree --depth 1 - < " + inShell()).out, "folder Sales\n");
    EXPECT_EQ(m_folder.RunShell("cat " + inShell() + " | $VEXMA tree --depth 1 /dev/stdin").out,
              "folder Sales\n");
    EXPECT_EQ(images(), "0\n");
}

TEST_F(Cache, IsRightWhenSeveralRunAtOnce) {
    ToolResult const result = m_folder.RunShell(
        "for run in 1 2 3 4 5 6; do $VEXMA tree --depth 1 " + inShell() + " & done; wait");
    std::string wanted;
    for (int run = 0; run < 6; ++run) {
        wanted += "folder Sales\n";
    }
    EXPECT_EQ(result.out, wanted);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_EQ(images(), "1\n");
    EXPECT_EQ(top().out, "folder Sales\n");
}

TEST_F(Cache, KeepsBothModelsThatACommandReads) {
    ToolResult const result = m_folder.Run({"diff", file(), file("other.xml")});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(images(), "2\n");
}

TEST_F(Cache, KeepsTheModelOfASession) {
    ToolResult const result = m_folder.Run({"session", file()}, R"({"notify": 1})"
                                                                "\n");
    EXPECT_EQ(result.out, "{\"notified\":1}\n");
    EXPECT_EQ(images(), "1\n");
}

TEST_F(Cache, SpellsOutNamesThatSteerATerminal) {
    m_folder.Run({"tree", file("a\x1b[2J\nb.xml"), "--depth", "1"});
    EXPECT_THAT(m_folder.Run({"cache", "list"}).out, EndsWith("a\\u001B[2J\\nb.xml\n"));
}

TEST_F(Cache, LeavesValidationWithItsPlaces) {
    ToolResult const before = m_folder.Run({"validate", file("bad.xml")});
    EXPECT_THAT(before.out + before.error, HasSubstr("bad.xml:14002:"));
    EXPECT_EQ(m_folder.Run({"validate", file()}).status, 0);
    EXPECT_EQ(images(), "0\n");
}

} // namespace

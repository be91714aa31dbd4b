#include "host/protocol/LineReader.h"

#include "KRLException.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using Result = vex::LineReader::Result;

/// What a pipe gives that was written to and closed.
class Pipe {
public:
    explicit Pipe(std::string const& text) {
        if (::pipe(m_ends) != 0 ||
            ::write(m_ends[1], text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
            throw std::runtime_error("no pipe");
        }
        ::close(m_ends[1]);
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;
    ~Pipe() { ::close(m_ends[0]); }

    int reading() const { return m_ends[0]; }

private:
    int m_ends[2] = {-1, -1};
};

/// The lines in a text, "(too long)" for each that is dropped.
std::vector<std::string> linesIn(std::string const& text, std::size_t limit = 100) {
    Pipe const pipe(text);
    vex::LineReader reader(pipe.reading(), limit);
    std::vector<std::string> lines;
    for (std::string line;;) {
        Result const result = reader.next(line);
        if (result == Result::End) {
            return lines;
        }
        lines.push_back(result == Result::TooLong ? "(too long)" : line);
    }
}

using Lines = std::vector<std::string>;

TEST(LineReader, GivesLinesWithoutTheirLineBreaks) {
    EXPECT_EQ(linesIn("one\n\ntwo\r\n"), (Lines{"one", "", "two\r"}));
}

TEST(LineReader, NeedsNoLineBreakAtTheEnd) {
    EXPECT_EQ(linesIn("one\ntwo"), (Lines{"one", "two"}));
    EXPECT_EQ(linesIn(""), Lines{});
    EXPECT_EQ(linesIn("\n"), Lines{""});
}

TEST(LineReader, DropsALineThatIsTooLongAndGivesTheNext) {
    EXPECT_EQ(linesIn("12345\n123456\n1\n", 5), (Lines{"12345", "(too long)", "1"}));
    EXPECT_EQ(linesIn("123456", 5), Lines{"(too long)"});
}

TEST(LineReader, GivesLongLinesAndEndsForGood) {
    std::string const longer(60'000, 'x');
    Pipe const pipe(longer + "\nend");
    vex::LineReader reader(pipe.reading(), 100'000);
    std::string line;
    EXPECT_EQ(reader.next(line), Result::Line);
    EXPECT_EQ(line, longer);
    EXPECT_EQ(reader.next(line), Result::Line);
    EXPECT_EQ(line, "end");
    EXPECT_EQ(reader.next(line), Result::End);
    EXPECT_EQ(reader.next(line), Result::End);
}

TEST(LineReader, SaysWhyItCannotRead) {
    vex::LineReader reader(-1, 100);
    std::string line;
    try {
        reader.next(line);
        FAIL() << "nothing was raised";
    } catch (KRLDocumentException const& problem) {
        EXPECT_STREQ(problem.what(), "standard input: cannot be read: Bad file descriptor");
    }
}

} // namespace

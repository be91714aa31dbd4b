#pragma once

#include "tests/growth/Counts.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// Tests that work and memory stay in proportion to the input, by counts and never by time.
///
/// A test is a `...Test.cpp` below tests/growth, in the folder of what it tests; the program
/// `growth_tests` runs them all. It measures the same work at a size, twice and four times that:
///
///     TEST(LeakScanGrowth, FollowsTheLengthOfAnExpression) {
///         EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
///             std::string const text = longExpression(size);       // not counted
///             return countWork(text.size(), [&] { scan(text); });  // counted
///         }));
///     }
///
/// or of a whole command, on files that the test writes:
///
///     EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
///         CommandFolder const folder;
///         std::size_t const bytes = folder.write("m.xml", modelOf(size));
///         return folder.countCommand(bytes, {"validate", "m.xml"});
///     }));
///
/// Counted are the steps of platform, model/, security/, host/ and apps/ (built once more, with a
/// count at each branch), what C++, ICU, the XML library and the rooms allocate. Not: the steps
/// of libraries and of the plug-in that a command loads. Choose the smallest size at which the
/// corner would show; a try with the defect in place tells.
struct Measurement {
    std::size_t inputBytes = 0;
    Counts counts; // of the work alone; `peak`: beyond what was held before
};

/// What one round of work takes.
Measurement countWork(std::size_t inputBytes, std::function<void()> const& work);

/// How much may grow when the input doubles.
struct Proportion {
    double work = 1.2;    // times, of steps, allocations and bytes for each object
    double memory = 20.0; // bytes at once for each further byte of input
};

/// Measures at `size`, twice and four times that, and compares what the further objects took:
/// what is done once, whatever the size, falls out. Says all figures when something grows more.
testing::AssertionResult staysInProportion(std::size_t size,
                                           std::function<Measurement(std::size_t)> const& measure,
                                           Proportion const& allowed = {});

/// A folder for the files of a test, and the program in it with its counts.
class CommandFolder {
public:
    CommandFolder();
    CommandFolder(CommandFolder const&) = delete;
    CommandFolder& operator=(CommandFolder const&) = delete;
    ~CommandFolder();

    /// Gives the number of bytes.
    std::size_t write(std::string const& name, std::string const& text) const;
    std::string read(std::string const& name) const;

    /// Runs "vexma" with these arguments; its results are in the file "out", its complaints in
    /// "error". Raises when it does not end with one of the statuses of vexma.
    Measurement countCommand(std::size_t inputBytes,
                             std::vector<std::string> const& arguments) const;

private:
    std::filesystem::path m_path;
};

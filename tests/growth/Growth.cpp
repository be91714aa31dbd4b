#include "tests/growth/Growth.h"

#include "tests/support/ShellText.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include <sys/wait.h>

namespace {

struct Measure {
    char const* name;
    std::size_t Counts::*count;
};
constexpr Measure workMeasures[] = {
    {"steps", &Counts::steps},
    {"allocations", &Counts::allocations},
    {"bytes allocated", &Counts::bytes},
};

constexpr std::size_t doublings = 3;
using Measurements = Measurement[doublings];

/// How much more the second doubling took, for each object, than the first.
double growthOf(Measurements const& measured, std::size_t Counts::*count) {
    auto const of = [&](std::size_t round) {
        return static_cast<double>(measured[round].counts.*count);
    };
    double const first = of(1) - of(0);
    double const second = (of(2) - of(1)) / 2;
    return second <= 0 ? 0 : second / std::max(first, 1.0);
}

double memoryOf(Measurements const& measured) {
    double const input =
        static_cast<double>(measured[2].inputBytes) - static_cast<double>(measured[0].inputBytes);
    double const peak =
        static_cast<double>(measured[2].counts.peak) - static_cast<double>(measured[0].counts.peak);
    return input <= 0 ? 0 : peak / input;
}

void tell(std::ostream& out, std::size_t size, Measurements const& measured) {
    for (std::size_t round = 0; round < doublings; ++round) {
        Counts const& counts = measured[round].counts;
        out << "\n  size " << (size << round) << ": input " << measured[round].inputBytes
            << ", steps " << counts.steps << ", allocations " << counts.allocations
            << ", bytes allocated " << counts.bytes << ", at once " << counts.peak;
    }
}

} // namespace

Measurement countWork(std::size_t inputBytes, std::function<void()> const& work) {
    restartPeak();
    Counts const before = countsNow();
    work();
    Counts counts = countsNow();
    counts.steps -= before.steps;
    counts.allocations -= before.allocations;
    counts.bytes -= before.bytes;
    counts.held -= before.held;
    counts.peak -= before.peak;
    return {inputBytes, counts};
}

testing::AssertionResult staysInProportion(std::size_t size,
                                           std::function<Measurement(std::size_t)> const& measure,
                                           Proportion const& allowed) {
    measure(size); // what is made once in a process is made here
    Measurements measured;
    for (std::size_t round = 0; round < doublings; ++round) {
        measured[round] = measure(size << round);
    }
    bool isKept = true;
    std::ostringstream text;
    for (Measure const& each : workMeasures) {
        double const growth = growthOf(measured, each.count);
        if (growth > allowed.work) {
            isKept = false;
            text << each.name << " for each object grow " << growth << " times; ";
        }
    }
    double const memory = memoryOf(measured);
    if (memory > allowed.memory) {
        isKept = false;
        text << memory << " bytes at once for each byte of input; ";
    }
    tell(text, size, measured);
    text << "\n  bytes at once for each byte of input: " << memory;
    return (isKept ? testing::AssertionSuccess() : testing::AssertionFailure()) << text.str();
}

CommandFolder::CommandFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "growth-XXXXXX").string();
    m_path = ::mkdtemp(path.data());
}

CommandFolder::~CommandFolder() {
    std::filesystem::remove_all(m_path);
}

std::size_t CommandFolder::write(std::string const& name, std::string const& text) const {
    std::ofstream(m_path / name, std::ios::binary) << text;
    return text.size();
}

std::string CommandFolder::read(std::string const& name) const {
    std::ifstream file(m_path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Measurement CommandFolder::countCommand(std::size_t inputBytes,
                                        std::vector<std::string> const& arguments) const {
    std::string line = "cd " + quotedForShell(m_path.string()) +
                       " && VEXMA_CACHE_SIZE=0 VEXMA_COUNTS=counts " VEXMA_COUNTED_PROGRAM;
    for (std::string const& argument : arguments) {
        line += ' ' + quotedForShell(argument);
    }
    line += " > out 2> error < /dev/null";
    int const status = std::system(line.c_str());
    Measurement measured{inputBytes, {}};
    Counts& counts = measured.counts;
    std::istringstream written(read("counts"));
    written >> counts.steps >> counts.allocations >> counts.bytes >> counts.peak;
    if (!WIFEXITED(status) || !written) {
        throw std::runtime_error("vexma did not end by itself: " + read("error"));
    }
    return measured;
}

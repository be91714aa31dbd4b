#include "tests/faults/FaultRun.h"

#include "KRLException.h"
#include "KRLIDOM_Reader.h"

#include <new>

#include <gtest/gtest.h>

namespace {

// A thread keeps a parser between documents: that is none left behind.
long liveBlocks() {
    KRLIDOM_Reader::releaseParser();
    return failingMemory::liveBlocks();
}

// False when the run came to its end before its nth allocation.
bool failNth(FaultRun const& run, std::size_t nth, failingMemory::Mode mode) {
    bool hasFailed = false;
    long const before = liveBlocks();
    {
        std::function<std::string()> const prepared = run.prepare();
        std::string answer;
        bool ended = false;
        {
            failingMemory::Scope const failing(nth, mode);
            try {
                answer = prepared();
                ended = true;
            } catch (KRLException const&) {
            } catch (std::bad_alloc const&) {
            }
            hasFailed = failing.hasFailed();
        }
        if (ended) {
            EXPECT_EQ(answer, run.expected) << "allocation " << nth;
        }
    }
    EXPECT_EQ(liveBlocks(), before) << "left behind by allocation " << nth;
    run.check();
    return hasFailed;
}

} // namespace

void failEveryAllocation(FaultRun const& run) {
    EXPECT_EQ(run.prepare()(), run.expected);
    run.check();
    for (auto const mode : {failingMemory::Mode::Once, failingMemory::Mode::FromThenOn}) {
        std::size_t nth = 1;
        while (failNth(run, nth, mode) && !testing::Test::HasFailure()) {
            ++nth;
        }
        testing::Test::RecordProperty(mode == failingMemory::Mode::Once ? "once" : "fromThenOn",
                                      std::to_string(nth - 1));
    }
}

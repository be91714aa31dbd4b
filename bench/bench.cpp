// Measures the plug-in and the model store from the inside, each beside the
// least that the same work costs. Takes the options of Google Benchmark; with
// --small first, small models, to see that everything runs.

#include "bench/Rows.h"

#include <string_view>

#include <benchmark/benchmark.h>

namespace bench {

std::string rowName(std::string const& what, std::size_t size) {
    return what + '/' + std::to_string(size);
}

} // namespace bench

int main(int count, char** words) {
    bench::Sizes sizes;
    if (count > 1 && std::string_view(words[1]) == "--small") {
        constexpr std::size_t few = 2'000;
        sizes.medium = few;
        sizes.large = 2 * few;
        sizes.includedIds = few;
        sizes.shortcuts = {2, 10};
        words[1] = words[0];
        --count;
        ++words;
    }
    benchmark::Initialize(&count, words);
    if (benchmark::ReportUnrecognizedArguments(count, words)) {
        return 2;
    }
    bench::registerLoad(sizes);
    bench::registerPolicies(sizes);
    bench::registerTree(sizes);
    bench::registerWriting(sizes);
    bench::registerInteractive(sizes);
    bench::registerReferences(sizes);
    bench::registerViews(sizes);
    bench::registerAccess(sizes);
    bench::registerShortcuts(sizes);
    bench::registerThreads(sizes);
    bench::registerMemory(sizes);
    bench::registerRequests();
    bench::registerImports();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

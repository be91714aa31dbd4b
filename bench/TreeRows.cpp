#include "bench/RecordedDocument.h"
#include "bench/Rows.h"

#include <benchmark/benchmark.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace bench {

namespace {

// The whole tree with half of its objects visible.
Question const wholeTree{.user = "half", .depth = 0};

void answer(benchmark::State& state, std::size_t objects) {
    Asker asker(worldOf({.objects = objects}), wholeTree);
    std::size_t elements = 0;
    for ([[maybe_unused]] auto const& _ : state) {
        elements = asker.ask().response.elementCount();
    }
    state.counters["elements"] = static_cast<double>(elements);
}

void build(benchmark::State& state, std::size_t objects) {
    std::u16string recorded;
    {
        Asker asker(worldOf({.objects = objects}), wholeTree);
        vex::MetadataAnswer const answered = asker.ask();
        recorded = record(answered.response.document().getDocumentElement().raw());
    }
    for ([[maybe_unused]] auto const& _ : state) {
        xercesc::DOMDocument* const document =
            buildBare(recorded, xercesc::XMLPlatformUtils::fgMemoryManager);
        document->release();
    }
}

} // namespace

void registerTree(Sizes const& sizes) {
    benchmark::RegisterBenchmark(rowName("tree/vex", sizes.medium).c_str(), answer, sizes.medium)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(rowName("tree/floor", sizes.medium).c_str(), build, sizes.medium)
        ->Unit(benchmark::kMillisecond);
}

} // namespace bench

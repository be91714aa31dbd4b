#include "bench/RecordedDocument.h"
#include "bench/Rows.h"
#include "host/import/xml/ModelLoader.h"

#include <cstdio>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemoryManager.hpp>

namespace bench {

namespace {

std::size_t residentBytes() {
    ::malloc_trim(0);
    std::size_t pages = 0;
    if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%*u %zu", &pages) != 1) {
            pages = 0;
        }
        std::fclose(file);
    }
    return pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

/// Counts what Xerces-C allocates through it.
class CountingMemory final : public xercesc::MemoryManager {
public:
    void* allocate(XMLSize_t size) override {
        m_bytes += size;
        return ::operator new(size);
    }
    void deallocate(void* block) override { ::operator delete(block); }
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }
    std::size_t bytes() const { return m_bytes; }

private:
    std::size_t m_bytes = 0;
};

// Not timed: what a loaded model takes.
void storeMemory(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    for ([[maybe_unused]] auto const& _ : state) {
        std::size_t const before = residentBytes();
        std::shared_ptr<vex::Model const> const model = vex::loadModel(world.file);
        state.counters["resident"] = static_cast<double>(residentBytes() - before);
        state.counters["store"] = static_cast<double>(model->byteCount());
        state.counters["file"] = static_cast<double>(world.fileBytes);
    }
}

// Not timed: what an answer of elements with four attributes takes, and the
// same document built with bare Xerces-C calls.
void answerMemory(benchmark::State& state, std::size_t objects) {
    Asker asker(worldOf({.objects = objects}),
                {.user = "half", .depth = 0, .properties = {"name", "_path", "_ref", "ID"}});
    for ([[maybe_unused]] auto const& _ : state) {
        vex::MetadataAnswer const answered = asker.ask();
        auto const elements = static_cast<double>(answered.response.elementCount());
        state.counters["element"] = static_cast<double>(answered.response.byteCount()) / elements;
        CountingMemory memory;
        buildBare(record(answered.response.document().getDocumentElement().raw()), &memory)
            ->release();
        state.counters["element_bare"] = static_cast<double>(memory.bytes()) / elements;
    }
}

} // namespace

void registerMemory(Sizes const& sizes) {
    for (std::size_t const objects : {sizes.medium, sizes.large}) {
        benchmark::RegisterBenchmark(rowName("memory/store", objects).c_str(), storeMemory, objects)
            ->Iterations(1);
    }
    benchmark::RegisterBenchmark(rowName("memory/answer", sizes.medium).c_str(), answerMemory,
                                 sizes.medium)
        ->Iterations(1);
}

} // namespace bench

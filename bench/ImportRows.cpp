#include "bench/Rows.h"
#include "host/import/kinds/ImportKinds.h"

#include <filesystem>
#include <stdexcept>

#include <benchmark/benchmark.h>

namespace bench {

namespace {

/// From the file to the texts of both documents, which are read again before they count.
void importModel(benchmark::State& state, char const* kind, std::string const& file) {
    vex::ImportRequest request;
    request.source = file;
    request.name = "m";
    for ([[maybe_unused]] auto const& _ : state) {
        auto const outcome = vex::runImport(*vex::findImportKind(kind), request);
        if (!outcome.documents.has_value()) {
            throw std::runtime_error(file + " could not be imported");
        }
        benchmark::DoNotOptimize(outcome.documents->model.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(std::filesystem::file_size(file)) *
                            static_cast<std::int64_t>(state.iterations()));
}

} // namespace

void registerImports() {
    std::string const models = VEX_SOURCE_DIR "/tests/host/import/";
    benchmark::RegisterBenchmark("import/tabular", importModel, "tabular",
                                 models + "tabular/models/AdventureWorks.bim")
        ->Unit(benchmark::kMillisecond);
}

} // namespace bench

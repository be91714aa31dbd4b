#include "bench/Rows.h"
#include "host/import/kinds/ImportKinds.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <benchmark/benchmark.h>
#include <unistd.h>

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

constexpr int typesOfService = 1'360; // 3.4 MB
constexpr int propertiesOfType = 12;

/// Each fifth type derives from the first one, the others from the one before them that does.
std::string entityType(int number) {
    constexpr char const* types[] = {"String", "Int32", "Decimal", "DateTimeOffset"};
    std::string const name = "thing" + std::to_string(number);
    std::string const base = number % 5 == 0 ? "entity" : "thing" + std::to_string(number / 5 * 5);
    std::string text = "<EntityType Name=\"" + name + "\" BaseType=\"self." + base + "\">\n";
    for (int each = 0; each < propertiesOfType; ++each) {
        std::string const property = "property" + std::to_string(each);
        text += "  <Property Name=\"" + property + "\" Type=\"Edm." + types[each % 4] +
                "\" Nullable=\"false\">\n    <Annotation Term=\"Core.Description\" String=\"What " +
                property + " of " + name + " means to those who use it\"/>\n  </Property>\n";
    }
    return text + "  <NavigationProperty Name=\"other\" Type=\"Collection(self.thing" +
           std::to_string(number * 7 % typesOfService) +
           ")\" ContainsTarget=\"true\"/>\n</EntityType>\n<ComplexType Name=\"part" +
           std::to_string(number) +
           "\"><Property Name=\"value\" Type=\"Edm.String\"/></ComplexType>\n";
}

std::string serviceDescription() {
    std::string text =
        R"(<edmx:Edmx Version="4.0" xmlns:edmx="http://docs.oasis-open.org/odata/ns/edmx">
<edmx:Reference Uri="c"><edmx:Include Namespace="Org.OData.Core.V1" Alias="Core"/></edmx:Reference>
<edmx:DataServices><Schema Namespace="Big" Alias="self" xmlns="http://docs.oasis-open.org/odata/ns/edm">
<EntityType Name="entity"><Key><PropertyRef Name="id"/></Key><Property Name="id" Type="Edm.String"/></EntityType>
)";
    std::string sets;
    for (int number = 0; number < typesOfService; ++number) {
        text += entityType(number);
        if (number % 10 == 0) {
            std::string const digits = std::to_string(number);
            sets += "<EntitySet Name=\"things" + digits + "\" EntityType=\"self.thing" + digits +
                    "\"/>\n";
        }
    }
    return text + "<EntityContainer Name=\"Default\">\n" + sets +
           "</EntityContainer></Schema></edmx:DataServices></edmx:Edmx>\n";
}

void importService(benchmark::State& state) {
    std::string folder = (std::filesystem::temp_directory_path() / "vex-bench.XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr) {
        throw std::runtime_error(folder + " cannot be made");
    }
    std::string const file = folder + "/service.xml";
    std::ofstream(file) << serviceDescription();
    importModel(state, "odata", file);
    std::filesystem::remove_all(folder);
}

} // namespace

void registerImports() {
    std::string const models = VEX_SOURCE_DIR "/tests/host/import/";
    benchmark::RegisterBenchmark("import/tabular", importModel, "tabular",
                                 models + "tabular/models/AdventureWorks.bim")
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("import/odata", importService)->Unit(benchmark::kMillisecond);
}

} // namespace bench

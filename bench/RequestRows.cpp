#include "KRLIDOM_Platform.h"
#include "KRLIDOM_Reader.h"
#include "bench/Rows.h"

#include <benchmark/benchmark.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

namespace bench {

namespace {

constexpr std::string_view request =
    R"(<Metadata Depth="1" start_atPath="[Sales].[Orders]"><Property name="*/@name"/>)"
    R"(<Property name="*/@_path"/><Property name="*/@_ref"/><Property name="*/querySubject"/>)"
    R"(<Property name="*/queryItem"/></Metadata>)";

void read(benchmark::State& state) {
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(KRLIDOM_Reader::parse(request, "request"));
    }
}

void readWithANewParser(benchmark::State& state) {
    KRLIDOM_Initialize();
    for ([[maybe_unused]] auto const& _ : state) {
        xercesc::XercesDOMParser parser;
        parser.setDoNamespaces(false);
        parser.parse(xercesc::MemBufInputSource(reinterpret_cast<XMLByte const*>(request.data()),
                                                request.size(), "request"));
        benchmark::DoNotOptimize(parser.getDocument());
    }
}

} // namespace

void registerRequests() {
    benchmark::RegisterBenchmark(rowName("request/vex", request.size()).c_str(), read)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(rowName("request/floor", request.size()).c_str(),
                                 readWithANewParser)
        ->Unit(benchmark::kMicrosecond);
}

} // namespace bench

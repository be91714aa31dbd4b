#include "KRLIDOM_Writer.h"
#include "bench/RecordedDocument.h"
#include "bench/Rows.h"

#include <ostream>
#include <streambuf>

#include <benchmark/benchmark.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace bench {

namespace {

Question const wholeTree{.user = "half", .depth = 0, .properties = {"name", "_path", "_ref", "ID"}};

/// Counts what is written and keeps nothing.
class CountingBuffer final : public std::streambuf {
public:
    std::size_t bytes() const { return m_bytes; }

protected:
    std::streamsize xsputn(char const*, std::streamsize count) override {
        m_bytes += static_cast<std::size_t>(count);
        return count;
    }

private:
    std::size_t m_bytes = 0;
};

class CountingTarget final : public xercesc::XMLFormatTarget {
public:
    void writeChars(XMLByte const*, XMLSize_t count, xercesc::XMLFormatter*) override {
        m_bytes += count;
    }
    std::size_t bytes() const { return m_bytes; }

private:
    std::size_t m_bytes = 0;
};

void write(benchmark::State& state, std::size_t objects) {
    Asker asker(worldOf({.objects = objects}), wholeTree);
    vex::MetadataAnswer const answered = asker.ask();
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto const& _ : state) {
        CountingBuffer buffer;
        std::ostream out(&buffer);
        KRLIDOM_Writer::write(out, answered.response.document(), false);
        bytes = buffer.bytes();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

void serialise(benchmark::State& state, std::size_t objects) {
    Asker asker(worldOf({.objects = objects}), wholeTree);
    std::u16string const recorded =
        record(asker.ask().response.document().getDocumentElement().raw());
    xercesc::DOMDocument* const document =
        buildBare(recorded, xercesc::XMLPlatformUtils::fgMemoryManager);
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto const& _ : state) {
        CountingTarget target;
        serialiseBare(document, target);
        bytes = target.bytes();
    }
    document->release();
    state.counters["bytes"] = static_cast<double>(bytes);
}

} // namespace

void registerWriting(Sizes const& sizes) {
    benchmark::RegisterBenchmark(rowName("write/vex", sizes.medium).c_str(), write, sizes.medium)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(rowName("write/floor", sizes.medium).c_str(), serialise,
                                 sizes.medium)
        ->Unit(benchmark::kMillisecond);
}

} // namespace bench

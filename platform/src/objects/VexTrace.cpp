#include "VexTrace.h"

#include <atomic>

namespace {

std::atomic<VexTraceSink> currentSink{nullptr};

} // namespace

void OutputDebugString(char const* text) {
    if (VexTraceSink const sink = currentSink.load(std::memory_order_acquire)) {
        sink(text);
    }
}

void VexSetTraceSink(VexTraceSink sink) {
    currentSink.store(sink, std::memory_order_release);
}

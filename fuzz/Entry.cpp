// The fuzzer's way into one target.

#include "fuzz/FuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::run(fuzz::VEX_FUZZ_TARGET, std::string_view(reinterpret_cast<char const*>(data), size));
    return 0;
}

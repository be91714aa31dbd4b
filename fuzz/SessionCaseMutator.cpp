// How the fuzzer changes an input of `sessionCase`.

#include "fuzz/SessionCaseInput.h"

#include <algorithm>
#include <cstdint>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    std::string const mutated = fuzz::mutatedSessionCase(
        std::string_view(reinterpret_cast<char const*>(data), size), most, seed,
        [](std::string& text, std::size_t room) {
            std::size_t const before = std::min(text.size(), room);
            text.resize(room);
            text.resize(
                LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(text.data()), before, room));
        });
    std::copy(mutated.begin(), mutated.end(), data);
    return mutated.size();
}

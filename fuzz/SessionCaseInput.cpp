#include "fuzz/SessionCaseInput.h"

#include <algorithm>

namespace fuzz {

namespace {

constexpr std::size_t head = 2;
constexpr std::size_t mostOfWorld = 0xffff;

std::size_t byteAt(std::string_view input, std::size_t index) {
    return index < input.size() ? static_cast<unsigned char>(input[index]) : 0U;
}

constexpr std::size_t mostOfPart = 512; // more has no effect on most of them
constexpr unsigned seldom = 16;

struct Dice {
    unsigned chance;
    bool isSeldom() {
        bool const is = chance % seldom == 0;
        chance /= seldom;
        return is;
    }
};

// Those of any size reach more, so they are kept more often, and soon nothing else
// would run.
void makeSmall(std::string& choices) {
    if (choices.empty()) {
        choices.push_back('\0');
    } else if (asksForAnySize(choices)) {
        choices.pop_back();
    }
}

} // namespace

SessionCaseInput splitSessionCase(std::string_view input) {
    std::size_t const length = byteAt(input, 0) + 256 * byteAt(input, 1);
    std::string_view const choices = input.substr(std::min(head, input.size()));
    std::size_t const world = std::min(length, choices.size());
    return {std::string(choices.substr(0, world)), std::string(choices.substr(world))};
}

std::string joinSessionCase(SessionCaseInput const& parts) {
    std::size_t const world = std::min(parts.world.size(), mostOfWorld);
    std::string input{static_cast<char>(world % 256), static_cast<char>(world / 256)};
    input.append(parts.world, 0, world);
    return input + parts.session;
}

bool asksForAnySize(std::string const& choices) {
    return choices.size() % seldom == 0;
}

std::string mutatedSessionCase(std::string_view input, std::size_t most, unsigned chance,
                               Change const& change) {
    SessionCaseInput parts = splitSessionCase(input);
    Dice dice{chance};
    bool const ofWorld = dice.isSeldom();
    std::string& changed = ofWorld ? parts.world : parts.session;
    std::string& kept = ofWorld ? parts.session : parts.world;
    if (!dice.isSeldom()) {
        makeSmall(kept);
    }
    if (most > head + kept.size()) {
        change(changed, std::min(most - head - kept.size(), mostOfPart));
    }
    if (!dice.isSeldom()) {
        makeSmall(changed);
    }
    return joinSessionCase(parts).substr(0, most);
}

} // namespace fuzz

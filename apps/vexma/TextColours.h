#pragma once

namespace vex {

/// Text attributes of a terminal, by what the text is; each is "" without colour.
/// Whether there is colour says `Console::outHasColour`.
struct TextColours {
    char const* className;
    char const* name;
    char const* detail; // what may be passed over
    char const* good;
    char const* doubtful;
    char const* bad;
    char const* end;
};

inline TextColours const& textColours(bool colour) {
    static constexpr TextColours coloured{"\033[36m", "\033[1m",  "\033[2m", "\033[32m",
                                          "\033[33m", "\033[31m", "\033[0m"};
    static constexpr TextColours plain{"", "", "", "", "", "", ""};
    return colour ? coloured : plain;
}

} // namespace vex

#pragma once

#include <string>

/// What the plug-in "Telling" tells of its life.
struct TellingLog {
    static constexpr char const* Id = "test.telling/1";

    /// Where it writes, from now on: a word and a blank for each thing that happens.
    void (*tellTo)(std::string* log);
};

/// What `Initialize` and `Terminate` are given to give 0.
inline constexpr char const* tellingRefusal = "refuse";
/// What `Terminate` is given to raise.
inline constexpr char const* tellingThrow = "throw";
/// The action that is done, the one with a result of its own, and the one that throws
/// an int. All others are unknown.
inline constexpr long tellingDone = 1;
inline constexpr long tellingOdd = 2;
inline constexpr long tellingThrowInt = 3;

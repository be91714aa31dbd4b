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
/// What `Initialize` and `Terminate` are given to raise something of the plug-in's own.
inline constexpr char const* tellingThrowOwn = "throw own";

/// The actions. All others are unknown.
inline constexpr long tellingDone = 1;
inline constexpr long tellingOdd = 2; // has a result of its own
inline constexpr long tellingThrowInt = 3;
inline constexpr long tellingRaiseOwn = 4;    // of a type that derives from `KRLException`
inline constexpr long tellingThrowNoText = 5; // of a type of its own without a text
inline constexpr long tellingRaise = 6;       // a `VexException`
inline constexpr long tellingAskHost = 7;     // asks for the session's model service

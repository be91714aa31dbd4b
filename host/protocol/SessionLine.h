#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vex {

/// A value of an action, on its way in or out.
struct SessionValue {
    enum class Kind {
        Empty,
        Long,     // `number`
        String,   // `text`
        Handle,   // `text`: an id, on its way in also a reference
        Node,     // `text`: an XML document; what comes out is not told
        Unusable, // only in: `text` says what is wrong with what stands in its place
    };

    Kind kind = Kind::Empty;
    long number = 0;
    std::string text; // UTF-8

    bool operator==(SessionValue const& other) const = default;
};

/// {"action": A, "in": [V, ...]}
struct SessionAction {
    SessionValue action;
    std::vector<SessionValue> in;
};

/// {"notify": kind}
struct SessionNotification {
    int kind = 0;
};

/// Anything else, with what is wrong about it and what to send.
struct UnusableLine {
    std::string problem;
};

/// What a client says to a session in one line.
using SessionLine = std::variant<SessionAction, SessionNotification, UnusableLine>;

/// A line that was read.
struct ReadLine {
    SessionLine says;
    std::string id{}; // the value of its "id", JSON on one line; "" without one
};

/// The values that a line may hold unless somebody says otherwise: numbers, texts, lists
/// and objects, wherever they stand.
constexpr std::size_t mostValuesOfALine = 10'000;

/// Reads a line; needs no session and raises only what the call's `Budget` does. What is
/// wrong with a line names the first key that has no place in it, with the one it may
/// stand for. A line of too many values or keys is read no further than to the first that
/// is too many.
ReadLine readSessionLine(std::string_view text, std::size_t mostValues = mostValuesOfALine);

/// The bytes that a line with a request of that many bytes may have: each byte
/// may be escaped, and something stands around them.
std::size_t longestSessionLine(std::size_t requestBytes);

} // namespace vex

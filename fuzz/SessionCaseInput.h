#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace fuzz {

/// An input of `sessionCase`: the choices of a world and those of a session on it.
/// Two bytes say how many the world has, the low one first.
struct SessionCaseInput {
    std::string world;
    std::string session;
};

/// Any bytes are an input; what is too short for its world has no session.
SessionCaseInput splitSessionCase(std::string_view input);

/// The input that is split into these parts. A world of more than 65,535 choices
/// loses the rest.
std::string joinSessionCase(SessionCaseInput const& parts);

/// Whether the choices are for a world or session of any size: those whose number
/// divides by 16. The others are for small ones.
bool asksForAnySize(std::string const& choices);

/// Changes a text in place, to at most that many bytes.
using Change = std::function<void(std::string& text, std::size_t most)>;

/// The input with one part changed, in at most `most` bytes: one time in 16 the
/// world, else the session, so that a world that was read serves many sessions.
/// Each part is small 15 times in 16, whatever it was. `chance` is any number.
std::string mutatedSessionCase(std::string_view input, std::size_t most, unsigned chance,
                               Change const& change);

} // namespace fuzz

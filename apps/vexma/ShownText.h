#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vex {

/// How a character is written in place of which a terminal, or who reads it, would do or
/// see something else: control characters, what turns the direction of text around, what
/// takes no room, separators of lines, what is no UTF-8.
enum class Spelling {
    Line,  // \u202E, \xFF, \n, \t: the text stays on its line
    Lines, // the same, but line breaks and tabs stay
    Drawn, // as Lines, and the attributes of `TextColours` stay
    Json,  // \u202e, which means the same there; line breaks stay
    Xml,   // &#x202E;, which means the same there; line breaks and tabs stay
};

/// Goes through a text in UTF-8, character by character. It takes no memory, so that it
/// serves where there is none.
class ShownText {
public:
    /// With `isWhole`, no more follows the text; otherwise a character that is cut off at
    /// its end is left.
    ShownText(std::string_view text, Spelling spelling, bool isWhole = true)
        : m_text(text), m_spelling(spelling), m_isWhole(isWhole) {}

    /// What to write next; empty at the end. Valid until the next call.
    std::string_view next();

    /// What was not gone through.
    std::string_view rest() const { return m_text; }

private:
    std::string_view spelled(char32_t character);
    std::string_view spelledByte(unsigned char byte);
    std::string_view taken(std::size_t bytes);

    std::string_view m_text;
    Spelling m_spelling;
    bool m_isWhole;
    std::array<char, 16> m_spelled{};
};

/// The whole text so.
std::string shownText(std::string_view text, Spelling spelling);

/// `text` (UTF-8) so that it cannot steer a terminal or pass for something else. Line
/// breaks and tabs stay when `keepLines` says so.
inline std::string printable(std::string_view text, bool keepLines) {
    return shownText(text, keepLines ? Spelling::Lines : Spelling::Line);
}

} // namespace vex

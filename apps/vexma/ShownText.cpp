#include "apps/vexma/ShownText.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace vex {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// In order. Spaces that are seen as such are none of them, nor are marks that take part in
// how letters look, joiners and variation selectors aside: those can hide in any name.
constexpr Range hidden[] = {
    {0x0000, 0x001F},   // controls
    {0x007F, 0x009F},   // delete, controls
    {0x00AD, 0x00AD},   // soft hyphen
    {0x034F, 0x034F},   // grapheme joiner
    {0x061C, 0x061C},   // Arabic direction mark
    {0x115F, 0x1160},   // Hangul fillers
    {0x17B4, 0x17B5},   // Khmer inherent vowels
    {0x180B, 0x180F},   // Mongolian selectors
    {0x200B, 0x200F},   // no width, joiners, direction marks
    {0x2028, 0x202E},   // separators of lines and paragraphs, directions
    {0x2060, 0x206F},   // joiner, invisible operators, isolates
    {0x3164, 0x3164},   // Hangul filler
    {0xFDD0, 0xFDEF},   // no characters
    {0xFE00, 0xFE0F},   // variation selectors
    {0xFEFF, 0xFEFF},   // byte order mark
    {0xFFA0, 0xFFA0},   // Hangul filler
    {0xFFF0, 0xFFFB},   // annotations
    {0xFFFE, 0xFFFF},   // no characters
    {0x1BCA0, 0x1BCA3}, // shorthand controls
    {0x1D173, 0x1D17A}, // musical controls
    {0xE0000, 0xE0FFF}, // tags, selectors
};

constexpr char32_t notACharacter = 0xFFFFFFFF;

bool isHidden(char32_t character) {
    Range const* const at =
        std::lower_bound(std::begin(hidden), std::end(hidden), character,
                         [](Range const& range, char32_t each) { return range.last < each; });
    return at != std::end(hidden) && at->first <= character;
}

struct Decoded {
    char32_t character = notACharacter;
    std::size_t length = 1; // in bytes
    bool isCut = false;     // more bytes are needed
};

/// The first character of a text that is not empty.
Decoded decode(std::string_view text) {
    auto const byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    constexpr unsigned payloadBits = 6;
    constexpr unsigned payload = 0x3F;
    unsigned char const lead = byte(0);
    if (lead < 0x80) {
        return {lead};
    }
    std::size_t const length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4) {
        return {};
    }
    char32_t character = lead & (0xFFU >> (length + 1));
    for (std::size_t index = 1; index < length; ++index) {
        if (index == text.size()) {
            return {notACharacter, 1, true};
        }
        if ((byte(index) & ~payload) != 0x80) {
            return {};
        }
        character = character << payloadBits | (byte(index) & payload);
    }
    constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    bool const isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < least[length] || isSurrogate || character > 0x10FFFF) {
        return {};
    }
    return {character, length};
}

/// The length of an attribute of `TextColours` that the text begins with; 0 without one.
std::size_t colourLength(std::string_view text) {
    std::size_t length = 2; // ESC [
    if (!text.starts_with("\033[")) {
        return 0;
    }
    while (length < text.size() && length < 4 && text[length] >= '0' && text[length] <= '9') {
        ++length;
    }
    return length < text.size() && text[length] == 'm' ? length + 1 : 0;
}

} // namespace

std::string_view ShownText::taken(std::size_t bytes) {
    std::string_view const start = m_text.substr(0, bytes);
    m_text.remove_prefix(bytes);
    return start;
}

std::string_view ShownText::next() {
    bool const keepsLines = m_spelling != Spelling::Line;
    std::size_t plain = 0;
    while (plain < m_text.size()) {
        std::string_view const rest = m_text.substr(plain);
        Decoded const decoded = decode(rest);
        if (decoded.isCut && !m_isWhole) {
            return taken(plain); // the rest follows
        }
        bool const isLine = decoded.character == U'\n' || decoded.character == U'\t';
        std::size_t const colour = m_spelling == Spelling::Drawn ? colourLength(rest) : 0;
        if ((isLine && keepsLines) || colour != 0) {
            plain += std::max(colour, std::size_t{1});
        } else if (decoded.character != notACharacter && !isHidden(decoded.character)) {
            plain += decoded.length;
        } else if (plain > 0) {
            break;
        } else {
            auto const byte = static_cast<unsigned char>(rest.front());
            m_text.remove_prefix(decoded.length);
            return decoded.character == notACharacter ? spelledByte(byte)
                                                      : spelled(decoded.character);
        }
    }
    return taken(plain);
}

std::string_view ShownText::spelledByte(unsigned char byte) {
    if (m_spelling == Spelling::Json || m_spelling == Spelling::Xml) {
        return "\xEF\xBF\xBD"; // these know no bytes
    }
    int const length = std::snprintf(m_spelled.data(), m_spelled.size(), "\\x%02X", byte);
    return {m_spelled.data(), static_cast<std::size_t>(length)};
}

std::string_view ShownText::spelled(char32_t character) {
    auto const code = static_cast<unsigned>(character);
    bool const isBeyond = code > 0xFFFF;
    auto const print = [&](char const* format, auto... values) -> std::string_view {
        int const length = std::snprintf(m_spelled.data(), m_spelled.size(), format, values...);
        return {m_spelled.data(), static_cast<std::size_t>(length)};
    };
    switch (m_spelling) {
    case Spelling::Json:
        return isBeyond
                   ? print("\\u%04x\\u%04x", 0xD7C0U + (code >> 10U), 0xDC00U | (code & 0x3FFU))
                   : print("\\u%04x", code);
    case Spelling::Xml:
        return code < 0x20 || code == 0xFFFE || code == 0xFFFF ? "\xEF\xBF\xBD"
                                                               : print("&#x%X;", code);
    case Spelling::Line:
    case Spelling::Lines:
    case Spelling::Drawn:
        break;
    }
    switch (character) {
    case U'\n':
        return "\\n";
    case U'\t':
        return "\\t";
    case U'\r':
        return "\\r";
    default:
        return isBeyond ? print("\\U%08X", code) : print("\\u%04X", code);
    }
}

std::string shownText(std::string_view text, Spelling spelling) {
    std::string shown;
    shown.reserve(text.size());
    ShownText pieces(text, spelling);
    for (std::string_view piece = pieces.next(); !piece.empty(); piece = pieces.next()) {
        shown += piece;
    }
    return shown;
}

} // namespace vex

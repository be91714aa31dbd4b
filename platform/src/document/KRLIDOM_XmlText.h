#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

/// Text of a document on its way out as XML in UTF-8: gathered in a block that goes to a sink
/// whenever it is full.
class KRLIDOM_XmlText {
public:
    using Sink = std::function<void(std::string_view)>;

    /// What is escaped depends on where a text stands.
    enum class Place : std::uint8_t { Markup, Content, Attribute };

    /// `version11`: the text belongs to a document of XML 1.1, where other control characters
    /// are no text. Raises `KRLLimitException` without memory.
    KRLIDOM_XmlText(Sink const& sink, bool version11);
    KRLIDOM_XmlText(KRLIDOM_XmlText const&) = delete;
    KRLIDOM_XmlText& operator=(KRLIDOM_XmlText const&) = delete;

    /// Adds marks and blanks as they are.
    void put(std::string_view ascii);
    /// A text of which each character can be written.
    struct Checked {
        std::u16string_view text{};
        unsigned marks = 0; ///< of its units, all together
    };
    /// Looks through a text that ends with a zero; null counts as empty. Raises
    /// `KRLDocumentException` for a character that XML cannot hold.
    Checked check(char16_t const* text) const;
    void put(Checked const& text, Place place);
    /// Both at once: nothing of the text is added when it cannot be written.
    void put(char16_t const* text, Place place) { put(check(text), place); }
    /// Breaks the line, unless nothing was added yet.
    void breakLine();
    /// Ends the line that is begun, an empty one too.
    void endLine();
    /// Hands over what the block holds.
    void flush();

private:
    static constexpr std::size_t blockSize = 32U << 10U;

    void putAscii(std::u16string_view text);
    void putEscaped(std::u16string_view text, unsigned escapes);
    void putEntity(char16_t unit);
    void putByte(unsigned byte) { m_block[m_filled++] = static_cast<char>(byte); }
    void makeRoom(std::size_t bytes);
    bool isEmpty() const { return !m_handedOver && m_filled == 0; }

    Sink const& m_sink;
    std::array<std::uint8_t, 256> const& m_marks;
    bool m_handedOver = false;
    bool m_endsLine = false; // of what was handed over
    std::size_t m_filled = 0;
    std::unique_ptr<char[]> m_block; // not in the stack, which may be small
};

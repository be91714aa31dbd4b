#include "platform/src/document/KRLIDOM_XmlText.h"

#include "KRLException.h"
#include "platform/src/document/KRLIDOM_Guard.h"

#include <algorithm>
#include <new>

namespace {

// What a text has among its units.
enum Mark : std::uint8_t {
    Unwritable = 1,
    Half = 2, // of a surrogate pair
    Wide = 4, // more than one byte in UTF-8
    EscapedInContent = 8,
    EscapedInAttribute = 16
};

using Marks = std::array<std::uint8_t, 256>;

constexpr void add(Marks& marks, std::u16string_view units, unsigned mark) {
    for (char16_t const unit : units) {
        marks[unit] = static_cast<std::uint8_t>(marks[unit] | mark);
    }
}

constexpr Marks marksOf(bool version11) {
    Marks marks{};
    for (char16_t unit = 0x80; unit < marks.size(); ++unit) {
        marks[unit] = Wide;
    }
    for (char16_t unit = 1; unit < 0xA0; ++unit) {
        bool const isControl = unit < 0x20 || unit >= 0x7F;
        if (isControl && unit != u'\t' && unit != u'\n' && unit != u'\r') {
            bool const high = version11 && unit != 0x85; // which ends a line there
            add(marks, {&unit, 1}, unit < 0x20 || high ? Unwritable : 0);
        }
    }
    add(marks, u"&<>\r", EscapedInContent);
    add(marks, u"&<\"\t\n\r", EscapedInAttribute);
    return marks;
}

constexpr Marks marks10 = marksOf(false);
constexpr Marks marks11 = marksOf(true);

unsigned markOf(Marks const& marks, char16_t unit) {
    if (unit < marks.size()) {
        return marks[unit];
    }
    if (unit >= 0xD800 && unit < 0xE000) {
        return Wide | Half;
    }
    return unit >= 0xFFFE ? Wide | Unwritable : Wide;
}

bool isLead(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isTrail(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

bool hasSingleHalf(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isLead(text[i]) && i + 1 < text.size() && isTrail(text[i + 1])) {
            ++i;
        } else if (isLead(text[i]) || isTrail(text[i])) {
            return true;
        }
    }
    return false;
}

unsigned escapesIn(KRLIDOM_XmlText::Place place) {
    switch (place) {
    case KRLIDOM_XmlText::Place::Content:
        return EscapedInContent;
    case KRLIDOM_XmlText::Place::Attribute:
        return EscapedInAttribute;
    case KRLIDOM_XmlText::Place::Markup:
        break;
    }
    return 0;
}

struct Entity {
    char16_t unit;
    std::string_view text;
};

constexpr std::array entities{
    Entity{u'&', "&amp;"},  Entity{u'<', "&lt;"},   Entity{u'>', "&gt;"},  Entity{u'"', "&quot;"},
    Entity{u'\t', "&#x9;"}, Entity{u'\n', "&#xA;"}, Entity{u'\r', "&#xD;"}};

// The most bytes that one unit, or a pair of them, takes.
constexpr std::size_t widest = 6;

} // namespace

KRLIDOM_XmlText::KRLIDOM_XmlText(Sink const& sink, bool version11)
    : m_sink(sink), m_marks(version11 ? marks11 : marks10),
      m_block(new (std::nothrow) char[blockSize]) {
    if (m_block == nullptr) {
        KRLIDOM::raiseOutOfMemory(nullptr);
    }
}

void KRLIDOM_XmlText::put(std::string_view ascii) {
    while (!ascii.empty()) {
        makeRoom(1);
        std::size_t const count = ascii.copy(m_block.get() + m_filled, blockSize - m_filled);
        m_filled += count;
        ascii.remove_prefix(count);
    }
}

KRLIDOM_XmlText::Checked KRLIDOM_XmlText::check(char16_t const* text) const {
    unsigned marks = 0;
    char16_t const* end = text;
    for (; end != nullptr && *end != 0; ++end) { // the length is found along the way
        marks |= markOf(m_marks, *end);
    }
    Checked const checked{std::u16string_view(text, static_cast<std::size_t>(end - text)), marks};
    if ((marks & Unwritable) != 0 || ((marks & Half) != 0 && hasSingleHalf(checked.text))) {
        throw KRLDocumentException(
            "", 0, 0, "The document cannot be written as XML: invalid or illegal XML character");
    }
    return checked;
}

void KRLIDOM_XmlText::put(Checked const& text, Place place) {
    unsigned const escapes = escapesIn(place);
    std::u16string_view units = text.text;
    // As with a break made by us: a document begins with no empty line.
    if (isEmpty() && !units.empty() && units.front() == u'\n') {
        units.remove_prefix(1);
    }
    if ((text.marks & (escapes | Wide)) == 0) {
        putAscii(units);
    } else {
        putEscaped(units, escapes);
    }
}

void KRLIDOM_XmlText::putAscii(std::u16string_view text) {
    while (!text.empty()) {
        makeRoom(1);
        std::size_t const count = std::min(text.size(), blockSize - m_filled);
        char* const to = m_block.get() + m_filled;
        for (std::size_t i = 0; i < count; ++i) {
            to[i] = static_cast<char>(text[i]);
        }
        m_filled += count;
        text.remove_prefix(count);
    }
}

void KRLIDOM_XmlText::putEscaped(std::u16string_view text, unsigned escapes) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        makeRoom(widest);
        unsigned const unit = text[i];
        if (unit < m_marks.size() && (m_marks[unit] & escapes) != 0) {
            putEntity(text[i]);
        } else if (unit < 0x80) {
            putByte(unit);
        } else if (unit < 0x800) {
            putByte(0xC0U | unit >> 6U);
            putByte(0x80U | (unit & 0x3FU));
        } else if (isLead(text[i])) { // its other half follows, which was made sure of
            unsigned const point = 0x10000U + ((unit - 0xD800U) << 10U) + (text[++i] - 0xDC00U);
            putByte(0xF0U | point >> 18U);
            putByte(0x80U | (point >> 12U & 0x3FU));
            putByte(0x80U | (point >> 6U & 0x3FU));
            putByte(0x80U | (point & 0x3FU));
        } else {
            putByte(0xE0U | unit >> 12U);
            putByte(0x80U | (unit >> 6U & 0x3FU));
            putByte(0x80U | (unit & 0x3FU));
        }
    }
}

void KRLIDOM_XmlText::putEntity(char16_t unit) {
    auto const* const entity = std::find_if(
        entities.begin(), entities.end(), [unit](Entity const& each) { return each.unit == unit; });
    m_filled += entity->text.copy(m_block.get() + m_filled, widest);
}

void KRLIDOM_XmlText::breakLine() {
    if (!isEmpty()) {
        put("\n");
    }
}

void KRLIDOM_XmlText::endLine() {
    if (m_filled == 0 ? !m_endsLine : m_block[m_filled - 1] != '\n') {
        put("\n");
    }
}

void KRLIDOM_XmlText::makeRoom(std::size_t bytes) {
    if (blockSize - m_filled < bytes) {
        flush();
    }
}

void KRLIDOM_XmlText::flush() {
    if (m_filled == 0) {
        return;
    }
    std::string_view const block(m_block.get(), m_filled);
    m_handedOver = true;
    m_endsLine = block.back() == '\n';
    m_filled = 0; // is not handed over again when the sink raises
    m_sink(block);
}

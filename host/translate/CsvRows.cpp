#include "host/translate/CsvRows.h"

#include "KRLException.h"

namespace vex {

namespace {

constexpr std::string_view separators = ",;\t";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view beginsFormula = "=+-@\t\r";

char separatorOf(std::string_view text) {
    std::size_t const found = text.substr(0, text.find('\n')).find_first_of(separators);
    return found == std::string_view::npos ? separators.front() : text[found];
}

std::string_view withoutMark(std::string_view text) {
    return text.starts_with(byteOrderMark) ? text.substr(byteOrderMark.size()) : text;
}

bool isFormula(std::string_view text) {
    return !text.empty() && beginsFormula.find(text.front()) != std::string_view::npos;
}

/// What looks as if it had been marked gets a mark, too, so that each text comes back.
bool looksMarked(std::string_view text) {
    return text.size() > 1 && text.front() == '\'' &&
           (isFormula(text.substr(1)) || text[1] == '\'');
}

} // namespace

CsvRows::CsvRows(std::string_view text, std::string const& name)
    : m_text(withoutMark(text)), m_name(name), m_separator(separatorOf(m_text)) {}

void CsvRows::fail(std::string const& text, DocumentPosition at) const {
    throw KRLDocumentException(m_name, at.line, at.column, text);
}

char CsvRows::take() {
    char const unit = m_text[m_offset++];
    if (unit == '\n') {
        m_position = {m_position.line + 1, 1};
    } else if ((static_cast<unsigned char>(unit) & 0xC0U) != 0x80U) {
        ++m_position.column; // not for the further bytes of a character
    }
    return unit;
}

bool CsvRows::isLineEnd() const {
    return m_text.substr(m_offset).starts_with("\r\n") || m_text[m_offset] == '\n';
}

void CsvRows::skipLineEnd() {
    while (!isEnd() && take() != '\n') {
    }
}

std::vector<CsvRows::Cell> CsvRows::next() {
    while (!isEnd() && isLineEnd()) {
        skipLineEnd();
    }
    std::vector<Cell> cells;
    while (!isEnd()) {
        cells.push_back(cell());
        if (isEnd() || isLineEnd()) {
            break;
        }
        take(); // the separator
        if (isEnd() || isLineEnd()) {
            cells.push_back({{}, m_position});
            break;
        }
    }
    if (!isEnd()) {
        skipLineEnd();
    }
    return cells;
}

CsvRows::Cell CsvRows::cell() {
    Cell read{{}, m_position};
    if (++m_cells > MostCells) {
        fail("there are more than " + std::to_string(MostCells) + " cells; split the file",
             m_position);
    }
    if (m_text[m_offset] == '"') {
        quotedCell(read);
        return read;
    }
    while (!isEnd() && !isLineEnd() && m_text[m_offset] != m_separator) {
        if (m_text[m_offset] == '"') {
            fail("a quote stands inside a cell that does not begin with one; put the cell in "
                 "quotes and double those inside",
                 m_position);
        }
        read.text += take();
    }
    return read;
}

void CsvRows::quotedCell(Cell& cell) {
    take();
    for (;;) {
        if (isEnd()) {
            fail("the quote that begins here has no end; add one", cell.position);
        }
        char const unit = take();
        if (unit != '"') {
            cell.text += unit;
        } else if (!isEnd() && m_text[m_offset] == '"') {
            cell.text += take();
        } else {
            break;
        }
    }
    if (!isEnd() && !isLineEnd() && m_text[m_offset] != m_separator) {
        fail("something stands behind the end of a quote; double quotes inside a cell", m_position);
    }
}

std::string csvCell(std::string_view text) {
    std::string const shown = (isFormula(text) || looksMarked(text) ? "'" : "") + std::string(text);
    if (shown.find_first_of("\",;\t\r\n") == std::string::npos) {
        return shown;
    }
    std::string cell = "\"";
    for (char const unit : shown) {
        cell.append(unit == '"' ? 2 : 1, unit);
    }
    return cell + '"';
}

std::string csvText(std::string cell) {
    if (looksMarked(cell)) {
        cell.erase(0, 1);
    }
    return cell;
}

} // namespace vex

#pragma once

#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// Rows of comma-separated values as RFC 4180 has them, one after another. Lines end with CR
/// LF or LF; what stands between cells is found in the first row: ",", ";" or a tab.
class CsvRows {
public:
    struct Cell {
        std::string text;
        DocumentPosition position;
    };

    static constexpr std::size_t MostCells = 2'000'000;

    /// The text is the caller's; `name` stands for it in messages.
    CsvRows(std::string_view text, std::string const& name);

    /// The cells of the next row; none at the end. An empty line is no row. Raises
    /// `KRLDocumentException` where a quote is missing.
    std::vector<Cell> next();

    [[noreturn]] void fail(std::string const& text, DocumentPosition at) const;

private:
    bool isEnd() const { return m_offset >= m_text.size(); }
    bool isLineEnd() const;
    void skipLineEnd();
    char take();
    Cell cell();
    void quotedCell(Cell& cell);

    std::string_view m_text;
    std::string const& m_name;
    std::size_t m_offset = 0;
    DocumentPosition m_position{1, 1};
    char m_separator;
    std::size_t m_cells = 0;
};

/// A text as a cell; what a spreadsheet would take for a formula gets a "'" before it.
std::string csvCell(std::string_view text);

/// Without that "'".
std::string csvText(std::string cell);

} // namespace vex

#include "host/translate/CsvTranslation.h"

#include "I18NString.h"
#include "host/translate/CsvRows.h"
#include "host/translate/TranslationMarks.h"

#include <algorithm>
#include <array>
#include <set>

namespace vex {

namespace {

enum Column { Object, Property, Source, Target, Mark, Note, ColumnCount };
constexpr std::array<std::string_view, ColumnCount> heads{"object", "property", "source",
                                                          "target", "mark",     "note"};
constexpr std::size_t none = static_cast<std::size_t>(-1);

std::string headOf(Column column, I18NLocale locale) {
    std::string const head(heads[column]);
    return locale == I18NLocale() ? head : head + " (" + locale.getName().toUtf8() + ')';
}

/// Spreadsheets end lines inside cells in their own way.
std::string withPlainLines(std::string_view text) {
    std::string plain;
    for (char const unit : text) {
        while (unit == '\n' && plain.ends_with('\r')) {
            plain.pop_back();
        }
        plain += unit;
    }
    return plain;
}

class RowReader {
public:
    RowReader(std::string_view text, std::string const& name) : m_rows(text, name) {
        m_places.fill(none);
    }

    TranslationFile read(std::string_view text) && {
        if (I18NString::fromUtf8(text).toUtf8() != text) {
            m_rows.fail("the text is not UTF-8; save the table as CSV in UTF-8", {1, 1});
        }
        readHead(m_rows.next());
        for (auto cells = m_rows.next(); !cells.empty(); cells = m_rows.next()) {
            readRow(std::move(cells));
        }
        return std::move(m_file);
    }

private:
    void readHead(std::vector<CsvRows::Cell> const& cells) {
        m_width = cells.size();
        for (std::size_t place = 0; place < cells.size(); ++place) {
            std::string const& head = cells[place].text;
            for (std::size_t column = 0; column < heads.size(); ++column) {
                bool const isNamed =
                    head == heads[column] || head.starts_with(std::string(heads[column]) + " (");
                if (isNamed && m_places[column] != none) {
                    m_rows.fail("the column \"" + std::string(heads[column]) +
                                    "\" stands twice; remove one of the two",
                                cells[place].position);
                }
                if (isNamed) {
                    m_places[column] = place;
                    readLocale(static_cast<Column>(column), cells[place]);
                }
            }
        }
        for (Column const column : {Object, Property, Source, Target}) {
            if (m_places[column] == none) {
                m_rows.fail("the first line names no column \"" + std::string(heads[column]) +
                                "\"; the columns object, property, source and target are needed",
                            {1, 1});
            }
        }
    }

    void readLocale(Column column, CsvRows::Cell const& head) {
        std::size_t const start = head.text.find('(');
        if (start == std::string::npos || (column != Source && column != Target)) {
            return;
        }
        std::string const written = head.text.substr(start + 1, head.text.find(')') - start - 1);
        I18NString const locale = I18NString::fromUtf8(written);
        if (!I18NLocale::isKnown(locale)) {
            m_rows.fail("the column is of the language \"" + written +
                            "\", which is unknown; write one like de or de_AT",
                        head.position);
        }
        if (column == Source) {
            m_file.sourceLocale = I18NLocale(locale);
        } else {
            m_file.targetLocale = I18NLocale(locale);
        }
    }

    void readRow(std::vector<CsvRows::Cell> cells) {
        if (cells.size() != m_width) {
            m_rows.fail("the line has " + std::to_string(cells.size()) +
                            " cells, but the first one has " + std::to_string(m_width) +
                            "; put cells that hold separators or line ends in quotes",
                        cells.front().position);
        }
        auto const text = [&](Column column) {
            std::size_t const place = m_places[column];
            return place == none ? std::string() : csvText(std::move(cells[place].text));
        };
        DocumentPosition const position = cells[m_places[Object]].position;
        TranslationUnit unit{.object = text(Object), .property = text(Property), .source = {}};
        unit.source = withPlainLines(text(Source));
        unit.target = withPlainLines(text(Target));
        unit.note = text(Note);
        unit.position = position;
        if (unit.object.empty() || unit.property.empty()) {
            m_rows.fail("the line names no object or no property; fill both cells", position);
        }
        if (auto const mark = findTranslationMark(text(Mark))) {
            unit.mark = *mark;
        }
        if (!m_known.emplace(unit.object, unit.property).second) {
            m_rows.fail("the " + unit.property + " of \"" + unit.object +
                            "\" stands in a line before; remove one of the two",
                        position);
        }
        m_file.units.push_back(std::move(unit));
    }

    CsvRows m_rows;
    TranslationFile m_file;
    std::array<std::size_t, ColumnCount> m_places{};
    std::size_t m_width = 0;
    std::set<std::pair<std::string, std::string>> m_known;
};

} // namespace

std::string writeCsv(TranslationFile const& file) {
    std::string text = std::string(heads[Object]) + ',' + std::string(heads[Property]) + ',' +
                       headOf(Source, file.sourceLocale) + ',' +
                       headOf(Target, file.targetLocale.value_or(I18NLocale())) + ',' +
                       std::string(heads[Mark]) + ',' + std::string(heads[Note]) + "\r\n";
    for (TranslationUnit const& unit : file.units) {
        text += csvCell(unit.object) + ',' + csvCell(unit.property) + ',' + csvCell(unit.source) +
                ',' + csvCell(unit.target) + ',' + translationMarkName(unit.mark) + ',' +
                csvCell(unit.note) + "\r\n";
    }
    return text;
}

TranslationFile readCsv(std::string_view text, std::string const& name) {
    return RowReader(text, name).read(text);
}

} // namespace vex

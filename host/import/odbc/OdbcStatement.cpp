#include "host/import/odbc/OdbcStatement.h"

#include "host/import/odbc/OdbcException.h"
#include "host/import/odbc/OdbcText.h"

#include <algorithm>
#include <utility>

namespace vex {

namespace {

constexpr std::size_t pieceUnits = 2'048;

} // namespace

OdbcStatement::OdbcStatement(OdbcHandle const& connection, OdbcAllowance& left,
                             std::function<std::string(std::string)> clean)
    : m_handle(SQL_HANDLE_STMT, &connection), m_left(left), m_clean(std::move(clean)),
      m_piece(pieceUnits) {}

void OdbcStatement::check(SQLRETURN code, char const* step) const {
    if (SQL_SUCCEEDED(code)) {
        return;
    }
    auto const diagnosis = m_handle.diagnosis();
    std::string const text = diagnosis.text.empty()
                                 ? "the driver says nothing, code " + std::to_string(code)
                                 : m_clean(diagnosis.text);
    throw OdbcException("the database could not be read (" + std::string(step) + "): " + text,
                        diagnosis.state);
}

void OdbcStatement::execute(std::string_view statement,
                            std::vector<std::string> const& parameters) {
    std::vector<std::vector<SQLWCHAR>> texts; // the driver reads them when it executes
    std::vector<SQLLEN> lengths(parameters.size());
    for (std::size_t number = 0; number < parameters.size(); ++number) {
        std::vector<SQLWCHAR>& text = texts.emplace_back(wideText(parameters[number]));
        std::size_t const units = text.size() - 1;
        lengths[number] = static_cast<SQLLEN>(units * sizeof(SQLWCHAR));
        check(
            SQLBindParameter(m_handle.get(), static_cast<SQLUSMALLINT>(number + 1), SQL_PARAM_INPUT,
                             SQL_C_WCHAR, SQL_WVARCHAR, std::max<SQLULEN>(units, 1), 0, text.data(),
                             static_cast<SQLLEN>(text.size() * sizeof(SQLWCHAR)), &lengths[number]),
            "parameter");
    }
    std::vector<SQLWCHAR> text = wideText(statement);
    SQLRETURN const code =
        SQLExecDirectW(m_handle.get(), text.data(), static_cast<SQLINTEGER>(text.size() - 1));
    if (code != SQL_NO_DATA) { // a statement that changed nothing
        check(code, "execute");
    }
}

std::vector<OdbcRow> OdbcStatement::fetch(std::vector<OdbcType> const& types,
                                          std::atomic<bool> const& isEnded) {
    SQLSMALLINT columns = 0;
    check(SQLNumResultCols(m_handle.get(), &columns), "columns");
    if (columns < 0 || static_cast<std::size_t>(columns) < types.size()) {
        throw OdbcException("the database could not be read: " + std::to_string(types.size()) +
                            " columns were asked for, and it gave " + std::to_string(columns));
    }
    std::vector<OdbcRow> rows;
    while (!isEnded.load(std::memory_order_relaxed)) {
        SQLRETURN const code = SQLFetch(m_handle.get());
        if (code == SQL_NO_DATA) {
            break;
        }
        check(code, "fetch");
        take(m_left.values, types.size(), "values");
        std::vector<OdbcRow::Value> values;
        values.reserve(types.size());
        for (std::size_t number = 0; number < types.size(); ++number) {
            auto const column = static_cast<SQLUSMALLINT>(number + 1);
            values.push_back(types[number] == OdbcType::Number ? readNumber(column)
                                                               : readText(column));
        }
        rows.emplace_back(std::move(values));
    }
    return rows;
}

void OdbcStatement::cancel() {
    SQLCancel(m_handle.get()); // what comes of it is told to the thread that waits
}

OdbcRow::Value OdbcStatement::readNumber(SQLUSMALLINT column) {
    SQLBIGINT number = 0;
    SQLLEN length = 0;
    check(SQLGetData(m_handle.get(), column, SQL_C_SBIGINT, &number, sizeof number, &length),
          "number");
    return length == SQL_NULL_DATA ? OdbcRow::Value() : OdbcRow::Value(std::int64_t{number});
}

// A text that is longer than the piece comes in several; a pair of surrogates may be cut.
OdbcRow::Value OdbcStatement::readText(SQLUSMALLINT column) {
    std::vector<SQLWCHAR> text;
    for (;;) {
        SQLLEN length = 0;
        m_piece.front() = 0;
        SQLRETURN const code =
            SQLGetData(m_handle.get(), column, SQL_C_WCHAR, m_piece.data(),
                       static_cast<SQLLEN>(m_piece.size() * sizeof(SQLWCHAR)), &length);
        if (code == SQL_NO_DATA) {
            break; // the last piece was as long as the buffer
        }
        check(code, "text");
        if (length == SQL_NULL_DATA) {
            return {};
        }
        auto const most = m_piece.end() - 1;
        auto end = std::find(m_piece.begin(), most, SQLWCHAR{0});
        bool const isWhole =
            length >= 0 && static_cast<std::size_t>(length) <=
                               static_cast<std::size_t>(most - m_piece.begin()) * sizeof(SQLWCHAR);
        if (isWhole) {
            end = m_piece.begin() + length / static_cast<SQLLEN>(sizeof(SQLWCHAR));
        }
        take(m_left.bytes, static_cast<std::size_t>(end - m_piece.begin()) * sizeof(SQLWCHAR),
             "bytes of texts");
        text.insert(text.end(), m_piece.begin(), end);
        if (isWhole || code == SQL_SUCCESS) {
            break;
        }
        if (end == m_piece.begin()) {
            throw OdbcException("the database could not be read: the driver gives a text that "
                                "does not end");
        }
    }
    return utf8Text(text.data(), text.size());
}

void OdbcStatement::take(std::size_t& left, std::size_t count, char const* what) const {
    if (count > left) {
        throw OdbcLimitException("the database has more " + std::string(what) +
                                 " than an import takes; import fewer schemas, with --schema");
    }
    left -= count;
}

} // namespace vex

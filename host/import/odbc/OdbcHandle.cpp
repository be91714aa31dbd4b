#include "host/import/odbc/OdbcHandle.h"

#include "host/import/odbc/OdbcException.h"
#include "host/import/odbc/OdbcText.h"

#include <algorithm>
#include <array>

namespace vex {

namespace {

constexpr SQLSMALLINT mostRecords = 8;
constexpr std::size_t stateUnits = 6;
constexpr std::size_t messageUnits = 2'048;

/// On one line, since messages are.
std::string onOneLine(std::string const& text) {
    std::string line;
    for (char const unit : text) {
        bool const isBlank = unit == ' ' || unit == '\t' || unit == '\r' || unit == '\n';
        if (!isBlank) {
            line += unit;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

} // namespace

OdbcHandle::OdbcHandle(SQLSMALLINT kind, OdbcHandle const* parent) : m_kind(kind) {
    SQLRETURN const code =
        SQLAllocHandle(kind, parent == nullptr ? SQL_NULL_HANDLE : parent->get(), &m_handle);
    if (!SQL_SUCCEEDED(code)) {
        throw OdbcException("the driver manager of ODBC gave no handle" +
                            (parent == nullptr ? "" : ": " + parent->diagnosis().text));
    }
}

OdbcHandle::~OdbcHandle() {
    SQLFreeHandle(m_kind, m_handle); // nobody is left to be told when it fails
}

OdbcHandle::Diagnosis OdbcHandle::diagnosis() const {
    Diagnosis found;
    for (SQLSMALLINT record = 1; record <= mostRecords; ++record) {
        std::array<SQLWCHAR, stateUnits> state{};
        std::array<SQLWCHAR, messageUnits> message{};
        SQLINTEGER number = 0;
        SQLSMALLINT length = 0;
        SQLRETURN const code =
            SQLGetDiagRecW(m_kind, m_handle, record, state.data(), &number, message.data(),
                           static_cast<SQLSMALLINT>(message.size()), &length);
        if (!SQL_SUCCEEDED(code)) {
            break;
        }
        auto const end = std::find(message.begin(), message.end() - 1, SQLWCHAR{0});
        if (record == 1) {
            found.state = utf8Text(state.data(), stateUnits - 1);
        } else {
            found.text += "; ";
        }
        found.text +=
            onOneLine(utf8Text(message.data(), static_cast<std::size_t>(end - message.begin())));
    }
    return found;
}

} // namespace vex

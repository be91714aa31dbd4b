#include "host/import/odbc/OdbcConnection.h"

#include "host/import/odbc/ConnectionString.h"
#include "host/import/odbc/OdbcException.h"
#include "host/import/odbc/OdbcHandle.h"
#include "host/import/odbc/OdbcStatement.h"
#include "host/import/odbc/OdbcText.h"
#include "host/import/odbc/WatchedCall.h"

#include <array>
#include <cstdint>

namespace vex {

namespace {

constexpr std::size_t nameUnits = 256;
// To connect cannot be cancelled.
constexpr std::uintptr_t secondsToConnect = 30;

// Values of attributes are passed as pointers.
SQLPOINTER asPointer(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT
}

class OdbcEnvironment {
public:
    OdbcEnvironment() : m_handle(SQL_HANDLE_ENV, nullptr) {
        SQLRETURN const code =
            SQLSetEnvAttr(m_handle.get(), SQL_ATTR_ODBC_VERSION, asPointer(SQL_OV_ODBC3), 0);
        if (!SQL_SUCCEEDED(code)) {
            throw OdbcException("the driver manager does not know ODBC 3: " +
                                m_handle.diagnosis().text);
        }
    }
    OdbcHandle const& handle() const { return m_handle; }

private:
    OdbcHandle m_handle;
};

} // namespace

struct OdbcConnection::State {
    OdbcEnvironment environment{};
    OdbcHandle connection{SQL_HANDLE_DBC, &environment.handle()};
    ConnectionString how;
    OdbcAllowance left;
    std::size_t statements = 0;
    bool isOpen = false;

    State(ConnectionString connectionString, OdbcLimits const& limits)
        : how(std::move(connectionString)), left{limits.values, limits.bytes} {}
    State(State const&) = delete;
    State& operator=(State const&) = delete;
    // What was asked is known by now; how the connection ends changes nothing of it.
    ~State() {
        if (isOpen) {
            SQLEndTran(SQL_HANDLE_DBC, connection.get(), SQL_ROLLBACK);
            SQLDisconnect(connection.get());
        }
    }

    void check(SQLRETURN code, char const* problem) const {
        if (!SQL_SUCCEEDED(code)) {
            auto const diagnosis = connection.diagnosis();
            throw OdbcException(std::string(problem) + ": " + how.withoutSecrets(diagnosis.text),
                                diagnosis.state);
        }
    }

    void open() {
        check(SQLSetConnectAttrW(connection.get(), SQL_ATTR_LOGIN_TIMEOUT,
                                 asPointer(secondsToConnect), 0),
              "the database cannot be reached");
        std::vector<SQLWCHAR> text = wideText(how.text());
        check(SQLDriverConnectW(connection.get(), nullptr, text.data(),
                                static_cast<SQLSMALLINT>(text.size() - 1), nullptr, 0, nullptr,
                                SQL_DRIVER_NOPROMPT),
              "the database cannot be reached");
        isOpen = true;
        check(SQLSetConnectAttrW(connection.get(), SQL_ATTR_AUTOCOMMIT,
                                 asPointer(SQL_AUTOCOMMIT_OFF), 0),
              "no transaction could be begun");
    }

    std::vector<OdbcRow> run(std::string_view text, std::vector<OdbcType> const* types,
                             std::vector<std::string> const& parameters) {
        ++statements;
        OdbcStatement statement(connection, left, [this](std::string message) {
            return how.withoutSecrets(std::move(message));
        });
        std::vector<OdbcRow> rows;
        callWatched(
            [&](std::atomic<bool> const& isEnded) {
                statement.execute(text, parameters);
                if (types != nullptr) {
                    rows = statement.fetch(*types, isEnded);
                }
            },
            [&] { statement.cancel(); });
        return rows;
    }
};

OdbcConnection::OdbcConnection(ConnectionString const& how, OdbcLimits const& limits) {
    constexpr std::size_t longest = 16'000; // its length is told as a short
    if (how.text().size() > longest) {
        throw OdbcException("the connection string is longer than " + std::to_string(longest) +
                            " bytes");
    }
    m_state = std::make_unique<State>(how, limits);
    callWatched([this](std::atomic<bool> const& /*isEnded*/) { m_state->open(); }, [] {});
}

OdbcConnection::~OdbcConnection() = default;

std::string OdbcConnection::productName() const {
    std::array<SQLWCHAR, nameUnits> name{};
    SQLSMALLINT bytes = 0;
    m_state->check(SQLGetInfoW(m_state->connection.get(), SQL_DBMS_NAME, name.data(),
                               static_cast<SQLSMALLINT>(name.size() * sizeof(SQLWCHAR)), &bytes),
                   "the database does not tell what it is");
    std::size_t units = 0;
    while (units + 1 < name.size() && name[units] != 0) {
        ++units;
    }
    return utf8Text(name.data(), units);
}

void OdbcConnection::execute(std::string_view statement) {
    m_state->run(statement, nullptr, {});
}

std::vector<OdbcRow> OdbcConnection::query(std::string_view statement,
                                           std::vector<OdbcType> const& types,
                                           std::vector<std::string> const& parameters) {
    return m_state->run(statement, &types, parameters);
}

std::size_t OdbcConnection::statementsDone() const {
    return m_state->statements;
}

std::vector<std::string> installedOdbcDrivers() {
    OdbcEnvironment const environment;
    std::vector<std::string> names;
    std::array<SQLWCHAR, nameUnits> name{};
    std::array<SQLWCHAR, nameUnits> attributes{};
    SQLSMALLINT length = 0;
    SQLSMALLINT attributesLength = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(SQLDriversW(environment.handle().get(), direction, name.data(),
                                     static_cast<SQLSMALLINT>(name.size()), &length,
                                     attributes.data(), static_cast<SQLSMALLINT>(attributes.size()),
                                     &attributesLength))) {
        direction = SQL_FETCH_NEXT;
        std::size_t units = 0;
        while (units + 1 < name.size() && name[units] != 0) {
            ++units;
        }
        names.push_back(utf8Text(name.data(), units));
    }
    return names;
}

} // namespace vex

#include "host/import/database/DatabaseSource.h"

#include "host/import/draft/ImportWork.h"
#include "host/import/odbc/OdbcConnection.h"
#include "host/import/odbc/OdbcException.h"
#include "host/import/xml/FileText.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

namespace vex {

namespace {

constexpr char const* passwordVariable = "VEXMA_DATABASE_PASSWORD";
constexpr InputLimit longestText{16'000};

/// The first line of a text.
std::string firstLine(std::string text) {
    text.resize(std::min(text.find_first_of("\r\n"), text.size()));
    return text;
}

std::optional<std::string> passwordFor(ImportRequest const& request) {
    auto const file = request.options.find("password-file");
    if (file != request.options.end() && !file->second.empty()) {
        return firstLine(readFileText(file->second.back(), longestText));
    }
    char const* const said = std::getenv(passwordVariable); // NOLINT(concurrency-mt-unsafe)
    return said == nullptr ? std::nullopt : std::optional<std::string>(said);
}

struct KnownDriver {
    std::string_view part; // of its name, in small letters
    char const* package;
};

constexpr KnownDriver knownDrivers[] = {{"postgres", "odbc-postgresql"},
                                        {"sqlite", "libsqliteodbc"}};

std::string lower(std::string text) {
    for (char& unit : text) {
        unit = unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
    }
    return text;
}

std::string namesOf(std::vector<std::string> const& drivers) {
    std::string names;
    for (std::string const& driver : drivers) {
        names += (names.empty() ? "" : ", ") + driver;
    }
    return names.empty() ? "none" : names;
}

} // namespace

ConnectionString connectionOf(ImportRequest const& request) {
    ConnectionString how(request.source == "-" ? firstLine(readFileText("-", longestText))
                                               : request.source);
    if (auto const password = passwordFor(request)) {
        if (how.hasPassword()) {
            throw OdbcException("there are two passwords, one in the connection string; leave that "
                                "one out");
        }
        if (password->find('\0') != std::string::npos) {
            throw OdbcException("the password holds a zero byte");
        }
        how.setPassword(*password);
    }
    // What else drivers would do: make a file that is missing, hold whole results, write a log.
    for (auto const& [keyword, value] : {std::pair{"NoCreat", "1"},
                                         {"UseDeclareFetch", "1"},
                                         {"Fetch", "1000"},
                                         {"CommLog", "0"},
                                         {"Debug", "0"}}) {
        how.addDefault(keyword, value);
    }
    return how;
}

std::string shownDatabase(std::string const& source) {
    try {
        return source == "-" ? "standard input" : ConnectionString(source).shown();
    } catch (OdbcException const&) {
        return "the connection string";
    }
}

std::string adviceFor(ConnectionString const& how, std::string const& state) {
    std::string const* const driver = how.find("Driver");
    std::string const name = driver == nullptr ? "" : lower(*driver);
    auto const known =
        std::find_if(std::begin(knownDrivers), std::end(knownDrivers),
                     [&](KnownDriver const& each) { return name.find(each.part) != name.npos; });
    bool const isKnown = known != std::end(knownDrivers);
    auto const drivers = installedOdbcDrivers();
    bool const isInstalled = std::any_of(drivers.begin(), drivers.end(),
                                         [&](auto const& each) { return lower(each) == name; });
    if (driver != nullptr && !isInstalled && name.find('/') == name.npos) {
        return "; the driver \"" + *driver + "\" is not installed" +
               (isKnown ? std::string(": install the Debian package ") + known->package
                        : std::string()) +
               "; installed are: " + namesOf(drivers);
    }
    if (driver == nullptr && (state == "IM002" || state == "01000")) {
        return "; name a driver, as in \"Driver=SQLite3;Database=FILE\", or a data source of "
               "odbc.ini; installed drivers are: " +
               namesOf(drivers);
    }
    if (isKnown && known->part == "sqlite") {
        return "; is there such a file, and may it be read?";
    }
    return "";
}

} // namespace vex

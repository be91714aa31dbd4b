#include "host/import/odbc/ConnectionString.h"

#include "host/import/odbc/OdbcException.h"

#include <algorithm>
#include <array>
#include <optional>

namespace vex {

namespace {

constexpr std::string_view replacement = "...";
constexpr std::string_view blanks = " \t\r\n";
// What no keyword holds.
constexpr std::string_view special = "[]{}(),;?*=!@";

/// Keywords whose values say where, not how to get in.
constexpr std::array<std::string_view, 9> harmless{
    "driver", "dsn", "server", "servername", "port", "database", "uid", "username", "user"};
constexpr std::array<std::string_view, 2> passwords{"pwd", "password"};
/// Parts of keywords whose values are secret however short they are.
constexpr std::array<std::string_view, 5> secretParts{"pwd", "pass", "secret", "token", "key"};
/// Values of other keywords that are shorter are words such as "1" or "yes".
constexpr std::size_t shortestSecret = 4;

std::string lower(std::string_view text) {
    std::string folded(text);
    for (char& unit : folded) {
        unit = unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
    }
    return folded;
}

std::string stripped(std::string_view text) {
    std::size_t const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return "";
    }
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

template <class Words> bool isOneOf(Words const& words, std::string const& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool isHarmless(std::string const& keyword) {
    return isOneOf(harmless, lower(keyword));
}

bool isSecret(std::string const& keyword) {
    std::string const folded = lower(keyword);
    return std::any_of(secretParts.begin(), secretParts.end(), [&](std::string_view part) {
        return folded.find(part) != std::string::npos;
    });
}

std::string inBraces(std::string_view value) {
    std::string written = "{";
    for (char const unit : value) {
        written.append(unit == '}' ? 2 : 1, unit);
    }
    return written + '}';
}

/// A value in braces from `at` on, which is moved behind them. Nothing without an end.
std::optional<std::string> readBraces(std::string_view text, std::size_t& at) {
    std::string value;
    for (++at; at < text.size(); ++at) {
        if (text[at] != '}') {
            value += text[at];
        } else if (at + 1 < text.size() && text[at + 1] == '}') {
            value += '}';
            ++at;
        } else {
            ++at;
            return value;
        }
    }
    return std::nullopt;
}

[[noreturn]] void refuse(std::size_t at, char const* problem) {
    throw OdbcException("the connection string has " + std::string(problem) + " at character " +
                        std::to_string(at + 1) +
                        "; write KEYWORD=VALUE;KEYWORD=VALUE, and a value with \";\" in braces, "
                        "{like;this}");
}

} // namespace

ConnectionString::ConnectionString(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) {
        refuse(text.find('\0'), "a zero byte");
    }
    if (text.find('=') == std::string_view::npos) {
        std::string const name = stripped(text);
        if (name.empty() || name.find_first_of("{};") != std::string::npos) {
            refuse(0, "no keyword");
        }
        m_entries.push_back({"DSN", name});
        return;
    }
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const end = std::min(text.find(';', at), text.size());
        if (stripped(text.substr(at, end - at)).empty()) {
            at = end + 1;
            continue;
        }
        std::size_t const equals = text.find('=', at);
        if (equals >= end) {
            refuse(at, "no \"=\" behind a keyword");
        }
        Entry entry{stripped(text.substr(at, equals - at))};
        if (entry.keyword.empty() || entry.keyword.find_first_of(special) != std::string::npos) {
            refuse(at, "no keyword");
        }
        at = text.find_first_not_of(blanks, equals + 1);
        if (at != std::string_view::npos && text[at] == '{') {
            std::size_t const opened = at;
            auto value = readBraces(text, at);
            at = text.find_first_not_of(blanks, at);
            if (!value.has_value() || (at != std::string_view::npos && text[at] != ';')) {
                refuse(opened, "a value in braces that do not end before a \";\"");
            }
            entry.value = *std::move(value);
            entry.isInBraces = true;
            at = at == std::string_view::npos ? text.size() : at + 1;
        } else {
            entry.value = stripped(text.substr(equals + 1, end - equals - 1));
            at = end + 1;
        }
        m_entries.push_back(std::move(entry));
    }
}

std::string const* ConnectionString::find(std::string_view keyword) const {
    std::string const wanted = lower(keyword);
    auto const found = std::find_if(m_entries.begin(), m_entries.end(), [&](Entry const& each) {
        return lower(each.keyword) == wanted;
    });
    return found == m_entries.end() ? nullptr : &found->value;
}

void ConnectionString::addDefault(std::string_view keyword, std::string_view value) {
    if (find(keyword) == nullptr) {
        m_entries.push_back({std::string(keyword), std::string(value)});
    }
}

// The driver of PostgreSQL takes "%" and "+" in a bare value for escapes.
void ConnectionString::setPassword(std::string_view password) {
    m_entries.push_back({"PWD", std::string(password), true});
}

bool ConnectionString::hasPassword() const {
    return std::any_of(passwords.begin(), passwords.end(),
                       [&](std::string_view each) { return find(each) != nullptr; });
}

// In braces is what was given in braces: not every driver knows them.
std::string ConnectionString::text() const {
    std::string written;
    for (Entry const& each : m_entries) {
        written += each.keyword + '=' + (each.isInBraces ? inBraces(each.value) : each.value) + ';';
    }
    return written;
}

std::string ConnectionString::shown() const {
    std::string written;
    for (Entry const& each : m_entries) {
        written += written.empty() ? "" : ";";
        written += each.keyword + '=';
        written += isHarmless(each.keyword) ? each.value : std::string(replacement);
    }
    return written;
}

std::string ConnectionString::withoutSecrets(std::string message) const {
    std::vector<std::string> secrets;
    for (Entry const& each : m_entries) {
        if (isHarmless(each.keyword)) {
            continue;
        }
        std::size_t const shortest = isSecret(each.keyword) ? 1 : shortestSecret;
        if (each.value.size() >= shortest) {
            secrets.push_back(each.value);
            secrets.push_back(inBraces(each.value));
        }
        // A value may be a list of its own: {sslmode=require password=...}.
        for (std::size_t at = 0; at < each.value.size();) {
            std::size_t const end =
                std::min(each.value.find_first_of(" ='\";", at), each.value.size());
            if (end - at >= shortestSecret) {
                secrets.push_back(each.value.substr(at, end - at));
            }
            at = end + 1;
        }
    }
    std::sort(secrets.begin(), secrets.end(),
              [](std::string const& a, std::string const& b) { return a.size() > b.size(); });
    std::string clean;
    for (std::size_t at = 0; at < message.size();) {
        auto const secret =
            std::find_if(secrets.begin(), secrets.end(), [&](std::string const& each) {
                return message.compare(at, each.size(), each) == 0;
            });
        if (secret == secrets.end()) {
            clean += message[at++];
        } else {
            clean += replacement;
            at += secret->size();
        }
    }
    return clean;
}

} // namespace vex

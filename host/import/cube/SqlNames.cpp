#include "host/import/cube/SqlNames.h"

#include "host/import/draft/PlainText.h"

#include <algorithm>

namespace vex {

namespace {

bool isInName(char unit) {
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') ||
           (unit >= '0' && unit <= '9') || unit == '_' || static_cast<unsigned char>(unit) >= 0x80U;
}

/// The words of a name that begins here; `at` stands behind it then.
std::vector<std::string> nameAt(std::string_view text, std::size_t& at) {
    std::vector<std::string> words;
    for (;;) {
        std::size_t const start = at;
        while (at < text.size() && isInName(text[at])) {
            ++at;
        }
        words.emplace_back(text.substr(start, at - start));
        if (at + 1 >= text.size() || text[at] != '.' || !isInName(text[at + 1])) {
            return words;
        }
        ++at;
    }
}

/// Names that are no words of a language, such as "{CUBE.net amount}".
std::vector<std::string> wholeNameOf(std::string_view content) {
    std::vector<std::string> words;
    for (;;) {
        std::size_t const end = content.find('.');
        words.push_back(trimmed(content.substr(0, end)));
        if (end == std::string_view::npos) {
            return words;
        }
        content.remove_prefix(end + 1);
    }
}

/// Where the brace stands that closes the one before `at`; the end without one.
std::size_t closingBrace(std::string_view sql, std::size_t at) {
    for (std::size_t depth = 1; at < sql.size(); ++at) {
        if (sql[at] == '{') {
            ++depth;
        } else if (sql[at] == '}' && --depth == 0) {
            return at;
        }
    }
    return sql.size();
}

} // namespace

std::vector<std::vector<std::string>> namesInCubeSql(std::string_view sql) {
    std::vector<std::vector<std::string>> names;
    for (std::size_t at = sql.find('{'); at < sql.size(); at = sql.find('{', at)) {
        std::size_t const start = at + 1;
        std::size_t const end = closingBrace(sql, start);
        std::string_view const content = sql.substr(start, end - start);
        names.push_back(wholeNameOf(content));
        for (std::size_t place = 0; place < content.size();) {
            if (isInName(content[place])) {
                names.push_back(nameAt(content, place));
            } else {
                ++place;
            }
        }
        at = std::min(end + 1, sql.size());
        if (at + 1 < sql.size() && sql[at] == '.' && isInName(sql[at + 1])) { // {CUBE}.status
            ++at;
            std::vector<std::string> name = names.back();
            for (std::string& word : nameAt(sql, at)) {
                name.push_back(std::move(word));
            }
            names.push_back(std::move(name));
        }
    }
    return names;
}

} // namespace vex

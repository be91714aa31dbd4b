#include "host/import/database/DatabaseFilter.h"

#include "host/import/draft/ImportWork.h"
#include "host/store/image/Budget.h"

namespace vex {

namespace {

bool isContinued(char unit) {
    return (static_cast<unsigned char>(unit) & 0xC0U) == 0x80U;
}

} // namespace

// Goes back to the last "*" only, so that it takes no more than one length times the other.
bool matchesGlob(std::string_view pattern, std::string_view text) {
    constexpr std::size_t none = std::string_view::npos;
    std::size_t at = 0;
    std::size_t next = 0;
    std::size_t star = none;
    std::size_t retried = 0;
    while (at < text.size()) {
        if (next < pattern.size() && pattern[next] == '*') {
            star = next++;
            retried = at;
        } else if (next < pattern.size() && pattern[next] == '?') {
            ++next;
            do {
                ++at;
            } while (at < text.size() && isContinued(text[at]));
        } else if (next < pattern.size() && pattern[next] == text[at]) {
            ++next;
            ++at;
        } else if (star != none) {
            next = star + 1;
            at = ++retried;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', next) == none;
}

DatabaseFilter::DatabaseFilter(ImportWork& work)
    : m_work(work), m_schemas(patternsOf("schema")), m_included(patternsOf("include")),
      m_excluded(patternsOf("exclude")) {}

DatabaseFilter::Patterns DatabaseFilter::patternsOf(char const* option) const {
    Patterns patterns{option};
    auto const given = m_work.request.options.find(option);
    if (given != m_work.request.options.end()) {
        for (std::string const& text : given->second) {
            patterns.all.push_back({text});
        }
    }
    return patterns;
}

bool DatabaseFilter::isOneOf(Patterns& patterns, std::string const& name,
                             std::string const& qualified) {
    bool isFound = false;
    for (Pattern& each : patterns.all) {
        Budget::charge();
        // Each one, since each is to know whether it matches anything.
        if (matchesGlob(each.text, name) || matchesGlob(each.text, qualified)) {
            each.isMatched = true;
            isFound = true;
        }
    }
    return isFound;
}

bool DatabaseFilter::wantsSchema(std::string const& schema) {
    return isOneOf(m_schemas, schema, schema) || m_schemas.all.empty();
}

bool DatabaseFilter::wantsTable(std::string const& schema, std::string const& table) {
    std::string const qualified = schema + '.' + table;
    bool const isExcluded = isOneOf(m_excluded, table, qualified);
    bool const isIncluded = isOneOf(m_included, table, qualified) || m_included.all.empty();
    return isIncluded && !isExcluded;
}

void DatabaseFilter::tellUnmatched() {
    for (Patterns const* const patterns : {&m_schemas, &m_included, &m_excluded}) {
        for (Pattern const& each : patterns->all) {
            if (each.isMatched) {
                continue;
            }
            std::string const what = std::string("--") + patterns->option + " \"" + each.text +
                                     "\" matches no " +
                                     (patterns == &m_schemas ? "schema" : "table");
            if (each.text.find_first_of("*?") == std::string::npos) {
                m_work.refuse(what + "; correct the name, upper and lower case differ");
            }
            m_work.account.note(what);
        }
    }
}

} // namespace vex

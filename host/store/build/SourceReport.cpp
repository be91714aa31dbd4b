#include "host/store/build/SourceReport.h"

#include "I18NString.h"

#include <utility>

namespace vex {

void SourceReport::report(char const* rule, std::string text, Severity severity) {
    bool const isError = severity == Severity::Error;
    if (!isError && m_kept >= MostKept) {
        return;
    }
    keep(severity, rule, std::move(text), m_source.position());
    if (isError && m_kept >= MostKept) {
        throw Stop();
    }
}

void SourceReport::stop(char const* rule, std::string text) {
    stop(rule, std::move(text), m_source.position());
}

void SourceReport::stop(char const* rule, std::string text, SourcePosition const& at) {
    keep(Severity::Error, rule, std::move(text), at);
    throw Stop();
}

void SourceReport::keep(Severity severity, char const* rule, std::string text,
                        SourcePosition const& at) {
    m_found.push_back({severity, rule, m_file, at.inDocument.line, at.inDocument.column,
                       std::move(text), at.part});
    ++m_kept;
    m_hasErrors = m_hasErrors || severity == Severity::Error;
}

std::string inQuotes(std::u16string_view text) {
    constexpr std::size_t longest = 100;
    std::string const shown = I18NString(text.substr(0, longest)).toUtf8();
    return '"' + shown + (text.size() > longest ? "...\"" : "\"");
}

} // namespace vex

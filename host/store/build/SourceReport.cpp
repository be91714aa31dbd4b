#include "host/store/build/SourceReport.h"

#include "I18NString.h"

#include <utility>

namespace vex {

void SourceReport::report(char const* rule, std::string text, Severity severity) {
    if (!isFull(severity)) {
        SourcePosition const at = m_source.position();
        report({severity, rule, m_file, at.inDocument.line, at.inDocument.column, std::move(text),
                at.part});
    }
}

void SourceReport::report(Diagnostic found) {
    Severity const severity = found.severity;
    if (isFull(severity)) {
        return;
    }
    keep(std::move(found));
    if (severity == Severity::Error && m_kept >= MostKept) {
        throw Stop();
    }
}

void SourceReport::stop(Diagnostic found) {
    keep(std::move(found));
    throw Stop();
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
    keep({severity, rule, m_file, at.inDocument.line, at.inDocument.column, std::move(text),
          at.part});
}

void SourceReport::keep(Diagnostic found) {
    m_hasErrors = m_hasErrors || found.severity == Severity::Error;
    m_found.push_back(std::move(found));
    ++m_kept;
}

std::string inQuotes(std::u16string_view text) {
    constexpr std::size_t longest = 100;
    std::string const shown = I18NString(text.substr(0, longest)).toUtf8();
    return '"' + shown + (text.size() > longest ? "...\"" : "\"");
}

} // namespace vex

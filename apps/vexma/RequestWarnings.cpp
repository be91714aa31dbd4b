#include "apps/vexma/RequestWarnings.h"

#include <algorithm>

namespace vex {

void StrictOption::addTo(CommandSyntax& command) {
    command.add({.name = "--strict",
                 .into = &m_isGiven,
                 .help = "End with status 1 after a warning about the request"});
}

void RequestWarnings::add(std::string text) {
    if (std::find(m_texts.begin(), m_texts.end(), text) == m_texts.end()) {
        m_texts.push_back(std::move(text));
    }
}

int RequestWarnings::finish(Console& console, int status) const {
    for (std::string const& text : m_texts) {
        console.complain("warning: " + text);
    }
    return status == Done && m_isStrict && !m_texts.empty() ? Refused : status;
}

} // namespace vex

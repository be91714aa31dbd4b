#include "apps/vexma/FindingsReport.h"

#include "apps/vexma/Console.h"
#include "host/insight/DiagnosticRules.h"

#include <iomanip>
#include <map>

namespace vex {

void writeFindings(std::ostream& out, Diagnostics const& found, bool all) {
    constexpr std::size_t shownOfARule = 10;
    std::map<std::string, std::size_t> counts; // in the file at hand, by rule
    for (std::size_t index = 0; index < found.size(); ++index) {
        Diagnostic const& each = found[index];
        bool const isShown =
            all || (each.severity != Severity::Note && ++counts[each.rule] <= shownOfARule);
        if (isShown) {
            out << printable(toString(each), false) << " [" << each.rule << "]\n";
        }
        if (index + 1 < found.size() && found[index + 1].file == each.file) {
            continue;
        }
        for (auto const& [rule, count] : counts) {
            if (count > shownOfARule) {
                out << printable(each.file, false) << ": " << count - shownOfARule << " more ["
                    << rule << "]; --all shows them\n";
            }
        }
        counts.clear();
    }
}

void writeRules(std::ostream& out) {
    constexpr int nameWidth = 28;
    constexpr int severityWidth = 8;
    for (DiagnosticRule const& rule : diagnosticRules) {
        out << std::left << std::setw(nameWidth) << rule.name << ' ' << std::setw(severityWidth)
            << toString(rule.severity) << ' ' << rule.text << '\n';
    }
}

} // namespace vex

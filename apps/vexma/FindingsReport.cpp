#include "apps/vexma/FindingsReport.h"

#include "apps/vexma/Console.h"
#include "apps/vexma/TextColours.h"
#include "host/insight/DiagnosticRules.h"

#include <iomanip>
#include <map>

namespace vex {

namespace {

char const* colourOf(Severity severity, TextColours const& colours) {
    switch (severity) {
    case Severity::Error:
        return colours.bad;
    case Severity::Warning:
        return colours.doubtful;
    case Severity::Note:
        break;
    }
    return colours.detail;
}

void writeFinding(std::ostream& out, Diagnostic const& each, TextColours const& colours) {
    out << colours.name << printable(placeOf(each), false) << colours.end
        << colourOf(each.severity, colours) << toString(each.severity) << colours.end << ": "
        << printable(each.text, false) << ' ' << colours.detail << '[' << each.rule << ']'
        << colours.end << '\n';
}

} // namespace

void writeFindings(std::ostream& out, Diagnostics const& found, FindingsForm form) {
    constexpr std::size_t shownOfARule = 10;
    TextColours const& colours = textColours(form.colour);
    std::map<std::string, std::size_t> counts; // in the file at hand, by rule
    for (std::size_t index = 0; index < found.size(); ++index) {
        Diagnostic const& each = found[index];
        bool const isShown =
            form.all || (each.severity != Severity::Note && ++counts[each.rule] <= shownOfARule);
        if (isShown) {
            writeFinding(out, each, colours);
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

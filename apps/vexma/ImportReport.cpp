#include "apps/vexma/ImportReport.h"

#include "apps/vexma/Console.h"

#include <algorithm>
#include <iomanip>
#include <string>

namespace vex {

namespace {

constexpr std::size_t mostLines = 50; // of what an honest source seldom has more of
constexpr int numberWidth = 10;

/// "measure.formatString" is said of a thing, "measure" is one.
bool isThing(std::string const& kind) {
    return kind.find('.') == std::string::npos;
}

void writeRows(std::ostream& out, ImportAccount const& account) {
    ImportAccount::Row values{"what is said of them"};
    std::vector<ImportAccount::Row> rows;
    for (ImportAccount::Row const& row : account.rows()) {
        if (isThing(row.kind)) {
            rows.push_back(row);
        } else {
            values.read += row.read;
            values.mapped += row.mapped;
        }
    }
    rows.push_back(values);
    std::size_t width = 0;
    for (ImportAccount::Row const& row : rows) {
        width = std::max(width, row.kind.size());
    }
    auto const writeRow = [&](std::string const& kind, auto const& read, auto const& mapped,
                              auto const& leftOut) {
        out << std::left << std::setw(static_cast<int>(width)) << printable(kind, false)
            << std::right << std::setw(numberWidth) << read << std::setw(numberWidth) << mapped
            << std::setw(numberWidth) << leftOut << '\n';
    };
    writeRow("", "read", "mapped", "left out");
    for (ImportAccount::Row const& row : rows) {
        writeRow(row.kind, row.read, row.mapped, row.read - row.mapped);
    }
}

void writeOmissions(std::ostream& out, ImportAccount const& account) {
    auto const& omissions = account.omissions();
    if (omissions.empty()) {
        return;
    }
    out << "\nleft out:\n";
    for (std::size_t number = 0; number < std::min(omissions.size(), mostLines); ++number) {
        ImportAccount::Omission const& omission = omissions[number];
        out << std::setw(numberWidth) << omission.count << "  " << printable(omission.kind, false)
            << ": " << printable(omission.reason, false) << '\n';
    }
    if (omissions.size() > mostLines) {
        out << "  and " << omissions.size() - mostLines
            << " more kinds of things; --report FILE has all of them\n";
    }
}

void writeNotes(std::ostream& out, ImportAccount const& account) {
    auto const& notes = account.notes();
    if (notes.empty()) {
        return;
    }
    out << "\nto know:\n";
    for (std::size_t number = 0; number < std::min(notes.size(), mostLines); ++number) {
        out << "  " << printable(notes[number].text, false) << '\n';
    }
    if (notes.size() > mostLines) {
        out << "  and " << notes.size() - mostLines + account.notesLeftOut()
            << " more; see --report FILE\n";
    }
}

} // namespace

void writeAccount(std::ostream& out, ImportAccount const& account) {
    writeRows(out, account);
    writeOmissions(out, account);
    writeNotes(out, account);
}

} // namespace vex

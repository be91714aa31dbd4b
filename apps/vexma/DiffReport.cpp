#include "apps/vexma/DiffReport.h"

#include "apps/vexma/Console.h"
#include "apps/vexma/ExpansionNote.h"
#include "apps/vexma/TextColours.h"
#include "apps/vexma/TreeBranches.h"

#include <algorithm>

namespace vex {

namespace {

using Change = ComparedObject::Change;

struct ChangeRow {
    Change change;
    char const* sign;
    char const* TextColours::*colour;
};
constexpr ChangeRow changes[] = {
    {Change::None, " ", &TextColours::detail},
    {Change::Appears, "+", &TextColours::good},
    {Change::Disappears, "-", &TextColours::bad},
    {Change::Changes, "~", &TextColours::doubtful},
};

ChangeRow const& rowOf(Change change) {
    return *std::find_if(std::begin(changes), std::end(changes),
                         [&](ChangeRow const& row) { return row.change == change; });
}

/// What is to be said when shortcuts show an object too.
std::string presenceText(ToldChange const& object) {
    bool const wasBehind = object.before == Presence::BehindShortcuts;
    bool const isBehind = object.after == Presence::BehindShortcuts;
    if (wasBehind == isBehind) {
        return "";
    }
    if (object.change == Change::Disappears) {
        return isBehind ? "  (still shown behind a shortcut)" : "  (was shown behind a shortcut)";
    }
    return isBehind ? "  (behind a shortcut)" : "  (was shown behind a shortcut)";
}

std::string changesText(ToldChange const& object) {
    std::string text;
    for (ToldPropertyChange const& change : object.properties) {
        text += (text.empty() ? "  " : "; ") + change.property + " \"" + change.before +
                "\" -> \"" + change.after + '"';
    }
    return text;
}

void writeExpansionNote(std::ostream& out, Differences const& differences) {
    if (std::string const note = expansionNote(differences.notGoneIntoAgain); !note.empty()) {
        out << printable(note, false) << '\n';
    }
}

} // namespace

void writeRights(std::ostream& out, std::vector<RightChange> const& rights, bool colour) {
    for (RightChange const& right : rights) {
        ChangeRow const& row = rowOf(right.isAdded ? Change::Appears : Change::Disappears);
        TextColours const& colours = textColours(colour);
        out << row.sign << ' ' << colours.*row.colour << printable(right.text, false) << colours.end
            << '\n';
    }
}

void drawDifferences(std::ostream& out, Differences const& differences, bool colour) {
    std::vector<std::size_t> containers;
    for (ToldChange const& object : differences.objects) {
        containers.push_back(object.container);
    }
    TreeBranches const branches(containers);
    TextColours const& colours = textColours(colour);
    for (std::size_t number = 0; number < differences.objects.size(); ++number) {
        ToldChange const& object = differences.objects[number];
        ChangeRow const& row = rowOf(object.change);
        out << row.sign << ' ' << branches.before(number) << colours.*row.colour
            << printable(describeObject(object.object) + changesText(object) + presenceText(object),
                         false)
            << colours.end << '\n';
    }
    out << differences.appear << " appear, " << differences.disappear << " disappear, "
        << differences.change << " change, " << differences.renamed << " of them renamed\n";
    writeExpansionNote(out, differences);
}

void drawDifferences(std::ostream& out, UserDifferences const& user, bool colour) {
    TextColours const& colours = textColours(colour);
    std::string names = user.user.empty() ? "everybody" : user.user;
    for (std::string const& other : user.alike) {
        names += ", " + other;
    }
    std::string said;
    if (!user.unfinished.empty()) {
        said = "not finished, so nothing is known: " + user.unfinished;
    } else if (!user.refusedBefore.empty() && !user.refusedAfter.empty()) {
        said = "every request is refused on both sides: " + user.refusedAfter;
    } else if (!user.refusedBefore.empty()) {
        said = "every request is refused on the first side only: " + user.refusedBefore;
    } else if (!user.refusedAfter.empty()) {
        said = "every request is refused on the second side only: " + user.refusedAfter;
    } else if (user.areNone()) {
        said = "no difference";
    }
    out << colours.name << printable(names, false) << colours.end << ':'
        << (said.empty() ? "" : ' ' + printable(said, false)) << '\n';
    if (said.empty()) {
        drawDifferences(out, user.differences, colour);
    } else {
        writeExpansionNote(out, user.differences);
    }
}

} // namespace vex

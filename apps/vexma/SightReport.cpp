#include "apps/vexma/SightReport.h"

#include "apps/vexma/Console.h"
#include "apps/vexma/TextColours.h"

#include <algorithm>

namespace vex {

namespace {

char const* colourOf(Sight sight, TextColours const& colours) {
    switch (sight) {
    case Sight::Seen:
        return colours.good;
    case Sight::PastViews:
        return colours.doubtful;
    case Sight::NotSeen:
        return colours.detail;
    case Sight::Refused:
    case Sight::Unknown:
        break;
    }
    return colours.bad;
}

char const* headingOf(Sight sight) {
    constexpr char const* headings[] = {"seen by", "shown past the views to", "not seen by",
                                        "every request is refused for",
                                        "the check did not finish for"};
    return headings[static_cast<std::size_t>(sight)];
}

/// "user ann", "roles clerk, analyst".
std::string whoOf(ToldViewers const& viewers) {
    if (viewers.names.size() == 1 && viewers.names.front().empty()) {
        return "everybody";
    }
    std::string who = viewers.areRoles ? "role" : "user";
    who += viewers.names.size() == 1 ? " " : "s ";
    for (std::size_t index = 0; index < viewers.names.size(); ++index) {
        who += (index == 0 ? "" : ", ") + viewers.names[index];
    }
    return who;
}

/// How many columns of a terminal UTF-8 text takes, wide characters apart.
std::size_t widthOf(std::string const& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char character) {
        return (static_cast<unsigned char>(character) & 0xC0U) != 0x80U;
    }));
}

std::string padded(std::string const& text, std::size_t width) {
    std::size_t const own = widthOf(text);
    return text + std::string(own < width ? width - own : 0, ' ');
}

constexpr char const* signs[] = {"yes", "past", "no", "-", "?"};

std::string titleOf(SightMatrix::Column const& column) {
    std::string const name = column.name.empty() ? "everybody" : column.name;
    return printable(
        column.alike.empty() ? name : name + " +" + std::to_string(column.alike.size()), false);
}

} // namespace

void writeSight(std::ostream& out, std::vector<ObjectSight> const& objects, bool colour) {
    TextColours const& colours = textColours(colour);
    for (ObjectSight const& object : objects) {
        out << (&object == &objects.front() ? "" : "\n") << colours.name
            << printable(describeObject(object.object), false) << colours.end << '\n';
        for (ToldViewers const& viewers : object.viewers) {
            out << "  " << colourOf(viewers.sight, colours) << headingOf(viewers.sight) << ' '
                << printable(whoOf(viewers), false) << colours.end << '\n'
                << "    " << printable(viewers.why, false) << '\n';
            for (std::string const& sentence : viewers.tree) {
                out << "    in the tree: " << printable(sentence, false) << '\n';
            }
        }
    }
}

void writeMatrix(std::ostream& out, SightMatrix const& matrix, bool colour) {
    TextColours const& colours = textColours(colour);
    std::vector<std::size_t> widths;
    for (SightMatrix::Column const& column : matrix.columns) {
        constexpr std::size_t widestSign = 4;
        std::string const title = titleOf(column);
        widths.push_back(std::max(widestSign, widthOf(title)));
        out << padded(title, widths.back()) << "  ";
    }
    out << '\n';
    for (SightMatrix::Row const& row : matrix.rows) {
        for (std::size_t number = 0; number < row.cells.size(); ++number) {
            Sight const sight = row.cells[number];
            out << colourOf(sight, colours)
                << padded(signs[static_cast<std::size_t>(sight)], widths[number]) << colours.end
                << "  ";
        }
        out << printable(describeObject(row.object), false) << '\n';
    }
    out << colours.detail
        << "past: in a tree although the views leave it out; -: every request is refused; ?: the "
           "check did not finish"
        << colours.end << '\n';
    for (SightMatrix::Column const& column : matrix.columns) {
        std::string alike;
        for (std::string const& name : column.alike) {
            alike += (alike.empty() ? "" : ", ") + name;
        }
        if (!alike.empty()) {
            out << titleOf(column) << ": the same for " << printable(alike, false) << '\n';
        }
        if (!column.refusal.empty()) {
            out << titleOf(column) << ": " << printable(column.refusal, false) << '\n';
        }
    }
}

} // namespace vex

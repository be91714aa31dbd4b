#include "apps/vexma/DiffReport.h"

#include "apps/vexma/Console.h"
#include "apps/vexma/TreeBranches.h"
#include "host/insight/ObjectText.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

using Change = ComparedObject::Change;
using Json = nlohmann::ordered_json;

struct ChangeRow {
    Change change;
    char const* sign;
    char const* code;
    char const* colour; // of a terminal
};
constexpr ChangeRow changes[] = {
    {Change::None, " ", "", "\033[2m"},
    {Change::Appears, "+", "appears", "\033[32m"},
    {Change::Disappears, "-", "disappears", "\033[31m"},
    {Change::Changes, "~", "changes", "\033[33m"},
};
constexpr char const* colourEnd = "\033[0m";

ChangeRow const& rowOf(Change change) {
    return *std::find_if(std::begin(changes), std::end(changes),
                         [&](ChangeRow const& row) { return row.change == change; });
}

/// The side that the object is told of by: the second, unless it has gone.
bool isToldByFirst(ComparedObject const& object) {
    return object.change == Change::Disappears || !object.after.IsNotNull();
}

std::size_t count(std::vector<ComparedObject> const& objects, Change change) {
    return static_cast<std::size_t>(std::count_if(
        objects.begin(), objects.end(), [&](auto const& each) { return each.change == change; }));
}

std::size_t countRenamed(std::vector<ComparedObject> const& objects) {
    return static_cast<std::size_t>(std::count_if(
        objects.begin(), objects.end(), [](auto const& each) { return each.isRenamed(); }));
}

constexpr char const* presenceCode(Presence presence) {
    constexpr char const* codes[] = {"none", "behind-shortcuts", "in-its-place"};
    return codes[static_cast<std::size_t>(presence)];
}

/// What is to be said when shortcuts show an object too.
std::string presenceText(ComparedObject const& object) {
    bool const wasBehind = object.presenceBefore == Presence::BehindShortcuts;
    bool const isBehind = object.presenceAfter == Presence::BehindShortcuts;
    if (wasBehind == isBehind) {
        return "";
    }
    if (object.change == Change::Disappears) {
        return isBehind ? "  (still shown behind a shortcut)" : "  (was shown behind a shortcut)";
    }
    return isBehind ? "  (behind a shortcut)" : "  (was shown behind a shortcut)";
}

std::string changesText(ComparedObject const& object) {
    std::string text;
    for (PropertyChange const& change : object.properties) {
        text += (text.empty() ? "  " : "; ") + change.property.toUtf8() + " \"" +
                change.before.toUtf8() + "\" -> \"" + change.after.toUtf8() + '"';
    }
    return text;
}

} // namespace

void drawDifferences(std::ostream& out, ComparedSide const& before, ComparedSide const& after,
                     std::vector<ComparedObject> const& objects, bool colour) {
    std::vector<std::size_t> containers;
    for (ComparedObject const& object : objects) {
        containers.push_back(object.container);
    }
    TreeBranches const branches(containers);
    for (std::size_t number = 0; number < objects.size(); ++number) {
        ComparedObject const& object = objects[number];
        ChangeRow const& row = rowOf(object.change);
        bool const byFirst = isToldByFirst(object);
        out << row.sign << ' ' << branches.Before(number) << (colour ? row.colour : "")
            << printable(describeObject(byFirst ? object.before : object.after,
                                        byFirst ? before.locale : after.locale) +
                             changesText(object) + presenceText(object),
                         false)
            << (colour ? colourEnd : "") << '\n';
    }
    out << count(objects, Change::Appears) << " appear, " << count(objects, Change::Disappears)
        << " disappear, " << count(objects, Change::Changes) << " change, " << countRenamed(objects)
        << " of them renamed\n";
}

void writeDifferences(std::ostream& out, ComparedSide const& before, ComparedSide const& after,
                      std::vector<ComparedObject> const& objects) {
    Json list = Json::array();
    for (ComparedObject const& object : objects) {
        if (object.change == Change::None) {
            continue;
        }
        bool const byFirst = isToldByFirst(object);
        ComparedSide const& side = byFirst ? before : after;
        VEX_HANDLE const handle = byFirst ? object.before : object.after;
        I18NString reference;
        side.model.getReference(handle, reference);
        Json entry{{"change", rowOf(object.change).code},
                   {"id", idOf(handle).toUtf8()},
                   {"reference", reference.toUtf8()},
                   {"class", classOf(handle).toUtf8()},
                   {"name", nameIn(side.locale, handle).toUtf8()}};
        entry["presence"] = {{"before", presenceCode(object.presenceBefore)},
                             {"after", presenceCode(object.presenceAfter)}};
        if (object.change == Change::Changes) {
            entry["renamed"] = object.isRenamed();
            for (PropertyChange const& change : object.properties) {
                entry["properties"][change.property.toUtf8()] = {{"before", change.before.toUtf8()},
                                                                 {"after", change.after.toUtf8()}};
            }
        }
        list.push_back(std::move(entry));
    }
    constexpr int indent = 2;
    out << Json{{"appear", count(objects, Change::Appears)},
                {"disappear", count(objects, Change::Disappears)},
                {"change", count(objects, Change::Changes)},
                {"renamed", countRenamed(objects)},
                {"objects", list}}
               .dump(indent)
        << '\n';
}

} // namespace vex

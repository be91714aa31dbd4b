#include "host/protocol/JsonDifferences.h"

#include "I18NHash.h"
#include "host/protocol/JsonObjects.h"

#include <string_view>
#include <unordered_map>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

using Change = ComparedObject::Change;

constexpr char const* wordFor(Change change) {
    constexpr char const* codes[] = {"", "appears", "disappears", "changes"};
    return codes[static_cast<std::size_t>(change)];
}

constexpr char const* wordFor(Presence presence) {
    constexpr char const* codes[] = {"none", "behind-shortcuts", "in-its-place"};
    return codes[static_cast<std::size_t>(presence)];
}

/// Of two changes that are called alike the second is told, in the place of the first.
void addProperties(JsonStream& json, ToldChange const& told) {
    if (told.properties.empty()) {
        return;
    }
    std::unordered_map<std::string_view, ToldPropertyChange const*, I18NTextHasher> byName;
    for (ToldPropertyChange const& change : told.properties) {
        byName[change.property] = &change;
    }
    json.beginObject("properties");
    for (ToldPropertyChange const& each : told.properties) {
        auto const change = byName.find(each.property);
        if (change->second != nullptr) {
            json.member(each.property,
                        {{"before", change->second->before}, {"after", change->second->after}});
            change->second = nullptr;
        }
    }
    json.end();
}

void addChange(JsonStream& json, ToldChange const& told) {
    json.beginObject();
    json.member("change", wordFor(told.change));
    json.member("id", told.object.id);
    json.member("reference", told.object.reference);
    json.member("class", told.object.className);
    json.member("name", told.object.name);
    json.member("presence", {{"before", wordFor(told.before)}, {"after", wordFor(told.after)}});
    if (told.change == Change::Changes) {
        json.member("renamed", told.isRenamed);
        addProperties(json, told);
    }
    json.end();
}

void addDifferences(JsonStream& json, Differences const& differences) {
    json.member("appear", differences.appear);
    json.member("disappear", differences.disappear);
    json.member("change", differences.change);
    json.member("renamed", differences.renamed);
    json.beginList("objects");
    for (ToldChange const& told : differences.objects) {
        if (told.change != Change::None) {
            addChange(json, told);
        }
    }
    json.end();
    addNotGoneIntoAgain(json, differences.notGoneIntoAgain);
}

void addRights(JsonStream& json, std::vector<RightChange> const& rights) {
    if (rights.empty()) {
        return;
    }
    json.beginList("rights");
    for (RightChange const& change : rights) {
        json.entry({{"change", change.isAdded ? "appears" : "disappears"}, {"text", change.text}});
    }
    json.end();
}

/// Where there is something to say.
void addText(JsonStream& json, char const* member, std::string const& text) {
    if (!text.empty()) {
        json.member(member, text);
    }
}

} // namespace

void writeJson(std::ostream& out, Differences const& differences,
               std::vector<RightChange> const& rights) {
    JsonStream json(out);
    json.beginObject();
    addDifferences(json, differences);
    addRights(json, rights);
    json.end();
}

void writeJson(std::ostream& out, std::vector<UserDifferences> const& users,
               std::vector<RightChange> const& rights) {
    JsonStream json(out);
    json.beginObject();
    json.beginList("users");
    for (UserDifferences const& user : users) {
        json.beginObject();
        json.member("user", user.user);
        addNames(json, "alsoFor", user.alike);
        addText(json, "unfinished", user.unfinished);
        addText(json, "refusedBefore", user.refusedBefore);
        addText(json, "refusedAfter", user.refusedAfter);
        addDifferences(json, user.differences);
        json.end();
    }
    json.end();
    addRights(json, rights);
    json.end();
}

} // namespace vex

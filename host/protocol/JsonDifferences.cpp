#include "host/protocol/JsonDifferences.h"

#include "host/protocol/JsonObjects.h"
#include "host/protocol/JsonText.h"

#include <map>
#include <string_view>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

using Change = ComparedObject::Change;

constexpr char const* codeOf(Change change) {
    constexpr char const* codes[] = {"", "appears", "disappears", "changes"};
    return codes[static_cast<std::size_t>(change)];
}

constexpr char const* codeOf(Presence presence) {
    constexpr char const* codes[] = {"none", "behind-shortcuts", "in-its-place"};
    return codes[static_cast<std::size_t>(presence)];
}

/// Of two changes that are called alike the second is told, in the place of the first.
void addProperties(ToldChange const& told, Json& entry) {
    std::map<std::string_view, ToldPropertyChange const*> byName;
    for (ToldPropertyChange const& change : told.properties) {
        byName[change.property] = &change;
    }
    Json properties = Json::object();
    for (ToldPropertyChange const& each : told.properties) {
        auto const change = byName.find(each.property);
        if (change != byName.end()) {
            appendMember(properties, each.property,
                         {{"before", change->second->before}, {"after", change->second->after}});
            byName.erase(change);
        }
    }
    if (!properties.empty()) {
        entry["properties"] = std::move(properties);
    }
}

Json describe(ToldChange const& told) {
    Json entry{{"change", codeOf(told.change)},
               {"id", told.object.id},
               {"reference", told.object.reference},
               {"class", told.object.className},
               {"name", told.object.name},
               {"presence", {{"before", codeOf(told.before)}, {"after", codeOf(told.after)}}}};
    if (told.change == Change::Changes) {
        entry["renamed"] = told.isRenamed;
        addProperties(told, entry);
    }
    return entry;
}

Json describe(Differences const& differences) {
    Json list = Json::array();
    for (ToldChange const& told : differences.objects) {
        if (told.change != Change::None) {
            list.push_back(describe(told));
        }
    }
    Json whole{{"appear", differences.appear},
               {"disappear", differences.disappear},
               {"change", differences.change},
               {"renamed", differences.renamed},
               {"objects", std::move(list)}};
    addNotGoneIntoAgain(whole, differences.notGoneIntoAgain);
    return whole;
}

void addRights(Json& whole, std::vector<RightChange> const& rights) {
    for (RightChange const& change : rights) {
        whole["rights"].push_back(
            {{"change", change.isAdded ? "appears" : "disappears"}, {"text", change.text}});
    }
}

} // namespace

std::string toJson(Differences const& differences, std::vector<RightChange> const& rights) {
    Json whole = describe(differences);
    addRights(whole, rights);
    return toText(whole, JsonForm::Indented);
}

std::string toJson(std::vector<UserDifferences> const& users,
                   std::vector<RightChange> const& rights) {
    Json whole{{"users", Json::array()}};
    for (UserDifferences const& user : users) {
        Json told{{"user", user.user}};
        for (std::string const& other : user.alike) {
            told["alsoFor"].push_back(other);
        }
        if (!user.unfinished.empty()) {
            told["unfinished"] = user.unfinished;
        }
        if (!user.refusedBefore.empty()) {
            told["refusedBefore"] = user.refusedBefore;
        }
        if (!user.refusedAfter.empty()) {
            told["refusedAfter"] = user.refusedAfter;
        }
        told.update(describe(user.differences));
        whole["users"].push_back(std::move(told));
    }
    addRights(whole, rights);
    return toText(whole, JsonForm::Indented);
}

} // namespace vex

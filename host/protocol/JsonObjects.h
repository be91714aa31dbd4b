#pragma once

#include "host/insight/ObjectText.h"
#include "host/protocol/JsonStream.h"

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace vex {

/// Adds a list of names, where there are any.
inline void addNames(JsonStream& json, char const* member, std::vector<std::string> const& names) {
    if (names.empty()) {
        return;
    }
    json.beginList(member);
    for (std::string const& name : names) {
        json.entry(Json(name));
    }
    json.end();
}

/// Adds what the trees did not go into again, where there is such, by what it is known by.
inline void addNotGoneIntoAgain(JsonStream& json, std::vector<ObjectLabel> const& objects) {
    if (objects.empty()) {
        return;
    }
    json.beginList("notGoneIntoAgain");
    for (ObjectLabel const& object : objects) {
        json.entry(Json(object.key()));
    }
    json.end();
}

} // namespace vex

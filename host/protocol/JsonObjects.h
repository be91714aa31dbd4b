#pragma once

#include "host/insight/ObjectText.h"

#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace vex {

/// Adds a member that the object has not, without looking for it among the others.
inline void appendMember(nlohmann::ordered_json& object, std::string name,
                         nlohmann::ordered_json value) {
    using Members = nlohmann::ordered_json::object_t::Container;
    Members& members = object.get_ref<nlohmann::ordered_json::object_t&>();
    members.emplace_back(std::move(name), std::move(value));
}

/// Adds what the trees did not go into again, where there is such, by what it is known by.
inline void addNotGoneIntoAgain(nlohmann::ordered_json& whole,
                                std::vector<ObjectLabel> const& objects) {
    for (ObjectLabel const& object : objects) {
        whole["notGoneIntoAgain"].push_back(object.key());
    }
}

} // namespace vex

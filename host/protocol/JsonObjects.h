#pragma once

#include "host/insight/ObjectText.h"

#include <vector>

#include <nlohmann/json.hpp>

namespace vex {

/// Adds what the trees did not go into again, where there is such, by what it is known by.
inline void addNotGoneIntoAgain(nlohmann::ordered_json& whole,
                                std::vector<ObjectLabel> const& objects) {
    for (ObjectLabel const& object : objects) {
        whole["notGoneIntoAgain"].push_back(object.key());
    }
}

} // namespace vex

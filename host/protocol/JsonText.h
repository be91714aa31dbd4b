#pragma once

#include <string>

#include <nlohmann/json_fwd.hpp>

namespace vex {

/// For the sources of this folder: the headers that others include name no JSON.
using Json = nlohmann::ordered_json;

enum class JsonForm { OneLine, Indented };

/// JSON as UTF-8 text without a line break at its end. What is no UTF-8 in its
/// strings is replaced by U+FFFD.
std::string toText(Json const& json, JsonForm form);

} // namespace vex

#include "host/protocol/JsonText.h"

#include <nlohmann/json.hpp>

namespace vex {

std::string toText(Json const& json, JsonForm form) {
    constexpr int oneLine = -1;
    constexpr int indent = 2;
    return json.dump(form == JsonForm::OneLine ? oneLine : indent, ' ', false,
                     Json::error_handler_t::replace);
}

} // namespace vex

#include "host/protocol/SessionLine.h"

#include "host/protocol/JsonText.h"

#include <cstdint>
#include <limits>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

using Kind = SessionValue::Kind;

constexpr char const* wantedLine =
    R"(send {"action": A, "in": [V, ...]} or {"notify": kind} on one line)";
constexpr char const* wantedValue =
    R"(write {"long": n}, {"string": s}, {"handle": "id or reference"}, {"node": "XML text"} or {"empty": true})";

SessionValue unusable(char const* problem) {
    return {Kind::Unusable, 0, std::string("a value of the line ") + problem + "; " + wantedValue};
}

SessionValue readLong(Json& value, Kind kind) {
    bool const fits = value.is_number_unsigned()
                          ? value.get<std::uint64_t>() <=
                                static_cast<std::uint64_t>(std::numeric_limits<long>::max())
                          : value.is_number_integer();
    return fits ? SessionValue{kind, value.get<long>(), {}}
                : unusable("is not a whole number in the range of a long");
}

SessionValue readText(Json& value, Kind kind) {
    return value.is_string() ? SessionValue{kind, 0, std::move(value.get_ref<std::string&>())}
                             : unusable("is not a text");
}

SessionValue readEmpty(Json& value, Kind kind) {
    return value.is_boolean() && value.get<bool>() ? SessionValue{kind, 0, {}}
                                                   : unusable("is not true");
}

struct KindRow {
    char const* key;
    Kind kind;
    SessionValue (*read)(Json&, Kind);
};
constexpr KindRow kinds[] = {
    {"long", Kind::Long, &readLong},     {"string", Kind::String, &readText},
    {"handle", Kind::Handle, &readText}, {"node", Kind::Node, &readText},
    {"empty", Kind::Empty, &readEmpty},
};

SessionValue readValue(Json& value) {
    if (value.is_object() && value.size() == 1) {
        for (KindRow const& row : kinds) {
            auto const at = value.find(row.key);
            if (at != value.end()) {
                return row.read(*at, row.kind);
            }
        }
    }
    return unusable("is not a value of an action");
}

SessionLine readNotification(Json const& value) {
    bool const fits = value.is_number_integer() &&
                      (!value.is_number_unsigned() ||
                       value.get<std::uint64_t>() <= std::numeric_limits<int>::max()) &&
                      value.get<std::int64_t>() >= std::numeric_limits<int>::min() &&
                      value.get<std::int64_t>() <= std::numeric_limits<int>::max();
    if (!fits) {
        return UnusableLine{"the kind of a notification is a whole number, such as 1"};
    }
    return SessionNotification{value.get<int>()};
}

} // namespace

SessionLine readSessionLine(std::string_view text) {
    Json json = Json::parse(text, nullptr, false);
    if (json.is_discarded() || !json.is_object()) {
        return UnusableLine{std::string("the line is not a JSON object; ") + wantedLine};
    }
    if (json.size() == 1 && json.contains("notify")) {
        return readNotification(json["notify"]);
    }
    if (json.size() != 2 || !json.contains("action") || !json.contains("in") ||
        !json["in"].is_array()) {
        return UnusableLine{std::string("the line is neither an action nor an event; ") +
                            wantedLine};
    }
    SessionAction line;
    Json& action = json["action"];
    line.action = action.is_number() ? readLong(action, Kind::Long) : readValue(action);
    for (Json& value : json["in"]) {
        line.in.push_back(readValue(value));
    }
    return line;
}

std::size_t longestSessionLine(std::size_t requestBytes) {
    constexpr std::size_t longestEscape = 6; // \u0022
    constexpr std::size_t around = 65'536;
    constexpr std::size_t longest = std::numeric_limits<std::size_t>::max();
    return requestBytes > longest / (2 * longestEscape) ? longest
                                                        : requestBytes * longestEscape + around;
}

} // namespace vex

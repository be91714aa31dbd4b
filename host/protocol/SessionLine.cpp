#include "host/protocol/SessionLine.h"

#include "host/insight/NearestWord.h"
#include "host/protocol/JsonText.h"
#include "host/protocol/LineMeasure.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

using Kind = SessionValue::Kind;

constexpr char const* wantedLine =
    R"(send {"action": A, "in": [V, ...]} or {"notify": kind} on one line)";
constexpr char const* wantedValue =
    R"(write {"long": n}, {"string": s}, {"handle": "id or reference"}, {"node": "XML text"} or {"empty": true})";

SessionValue unusable(std::string const& problem) {
    return {Kind::Unusable, 0, "a value of the line " + problem + "; " + wantedValue};
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

/// ": it has the unknown key "lnog", perhaps for "long"" of the first key that has no
/// place in an object; "" when each has one.
std::string unknownKey(Json const& object, std::span<std::string_view const> known) {
    constexpr int shown = 40;
    for (auto const& [key, value] : object.items()) {
        if (std::find(known.begin(), known.end(), key) == known.end()) {
            std::string const nearest = nearestWord(key, known);
            return ": it has the unknown key \"" +
                   I18NString::fromUtf8(key).substring(0, shown).toUtf8() + '"' +
                   (nearest.empty() ? "" : ", perhaps for \"" + nearest + '"');
        }
    }
    return "";
}

SessionValue readValue(Json& value) {
    if (value.is_object() && value.size() == 1) {
        for (KindRow const& row : kinds) {
            auto const at = value.find(row.key);
            if (at != value.end()) {
                return row.read(*at, row.kind);
            }
        }
    }
    std::string_view known[std::size(kinds)];
    std::transform(std::begin(kinds), std::end(kinds), std::begin(known),
                   [](KindRow const& row) { return std::string_view(row.key); });
    std::string const unknown = value.is_object() ? unknownKey(value, known) : "";
    return unusable("is not a value of an action" + unknown);
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

/// What a line asks for, its id apart.
SessionLine readContent(Json& json) {
    constexpr std::string_view known[] = {"action", "in", "notify", "id"};
    std::string const unknown = unknownKey(json, known);
    bool const isNotification = json.contains("notify");
    bool const isAction = json.contains("action") && json.contains("in") && json["in"].is_array();
    if (unknown.empty() && isNotification && !json.contains("action") && !json.contains("in")) {
        return readNotification(json["notify"]);
    }
    if (!unknown.empty() || isNotification || !isAction) {
        return UnusableLine{"the line is neither an action nor an event" + unknown + "; " +
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

} // namespace

ReadLine readSessionLine(std::string_view text, std::size_t mostValues) {
    std::string tooMuch = tooMuchIn(text, mostValues);
    if (!tooMuch.empty()) {
        return {UnusableLine{std::move(tooMuch)}};
    }
    Json json = Json::parse(text, nullptr, false);
    if (json.is_discarded() || !json.is_object()) {
        return {UnusableLine{std::string("the line is not a JSON object; ") + wantedLine}};
    }
    auto const id = json.find("id");
    if (id == json.end()) {
        return {readContent(json)};
    }
    return {readContent(json), toText(*id, JsonForm::OneLine)};
}

std::size_t longestSessionLine(std::size_t requestBytes) {
    constexpr std::size_t longestEscape = 6; // \u0022
    constexpr std::size_t around = 65'536;
    constexpr std::size_t longest = std::numeric_limits<std::size_t>::max();
    return requestBytes > longest / (2 * longestEscape) ? longest
                                                        : requestBytes * longestEscape + around;
}

} // namespace vex

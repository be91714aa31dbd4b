#include "apps/vexma/SessionLines.h"

#include "KRLIDOM_Writer.h"
#include "VexObject.h"
#include "host/store/image/HostException.h"

#include <limits>

namespace vex {

namespace {

constexpr char const* wantedLine =
    R"(send {"action": A, "in": [V, ...]} or {"notify": kind} on one line)";
constexpr char const* wantedValue =
    R"(write {"long": n}, {"string": s}, {"handle": "id or reference"}, {"node": "XML text"} or {"empty": true})";

/// Makes variants of a line's values.
class ValueReader {
public:
    ValueReader(ActionValues& values, HostSession const& session, KRLIDOM_ReadLimits const& limits)
        : m_values(values), m_session(session), m_limits(limits) {}

    VexVariant Read(Json const& value) const {
        if (value.is_object() && value.size() == 1) {
            for (Kind const& kind : Kinds) {
                auto const at = value.find(kind.key);
                if (at != value.end()) {
                    return (this->*kind.read)(*at);
                }
            }
        }
        refuse("is no value of an action");
    }

    VexVariant readLong(Json const& value) const {
        bool const fits = value.is_number_unsigned()
                              ? value.get<std::uint64_t>() <=
                                    static_cast<std::uint64_t>(std::numeric_limits<long>::max())
                              : value.is_number_integer();
        if (!fits) {
            refuse("is no whole number in the range of a long");
        }
        return m_values.Long(value.get<long>());
    }

private:
    struct Kind {
        char const* key;
        VexVariant (ValueReader::*read)(Json const&) const;
    };
    static Kind const Kinds[5];

    VexVariant readString(Json const& value) const { return m_values.String(textOf(value)); }

    VexVariant readHandle(Json const& value) const {
        return m_values.Handle(m_session.findObject(textOf(value)));
    }

    VexVariant readNode(Json const& value) const {
        if (!value.is_string()) {
            refuse("is no text");
        }
        return m_values.Node(
            KRLIDOM_Reader::parse(value.get_ref<std::string const&>(), "node", m_limits));
    }

    VexVariant readEmpty(Json const& value) const {
        if (!value.is_boolean() || !value.get<bool>()) {
            refuse("is not true");
        }
        return {};
    }

    static I18NString textOf(Json const& value) {
        if (!value.is_string()) {
            refuse("is no text");
        }
        return I18NString::fromUtf8(value.get_ref<std::string const&>());
    }

    [[noreturn]] static void refuse(char const* problem) {
        throw HostException(std::string("a value of the line ") + problem + "; " + wantedValue);
    }

    ActionValues& m_values;
    HostSession const& m_session;
    KRLIDOM_ReadLimits const& m_limits;
};

ValueReader::Kind const ValueReader::Kinds[5] = {
    {"long", &ValueReader::readLong},     {"string", &ValueReader::readString},
    {"handle", &ValueReader::readHandle}, {"node", &ValueReader::readNode},
    {"empty", &ValueReader::readEmpty},
};

void readNotify(Json const& value, SessionLine& line) {
    bool const fits = value.is_number_integer() &&
                      (!value.is_number_unsigned() ||
                       value.get<std::uint64_t>() <= std::numeric_limits<int>::max()) &&
                      value.get<std::int64_t>() >= std::numeric_limits<int>::min() &&
                      value.get<std::int64_t>() <= std::numeric_limits<int>::max();
    if (!fits) {
        throw HostException("the kind of a notification is a whole number, such as 1");
    }
    line.notify = value.get<int>();
}

Json textOf(I18NString const& text) {
    return text.toUtf8();
}

Json answerToRaise(VexException const& raised) {
    Json error;
    error["id"] = raised.GetId();
    error["source"] = raised.GetLocation().source;
    error["line"] = raised.GetLocation().line;
    error["function"] = raised.GetFunction();
    error["parameters"] = Json::array();
    for (VexMessage const& message : raised.GetMessages()) {
        for (KRLMessageParm const& parameter : message.GetComponents().GetParameters()) {
            error["parameters"].push_back(textOf(parameter.GetText()));
        }
    }
    error["text"] = raised.what();
    return error;
}

Json appendedValue(VexVariant const& value) {
    switch (value.GetType()) {
    case VexVariant::Long:
        return {{"long", static_cast<long>(value)}};
    case VexVariant::Handle: {
        I18NString id;
        VexObject(static_cast<VEX_HANDLE>(value)).GetId(id);
        return {{"handle", textOf(id)}};
    }
    case VexVariant::String: {
        auto const* const text = static_cast<I18NString*>(value);
        return {{"string", text == nullptr ? Json("") : textOf(*text)}};
    }
    case VexVariant::Empty:
        return {{"empty", true}};
    default: // a node, or a pointer to one
        return {{"node", true}};
    }
}

} // namespace

SessionLine readSessionLine(std::string_view text, HostSession const& session,
                            KRLIDOM_ReadLimits const& limits) {
    Json const json = Json::parse(text, nullptr, false);
    if (json.is_discarded() || !json.is_object()) {
        throw HostException(std::string("the line is no JSON object; ") + wantedLine);
    }
    SessionLine line;
    if (json.size() == 1 && json.contains("notify")) {
        readNotify(json["notify"], line);
        return line;
    }
    if (json.size() != 2 || !json.contains("action") || !json.contains("in") ||
        !json["in"].is_array()) {
        throw HostException(std::string("the line is neither an action nor an event; ") +
                            wantedLine);
    }
    ValueReader const reader(line.values, session, limits);
    Json const& action = json["action"];
    line.action = action.is_number() ? reader.readLong(action) : reader.Read(action);
    for (Json const& value : json["in"]) {
        line.in.AddParam(reader.Read(value));
    }
    return line;
}

Json answerTo(ActionOutcome const& outcome) {
    Json answer;
    if (outcome.end == ActionOutcome::End::Returned) {
        answer["code"] = outcome.code;
        answer["appended"] = Json::array();
        for (VexVariant const& value : outcome.appended) {
            answer["appended"].push_back(appendedValue(value));
        }
    } else if (outcome.raised) {
        answer["error"] = answerToRaise(*outcome.raised);
    } else {
        answer["error"]["text"] = outcome.text;
    }
    answer["response"] = KRLIDOM_Writer::toUtf8(outcome.response.document());
    return answer;
}

Json answerToNotify(int kind) {
    return {{"notified", kind}};
}

Json answerToFailure(std::string const& text) {
    Json answer;
    answer["error"]["text"] = text;
    return answer;
}

} // namespace vex

#include "host/protocol/SessionReply.h"

#include "host/protocol/JsonText.h"

#include <nlohmann/json.hpp>

namespace vex {

namespace {

Json valueOf(SessionValue& value) {
    switch (value.kind) {
    case SessionValue::Kind::Long:
        return {{"long", value.number}};
    case SessionValue::Kind::String:
        return {{"string", std::move(value.text)}};
    case SessionValue::Kind::Handle:
        return {{"handle", std::move(value.text)}};
    case SessionValue::Kind::Node:
        return {{"node", true}};
    case SessionValue::Kind::Empty:
    case SessionValue::Kind::Unusable: // does not come out
        break;
    }
    return {{"empty", true}};
}

struct Writer {
    Json operator()(ReturnedReply& reply) const {
        Json appended = Json::array();
        for (SessionValue& value : reply.appended) {
            appended.push_back(valueOf(value));
        }
        return {{"code", reply.code},
                {"appended", std::move(appended)},
                {"response", std::move(reply.response)}};
    }

    Json operator()(RaisedReply& reply) const {
        CallFailure& failure = reply.failure;
        return {{"error",
                 {{"id", failure.id},
                  {"source", std::move(failure.source)},
                  {"line", failure.line},
                  {"function", std::move(failure.function)},
                  {"parameters", std::move(failure.parameters)},
                  {"text", std::move(failure.text)}}},
                {"response", std::move(reply.response)}};
    }

    Json operator()(StoppedReply& reply) const {
        return {{"error", {{"text", std::move(reply.text)}}},
                {"response", std::move(reply.response)}};
    }

    Json operator()(NotifiedReply& reply) const {
        Json json{{"notified", reply.kind}};
        if (!reply.problem.empty()) {
            json["error"]["text"] = std::move(reply.problem);
        }
        return json;
    }

    Json operator()(UnusedReply& reply) const {
        return {{"error", {{"text", std::move(reply.text)}}}};
    }
};

} // namespace

std::string toJson(SessionReply reply, std::string const& id) {
    std::string text = toText(std::visit(Writer{}, reply), JsonForm::OneLine);
    return id.empty() ? text : text.insert(1, "\"id\":" + id + ',');
}

} // namespace vex

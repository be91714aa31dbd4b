#include "host/protocol/JsonStream.h"

#include <functional>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using vex::Json;
using vex::JsonStream;

std::string streamed(std::function<void(JsonStream&)> const& write) {
    std::ostringstream out;
    JsonStream json(out);
    write(json);
    return out.str();
}

std::string whole(Json const& json) {
    return toText(json, vex::JsonForm::Indented);
}

TEST(JsonStream, WritesWhatTheWholeTextWouldBe) {
    Json const entry{{"a", {1, 2}}, {"b", Json::object()}, {"c", Json::array()}};
    EXPECT_EQ(streamed([&](JsonStream& json) {
                  json.beginObject();
                  json.member("number", 7);
                  json.beginList("list");
                  json.entry(entry);
                  json.entry(Json("text"));
                  json.beginObject();
                  json.beginObject("inner");
                  json.member("entry", entry);
                  json.end();
                  json.end();
                  json.end();
                  json.end();
              }),
              whole({{"number", 7},
                     {"list", Json::array({entry, "text", {{"inner", {{"entry", entry}}}}})}}));
}

TEST(JsonStream, WritesWhatIsEmptyInOnePiece) {
    EXPECT_EQ(streamed([](JsonStream& json) {
                  json.beginObject();
                  json.end();
              }),
              "{}");
    EXPECT_EQ(streamed([](JsonStream& json) {
                  json.beginObject();
                  json.beginList("list");
                  json.end();
                  json.beginObject("object");
                  json.end();
                  json.end();
              }),
              whole({{"list", Json::array()}, {"object", Json::object()}}));
}

TEST(JsonStream, SpellsNamesAndTextsAsJsonDoes) {
    std::string const odd = "a\"\n\x01\xC3\xBC\xFFz";
    EXPECT_EQ(streamed([&](JsonStream& json) {
                  json.beginObject();
                  json.member(odd, odd);
                  json.end();
              }),
              whole({{odd, odd}}));
}

} // namespace

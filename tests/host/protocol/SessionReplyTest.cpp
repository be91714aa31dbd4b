#include "host/protocol/SessionReply.h"

#include <gtest/gtest.h>

namespace {

using Kind = vex::SessionValue::Kind;

TEST(SessionReply, OfAnActionThatCameBackHasCodeAppendedAndResponse) {
    EXPECT_EQ(
        vex::toJson(vex::ReturnedReply{
            1, {{Kind::Long, -1, ""}, {Kind::Node, 0, ""}}, "<Response><Result/></Response>"}),
        R"({"code":1,"appended":[{"long":-1},{"node":true}],"response":"<Response><Result/></Response>"})");
}

TEST(SessionReply, WritesAValueOfEachKind) {
    EXPECT_EQ(
        vex::toJson(vex::ReturnedReply{
            6, {{Kind::String, 0, "a \"b\""}, {Kind::Handle, 0, "q1"}, {Kind::Empty, 0, ""}}, ""}),
        R"({"code":6,"appended":[{"string":"a \"b\""},{"handle":"q1"},{"empty":true}],"response":""})");
}

TEST(SessionReply, OfAnActionThatAppendedNothingHasAnEmptyList) {
    EXPECT_EQ(vex::toJson(vex::ReturnedReply{6, {}, "<Response/>"}),
              R"({"code":6,"appended":[],"response":"<Response/>"})");
}

TEST(SessionReply, OfARaisedFailureHasEveryDetail) {
    EXPECT_EQ(
        vex::toJson(vex::RaisedReply{
            {1171025905, "VexMDMaProvider", 808, "ProcessRequest", {"Nowhere", "2"}, "No object."},
            "<Response/>"}),
        R"({"error":{"id":1171025905,"source":"VexMDMaProvider","line":808,"function":"ProcessRequest","parameters":["Nowhere","2"],"text":"No object."},"response":"<Response/>"})");
    EXPECT_EQ(
        vex::toJson(vex::RaisedReply{{1, "S", 2, "f", {}, "t"}, ""}),
        R"({"error":{"id":1,"source":"S","line":2,"function":"f","parameters":[],"text":"t"},"response":""})");
}

TEST(SessionReply, OfACallThatALimitEndedKeepsTheResponse) {
    EXPECT_EQ(vex::toJson(vex::StoppedReply{"too much", "<Response><Result/></Response>"}),
              R"({"error":{"text":"too much"},"response":"<Response><Result/></Response>"})");
}

TEST(SessionReply, OfANotificationRepeatsItsKind) {
    EXPECT_EQ(vex::toJson(vex::NotifiedReply{-3}), R"({"notified":-3})");
}

TEST(SessionReply, OfALineThatCouldNotBeUsedSaysWhy) {
    EXPECT_EQ(vex::toJson(vex::UnusedReply{"no JSON"}), R"({"error":{"text":"no JSON"}})");
}

TEST(SessionReply, IsOneLineOfUtf8WhateverItsTextsHold) {
    EXPECT_EQ(vex::toJson(vex::UnusedReply{"a\nb\t\xC3\xBC\x01"}),
              "{\"error\":{\"text\":\"a\\nb\\t\xC3\xBC\\u0001\"}}");
    EXPECT_EQ(vex::toJson(vex::UnusedReply{"a\xFFz"}), "{\"error\":{\"text\":\"a\xEF\xBF\xBDz\"}}");
}

TEST(SessionReply, BeginsWithTheIdOfItsLine) {
    EXPECT_EQ(vex::toJson(vex::NotifiedReply{1}, "[1,\"a\"]"), R"({"id":[1,"a"],"notified":1})");
    EXPECT_EQ(vex::toJson(vex::UnusedReply{"no"}, "7"), R"({"id":7,"error":{"text":"no"}})");
}

TEST(SessionReply, SaysWhatKeptAModelFromBeingRead) {
    EXPECT_EQ(vex::toJson(vex::NotifiedReply{2, "broken"}),
              R"({"notified":2,"error":{"text":"broken"}})");
}

} // namespace

#include "host/protocol/SessionLineCall.h"

#include "KRLIDOM_Writer.h"
#include "VexObject.h"
#include "host/store/image/Budget.h"
#include "host/store/image/HostException.h"
#include "tests/host/service/SmallModel.h"

#include <new>

#include <gmock/gmock.h>

namespace {

using vex::SessionValue;
using Kind = SessionValue::Kind;
using testing::HasSubstr;
using testing::StartsWith;

/// A session whose calls are answered by the test.
class SessionLineCall : public testing::Test {
protected:
    SessionLineCall() {
        m_calls.action = [this](VexVariant const& action, VexParams const& in) {
            ++m_called;
            m_seen(action, in);
            return std::move(m_outcome);
        };
        m_calls.notify = [this](int kind) { m_notified.push_back(kind); };
        m_outcome.end = vex::ActionOutcome::End::Returned;
        m_outcome.response = KRLIDOM_OwnedDocument("Response", {});
    }

    vex::SessionReply carryOut(vex::SessionLine const& line) {
        return vex::carryOut(line, m_session, m_limits, m_calls);
    }

    /// The reply to an action with these parameters.
    vex::SessionReply act(std::vector<SessionValue> in) {
        return carryOut(vex::SessionAction{{Kind::Long, 31000, ""}, std::move(in)});
    }

    std::string problemOf(std::vector<SessionValue> in) {
        return std::get<vex::UnusedReply>(act(std::move(in))).text;
    }

    vex::HostSession m_session{smallModel(), I18NLocale(), nullptr, nullptr};
    vex::SessionLineLimits m_limits;
    vex::SessionCalls m_calls;
    vex::ActionOutcome m_outcome; // of the next call
    std::function<void(VexVariant const&, VexParams const&)> m_seen = [](VexVariant const&,
                                                                         VexParams const&) {};
    int m_called = 0;
    std::vector<int> m_notified;
};

TEST_F(SessionLineCall, MakesEachKindOfValueInOrder) {
    m_seen = [this](VexVariant const& action, VexParams const& in) {
        EXPECT_EQ(static_cast<long>(action), 31000);
        ASSERT_EQ(in.size(), 5U);
        EXPECT_EQ(static_cast<long>(in[0]), -4);
        EXPECT_EQ(*static_cast<I18NString*>(in[1]), I18NString::fromUtf8("\xC3\xBC"));
        EXPECT_EQ(static_cast<VEX_HANDLE>(in[2]), m_session.getModel()->findById("q"));
        EXPECT_EQ(KRLIDOM_Writer::toUtf8(*static_cast<KRLIDOM_Node*>(in[3])), "<a b=\"c\"/>");
        EXPECT_EQ(in[4].GetType(), VexVariant::Empty);
    };
    act({{Kind::Long, -4, ""},
         {Kind::String, 0, "\xC3\xBC"},
         {Kind::Handle, 0, "q"},
         {Kind::Node, 0, "<a b='c'/>"},
         {Kind::Empty, 0, ""}});
    EXPECT_EQ(m_called, 1);
}

TEST_F(SessionLineCall, FindsAHandleByItsReferenceToo) {
    m_seen = [this](VexVariant const&, VexParams const& in) {
        EXPECT_EQ(static_cast<VEX_HANDLE>(in[0]), m_session.getModel()->findById("q"));
    };
    act({{Kind::Handle, 0, "[Sales].[Orders]"}});
    EXPECT_EQ(m_called, 1);
}

TEST_F(SessionLineCall, TellsTheCodeTheResponseAndWhatWasAppended) {
    I18NString text("said");
    KRLIDOM_Node node = m_outcome.response.document().getDocumentElement();
    VexVariant pointer;
    pointer = static_cast<void*>(&node);
    m_outcome.code = 6;
    m_outcome.appended = {VexVariant(7L),
                          VexVariant(&text),
                          VexVariant(static_cast<I18NString*>(nullptr)),
                          VexVariant(m_session.getModel()->findById("q")),
                          VexVariant(VEX_HANDLE()),
                          VexVariant(&node),
                          pointer,
                          VexVariant()};
    auto const reply = std::get<vex::ReturnedReply>(act({}));
    EXPECT_EQ(reply.code, 6);
    EXPECT_EQ(reply.response, "<Response/>");
    EXPECT_EQ(reply.appended, (std::vector<SessionValue>{{Kind::Long, 7, ""},
                                                         {Kind::String, 0, "said"},
                                                         {Kind::String, 0, ""},
                                                         {Kind::Handle, 0, "q"},
                                                         {Kind::Handle, 0, ""},
                                                         {Kind::Node, 0, ""},
                                                         {Kind::Node, 0, ""},
                                                         {Kind::Empty, 0, ""}}));
}

TEST_F(SessionLineCall, TellsEveryDetailOfAFailureAndTheResponse) {
    VexException raised(1171025905);
    raised << (VexMessage(1171025905) << KRLMessageParm("Nowhere") << KRLMessageParm("2"));
    try {
        raised.raise({"Source", 12}, "function", "kind");
    } catch (VexException const& thrown) {
        m_outcome.raised = thrown;
    }
    m_outcome.end = vex::ActionOutcome::End::Raised;
    auto const reply = std::get<vex::RaisedReply>(act({}));
    EXPECT_EQ(reply.failure.id, 1171025905U);
    EXPECT_EQ(reply.failure.source, "Source");
    EXPECT_EQ(reply.failure.line, 12);
    EXPECT_EQ(reply.failure.function, "function");
    EXPECT_EQ(reply.failure.parameters, (std::vector<std::string>{"Nowhere", "2"}));
    EXPECT_THAT(reply.failure.text, StartsWith("No object named \"Nowhere\""));
    EXPECT_EQ(reply.response, "<Response/>");
}

TEST_F(SessionLineCall, TellsWhatEndedACallAndTheResponseSoFar) {
    m_outcome.end = vex::ActionOutcome::End::Stopped;
    m_outcome.text = "too much";
    auto const reply = std::get<vex::StoppedReply>(act({}));
    EXPECT_EQ(reply.text, "too much");
    EXPECT_EQ(reply.response, "<Response/>");
}

TEST_F(SessionLineCall, CallsNothingWhenAValueCannotBeMade) {
    EXPECT_THAT(problemOf({{Kind::Handle, 0, "x9"}}), HasSubstr("\"x9\""));
    EXPECT_THAT(problemOf({{Kind::Node, 0, "<a>"}}), HasSubstr("node:1:"));
    EXPECT_EQ(problemOf({{Kind::Unusable, 0, "is wrong"}}), "is wrong");
    EXPECT_EQ(m_called, 0);
}

TEST_F(SessionLineCall, RefusesADocumentPastItsLimits) {
    m_limits.document.bytes = 10;
    EXPECT_THAT(problemOf({{Kind::Node, 0, "<a>1234567</a>"}}), HasSubstr("10"));
}

TEST_F(SessionLineCall, TellsOfTheFirstValueThatCannotBeMade) {
    EXPECT_THAT(problemOf({{Kind::Handle, 0, "x9"}, {Kind::Unusable, 0, "is wrong"}}),
                HasSubstr("\"x9\""));
    EXPECT_EQ(problemOf({{Kind::Unusable, 0, "is wrong"}, {Kind::Handle, 0, "x9"}}), "is wrong");
    auto const reply = carryOut(
        vex::SessionAction{{Kind::Unusable, 0, "is no action"}, {{Kind::Unusable, 0, "is wrong"}}});
    EXPECT_EQ(std::get<vex::UnusedReply>(reply).text, "is no action");
}

TEST_F(SessionLineCall, SendsNotifications) {
    auto const reply = carryOut(vex::SessionNotification{2});
    EXPECT_EQ(std::get<vex::NotifiedReply>(reply).kind, 2);
    EXPECT_EQ(m_notified, std::vector<int>{2});
    EXPECT_EQ(m_called, 0);
}

TEST_F(SessionLineCall, TellsWhatANotificationRaises) {
    m_calls.notify = [](int) { throw vex::HostException("nobody listens"); };
    EXPECT_EQ(std::get<vex::UnusedReply>(carryOut(vex::SessionNotification{1})).text,
              "nobody listens");
}

TEST_F(SessionLineCall, RepeatsWhatIsWrongWithAnUnusableLine) {
    EXPECT_EQ(std::get<vex::UnusedReply>(carryOut(vex::UnusableLine{"no JSON"})).text, "no JSON");
    EXPECT_EQ(m_called, 0);
}

TEST_F(SessionLineCall, AnswersATextWithAText) {
    EXPECT_EQ(vex::answerSessionLine(R"({"notify": 1})", m_session, m_limits, m_calls),
              R"({"notified":1})");
    EXPECT_EQ(vex::answerSessionLine(R"({"action": 1, "in": []})", m_session, m_limits, m_calls),
              R"({"code":0,"appended":[],"response":"<Response/>"})");
}

TEST_F(SessionLineCall, SaysWhenMemoryIsNotEnoughForALine) {
    m_calls.notify = [](int) { throw std::bad_alloc(); };
    EXPECT_EQ(vex::answerSessionLine(R"({"notify": 1})", m_session, m_limits, m_calls),
              R"({"error":{"text":"there is not enough memory for this line; ask for less"}})");
}

TEST_F(SessionLineCall, ReadsTheModelAnewBeforeThePluginHearsOfIt) {
    std::vector<std::string> steps;
    m_calls.reload = [&] { steps.push_back("reload"); };
    m_calls.notify = [&](int kind) { steps.push_back("notify " + std::to_string(kind)); };
    for (int const kind : {1, 2}) {
        EXPECT_EQ(std::get<vex::NotifiedReply>(carryOut(vex::SessionNotification{kind})).problem,
                  "");
    }
    EXPECT_EQ(steps, (std::vector<std::string>{"notify 1", "reload", "notify 2"}));
}

TEST_F(SessionLineCall, KeepsTheModelWhenTheNewOneCannotBeReadAndSaysSo) {
    m_calls.reload = [] { throw vex::HostException("m.xml:1:2: broken"); };
    EXPECT_EQ(std::get<vex::NotifiedReply>(carryOut(vex::SessionNotification{2})).problem,
              "m.xml:1:2: broken; the model that was read before stays in use");
    m_calls.reload = [] { throw std::bad_alloc(); };
    EXPECT_EQ(
        std::get<vex::NotifiedReply>(carryOut(vex::SessionNotification{2})).problem,
        "there is not enough memory for the model; the model that was read before stays in use");
    EXPECT_EQ(m_notified, (std::vector<int>{2, 2})); // it starts afresh all the same
}

TEST_F(SessionLineCall, GivesTheIdBackWithWhateverItAnswers) {
    auto const answer = [this](char const* line) {
        return vex::answerSessionLine(line, m_session, m_limits, m_calls);
    };
    EXPECT_EQ(answer(R"({"id": {"n": 1}, "notify": 1})"), R"({"id":{"n":1},"notified":1})");
    EXPECT_THAT(answer(R"({"id": 7, "action": 31000})"), StartsWith(R"({"id":7,"error":)"));
    EXPECT_THAT(answer(R"({"id": 8, "action": 31000, "in": []})"),
                StartsWith(R"({"id":8,"code":)"));
}

TEST_F(SessionLineCall, RefusesDocumentsThatAreTooLongTogether) {
    m_limits.document.bytes = 10;
    EXPECT_THAT(problemOf({{Kind::Node, 0, "<a></a>"}, {Kind::Node, 0, "<b></b>"}}),
                HasSubstr("more than 10 bytes together, which is the limit; send fewer, or raise "
                          "it with --max-request"));
    EXPECT_EQ(m_called, 0);
}

TEST_F(SessionLineCall, RefusesMoreDocumentsThanAnyActionTakes) {
    std::vector<SessionValue> nodes(100, {Kind::Node, 0, "<a/>"});
    EXPECT_TRUE(std::holds_alternative<vex::ReturnedReply>(act(nodes)));
    nodes.push_back({Kind::Node, 0, "<a/>"});
    EXPECT_THAT(problemOf(nodes), HasSubstr("more than 100 nodes, which is the limit"));
    EXPECT_EQ(m_called, 1);
}

TEST_F(SessionLineCall, HoldsNoMoreOfItsDocumentsThanTheCallMay) {
    vex::Budget const budget({.bytes = 40'000});
    EXPECT_THAT(problemOf(std::vector<SessionValue>(100, {Kind::Node, 0, "<a/>"})),
                HasSubstr("more than 40000 bytes, which is the limit; ask for less, or raise the "
                          "limit with --max-bytes"));
}

TEST_F(SessionLineCall, EndsAtWhateverItDoesWhenItIsCancelled) {
    std::atomic<bool> cancelled{false};
    auto const answer = [&](std::string const& line) {
        vex::Budget const budget({.cancelled = &cancelled});
        return vex::answerSessionLine(line, m_session, m_limits, m_calls);
    };
    std::string const line = R"({"action": 1, "in": [{"handle": "q"}]})";
    cancelled = true;
    EXPECT_THAT(answer(line), HasSubstr("the call was cancelled"));
    EXPECT_EQ(m_called, 0);
    cancelled = false;
    EXPECT_THAT(answer(line), HasSubstr(R"("code":0)"));
    EXPECT_EQ(m_called, 1);
}

TEST_F(SessionLineCall, EndsAtWhateverItDoesOnceItsDeadlineHasPassed) {
    vex::Budget const budget({.deadline = std::chrono::steady_clock::now()});
    EXPECT_THAT(vex::answerSessionLine(R"({"action": 1, "in": [{"handle": "q"}]})", m_session,
                                       m_limits, m_calls),
                HasSubstr("the deadline of the call has passed"));
    EXPECT_EQ(m_called, 0);
}

TEST_F(SessionLineCall, LooksForWhatALongHandleMeantNoLongerThanForAShortOne) {
    vex::Budget const budget({});
    EXPECT_THAT(problemOf({{Kind::Handle, 0, std::string(30'000, 'x')}}), HasSubstr("\"xxx"));
    EXPECT_LT(budget.stepsDone(), 100U);
}

} // namespace

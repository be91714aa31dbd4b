#include "plugin/VexMAAction.h"

#include "tests/plugin/PluginCase.h"
#include "tests/support/Casts.h"
#include "tests/support/ExpectFailure.h"

#include <gtest/gtest.h>

namespace {

char const actionFailureLine[] =
    "\n\n *** FAILURE: VemAction::validateParameter at invalid VexVariant type *** \n\n";

// An action on a session, with parameters that can be replaced one by one.
class VexMAActionTest : public testing::Test {
protected:
    VexMAActionTest() {
        m_session.setViews({"v"});
        m_in = {VexVariant(0L), VexVariant(&m_path), VexVariant(&m_request.node())};
        m_out = {VexVariant(0L), VexVariant(&m_response.node())};
    }

    void ask() {
        VexParams in;
        for (VexVariant const& value : m_in) {
            in.AddParam(value);
        }
        m_given.clear();
        for (VexVariant const& value : m_out) {
            m_given.AddParam(value);
        }
        m_action.doRequest(in, m_given);
    }

    void expectRefusal() {
        testing::internal::CaptureStdout();
        expectFailure([&] { ask(); }, 1444379511, "VexMAAction", 83,
                      "VexAction::validateParameter");
        std::fflush(stdout);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), actionFailureLine);
        EXPECT_EQ(m_given.size(), m_out.size());
    }

    TestModel m_model{casts::plainShop()};
    TestSession m_session{m_model};
    VexMAAction m_action{m_session};
    I18NString m_path{"/content/m"};
    TestRequest m_request{"<Metadata><Property name=\"*/@name\"/></Metadata>"};
    TestResponse m_response;
    std::vector<VexVariant> m_in;
    std::vector<VexVariant> m_out;
    VexParams m_given;
};

} // namespace

TEST_F(VexMAActionTest, ARequestIsAnsweredIntoTheResponseAndReported) {
    ask();
    EXPECT_EQ(m_response.text(), "<Response><Result><folder name=\"Sales\"/></Result></Response>");
    ASSERT_EQ(m_given.size(), 4U);
    EXPECT_EQ(m_given[2].GetType(), VexVariant::Long);
    EXPECT_EQ(static_cast<long>(m_given[2]), 1);
    EXPECT_EQ(m_given[3].GetType(), VexVariant::Pointer);
    EXPECT_EQ(static_cast<void*>(m_given[3]), &m_response.node());
}

TEST_F(VexMAActionTest, TheFirstParameterIsCheckedAndNotRead) {
    m_in[0] = VexVariant(-77L);
    ask();
    EXPECT_EQ(m_response.resultText(), "<folder name=\"Sales\"/>");
}

TEST_F(VexMAActionTest, EachParameterOfAnotherTypeIsRefused) {
    I18NString text;
    VexVariant pointer;
    pointer = static_cast<void*>(&text);
    VexVariant const all[] = {VexVariant(),
                              VexVariant(1L),
                              VexVariant(&text),
                              VexVariant(VEX_HANDLE(1)),
                              VexVariant(&m_request.node()),
                              pointer};
    std::vector<VexVariant> const good = m_in;
    for (std::size_t index = 0; index < good.size(); ++index) {
        for (VexVariant const& value : all) {
            if (value.GetType() != good[index].GetType()) {
                m_in = good;
                m_in[index] = value;
                expectRefusal();
            }
        }
    }
    EXPECT_EQ(m_model.calls().total(), 0);
}

TEST_F(VexMAActionTest, TheFirstWrongParameterEndsTheRequest) {
    m_in = {VexVariant(), VexVariant(), VexVariant()};
    expectRefusal();
}

TEST_F(VexMAActionTest, MissingParametersAreRefusedLikeOnesOfAnotherType) {
    for (int count = 2; count >= 0; --count) {
        m_in.resize(static_cast<std::size_t>(count));
        expectRefusal();
    }
}

TEST_F(VexMAActionTest, AResponseThatIsAbsentOrNoNodeIsRefused) {
    m_out[1] = VexVariant(1L);
    expectRefusal();
    m_out.resize(1);
    expectRefusal();
    m_out.clear();
    expectRefusal();
}

TEST_F(VexMAActionTest, APointerToNothingIsRefusedLikeAnotherType) {
    std::vector<VexVariant> const good = m_in;
    m_in[1] = VexVariant(static_cast<I18NString*>(nullptr));
    expectRefusal();
    m_in = good;
    m_in[2] = VexVariant(static_cast<KRLIDOM_Node*>(nullptr));
    expectRefusal();
    m_in = good;
    m_out[1] = VexVariant(static_cast<KRLIDOM_Node*>(nullptr));
    expectRefusal();
}

TEST_F(VexMAActionTest, AResponseNodeThatIsNoElementIsRefused) {
    KRLIDOM_Node none;
    KRLIDOM_Node document = m_response.node().getOwnerDocument();
    KRLIDOM_Node text = m_response.node().getOwnerDocument().createTextNode("text");
    for (KRLIDOM_Node* const node : {&none, &document, &text}) {
        m_out[1] = VexVariant(node);
        expectRefusal();
    }
    EXPECT_EQ(m_response.text(), "<Response><Result/></Response>");
}

TEST_F(VexMAActionTest, AParameterOfTheExpectedTypePasses) {
    testing::internal::CaptureStdout();
    m_action.validateParameter(VexVariant(1L), 2);
    m_action.validateParameter(VexVariant(&m_path), 3);
    m_action.validateParameter(VexVariant(&m_request.node()), 8);
    m_action.validateParameter(VexVariant(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

// covers quirk: first-model-path-stays
TEST_F(VexMAActionTest, LaterRequestsRunOnTheModelPathOfTheFirst) {
    ask();
    m_path = "/public/other";
    ask();
    m_path = "/content/third";
    ask();
    ASSERT_EQ(m_session.askedPaths().size(), 1U);
    EXPECT_EQ(m_session.askedPaths()[0], "/content/m");
}

TEST_F(VexMAActionTest, ARequestThatFailsReportsNothingAndLeavesTheProviderInPlace) {
    TestRequest broken("<Metadata start_at=\"[\"/>");
    m_in[2] = VexVariant(&broken.node());
    expectFailure([&] { ask(); }, 1170869272, "VexMDMaProvider", 145, "VexMDMaProvider::doRequest");
    EXPECT_EQ(m_given.size(), 2U);
    m_path = "/public/other";
    m_in[2] = VexVariant(&m_request.node());
    ask();
    EXPECT_EQ(m_given.size(), 4U);
    EXPECT_EQ(m_session.askedPaths().size(), 1U);
}

TEST_F(VexMAActionTest, ARefusedRequestDoesNotSettleTheModelPath) {
    m_in[2] = VexVariant();
    expectRefusal();
    m_path = "/content/second";
    m_in[2] = VexVariant(&m_request.node());
    ask();
    ASSERT_EQ(m_session.askedPaths().size(), 1U);
    EXPECT_EQ(m_session.askedPaths()[0], "/content/second");
}

TEST_F(VexMAActionTest, ARequestWithoutAResponseDoesNotSettleTheModelPath) {
    VexVariant const good = m_out[1];
    m_path = "/public/unrestricted";
    m_out[1] = VexVariant(1L);
    expectRefusal();
    m_path = "/content/second";
    m_out[1] = good;
    ask();
    ASSERT_EQ(m_session.askedPaths().size(), 1U);
    EXPECT_EQ(m_session.askedPaths()[0], "/content/second");
}

TEST_F(VexMAActionTest, TheModelPathIsCopied) {
    ask();
    m_path.clear();
    m_session.setViews({});
    ask();
    EXPECT_EQ(m_given.size(), 4U);
}

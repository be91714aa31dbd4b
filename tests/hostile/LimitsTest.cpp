// Every limit: what it says, and that work goes on after it.

#include "KRLException.h"
#include "KRLIDOM_Reader.h"
#include "host/import/xml/ModelLoader.h"
#include "tests/hostile/HostileSession.h"

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// A document just inside of a limit, and the same with one more of something.
struct DocumentLimit {
    char const* name;
    std::function<std::string(std::size_t)> document; // for a count
    std::size_t most;                                 // that is allowed
    char const* complaint;                            // about one more
};

std::string nested(char const* root, std::size_t depth) {
    return "<" + std::string(root) + ">" + repeated("<a>", depth - 1) +
           repeated("</a>", depth - 1) + "</" + root + ">";
}

std::string withAttributes(char const* root, std::size_t count) {
    std::string text = "<" + std::string(root);
    for (std::size_t i = 0; i < count; ++i) {
        text += " a" + std::to_string(i) + "=''";
    }
    return text + "/>";
}

std::string withName(char const* root, std::size_t length) {
    return "<" + std::string(root) + "><" + std::string(length, 'n') + "/></" + root + ">";
}

// The root's name is one of them.
std::string withNames(char const* root, std::size_t count) {
    std::string text = "<" + std::string(root) + ">";
    for (std::size_t i = 1; i < count; ++i) {
        text += "<n" + std::to_string(i) + "/>";
    }
    return text + "</" + root + ">";
}

template <std::string (*Make)(char const*, std::size_t)> auto of(char const* root) {
    return [root](std::size_t count) { return Make(root, count); };
}

class ModelLimit : public testing::TestWithParam<DocumentLimit> {};

TEST_P(ModelLimit, IsNamedWhereItIsPassedAndNothingIsLoaded) {
    DocumentLimit const& limit = GetParam();
    EXPECT_NE(vex::loadModelText(limit.document(limit.most), "m.xml"), nullptr);
    try {
        vex::loadModelText(limit.document(limit.most + 1), "m.xml");
        FAIL() << "nothing was raised";
    } catch (KRLDocumentException const& problem) {
        EXPECT_THAT(problem.what(), StartsWith("m.xml:1:"));
        EXPECT_THAT(problem.what(), HasSubstr(limit.complaint));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Models, ModelLimit,
    testing::Values(DocumentLimit{"Depth", of<nested>("model"), 512,
                                  "elements are nested more than 512 deep; flatten the model"},
                    DocumentLimit{"Attributes", of<withAttributes>("model"), 200,
                                  "the element has 201 attributes, more than the 200 allowed"},
                    DocumentLimit{"NameLength", of<withName>("model"), 1'000,
                                  "has more than 1000 characters; shorten it"},
                    DocumentLimit{
                        "DistinctNames", of<withNames>("model"), 10'000,
                        "the document has more than 10000 different names of elements and "
                        "attributes"}),
    [](auto const& tested) { return std::string(tested.param.name); });

class RequestLimit : public testing::TestWithParam<DocumentLimit> {};

TEST_P(RequestLimit, IsNamedWhereItIsPassedAndTheSessionGoesOn) {
    DocumentLimit const& limit = GetParam();
    HostileSession session("<model><namespace id='n' name='N'/></model>");
    EXPECT_EQ(session.complaint(limit.document(limit.most)), "answered");
    try {
        session.call(limit.document(limit.most + 1));
        FAIL() << "nothing was raised";
    } catch (KRLDocumentException const& problem) {
        EXPECT_THAT(problem.what(), StartsWith("request:"));
        EXPECT_THAT(problem.what(), HasSubstr(limit.complaint));
    }
    EXPECT_EQ(session.complaint("<Metadata/>"), "answered");
}

INSTANTIATE_TEST_SUITE_P(
    Requests, RequestLimit,
    testing::Values(
        DocumentLimit{"Size",
                      [](std::size_t count) {
                          return "<Metadata>" + std::string(count - 21, ' ') + "</Metadata>";
                      },
                      1U << 20U,
                      "The document has too many bytes (1048577; at most 1048576 allowed)."},
        DocumentLimit{"Depth", of<nested>("Metadata"), 256,
                      "Elements are nested too deep (257; at most 256 allowed). Nest less."},
        DocumentLimit{"Attributes", of<withAttributes>("Metadata"), 200,
                      "An element has too many attributes (201; at most 200 allowed)."},
        DocumentLimit{"NameLength", of<withName>("Metadata"), 1'000,
                      "A name is too long (1001; at most 1000 allowed). Shorten it."},
        DocumentLimit{"DistinctNames", of<withNames>("Metadata"), 10'000,
                      "There are too many distinct names (10001; at most 10000 allowed)."}),
    [](auto const& tested) { return std::string(tested.param.name); });

constexpr char const* loop = "<model><namespace name='N'><shortcut name='S' refobj='[N]'/>"
                             "<filter name='F'/></namespace></model>";
constexpr char const* tree = "<Metadata Depth='0'><Property n='*/@name'/><Property n='*/filter'/>"
                             "</Metadata>";
constexpr char const* answer = "<Response><Result><folder name=\"N\"><filter name=\"F\"/>";

class CallLimit : public testing::Test {
protected:
    HostileSession m_session{loop};

    void ExpectUsable() {
        m_session.limits = {};
        EXPECT_THAT(m_session.ask(tree), StartsWith(answer));
    }
};

TEST_F(CallLimit, OfElementsEndsTheCallAndLeavesWhatIsWritten) {
    m_session.limits.response.elements = 3;
    vex::MetadataAnswer const stopped = m_session.call(tree);
    EXPECT_EQ(stopped.end.text,
              "The document holds 3 elements, which is the limit. Ask for less with \"Depth\" or a "
              "start path, or raise the limit with --max-elements.");
    EXPECT_EQ(stopped.response.elementCount(), 3U);
    ExpectUsable();
}

TEST_F(CallLimit, OfBytesEndsTheCall) {
    m_session.limits.response.bytes = 40'000;
    std::string const deep =
        "<Metadata Depth='1000'><Property n='*/@name'/><Property n='*/@_path'/>"
        "<Property n='*/filter'/></Metadata>";
    vex::MetadataAnswer const stopped = m_session.call(deep);
    EXPECT_EQ(
        stopped.end.text,
        "The document takes more than 40000 bytes of memory, which is the limit. Ask for less "
        "with \"Depth\" or a start path, or raise the limit with --max-bytes.");
    EXPECT_LE(stopped.response.byteCount(), 40'000U);
    ExpectUsable();
}

TEST_F(CallLimit, OfOutputLevelsEndsTheCall) {
    EXPECT_THAT(m_session.complaint("<Metadata Depth='1100'><Property n='*/@name'/></Metadata>"),
                HasSubstr("The answer nests more than 1024 levels"));
    ExpectUsable();
}

TEST_F(CallLimit, OfTimeEndsTheCall) {
    m_session.limits.time = std::chrono::milliseconds(0);
    EXPECT_THAT(m_session.complaint("<Metadata Depth='1000'><Property n='*/@name'/></Metadata>"),
                HasSubstr("the deadline of the call has passed; ask for less"));
    ExpectUsable();
}

TEST_F(CallLimit, OfAUserWhoCancelsEndsTheCall) {
    std::atomic<bool> const cancelled{true};
    m_session.limits.cancelled = &cancelled;
    EXPECT_THAT(m_session.complaint(tree),
                HasSubstr("the call was cancelled; ask again to get the whole answer"));
    ExpectUsable();
}

} // namespace

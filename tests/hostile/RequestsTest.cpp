// Requests of up to the greatest size, each made to cost as much as it can.

#include "KRLIDOM_Reader.h"
#include "host/store/image/Budget.h"
#include "tests/hostile/HostileSession.h"

#include <gtest/gtest.h>

namespace {

constexpr std::size_t greatest = 1U << 20U;

/// As many of `part`, with its number at each "%", as fit into a request.
std::string filled(std::string const& part, std::size_t most = greatest) {
    std::string text = "<Metadata>";
    std::string const end = "</Metadata>";
    for (std::size_t i = 0; i < most; ++i) {
        std::string one = part;
        for (std::size_t at = one.find('%'); at != std::string::npos; at = one.find('%', at)) {
            one.replace(at, 1, std::to_string(i));
        }
        if (text.size() + one.size() + end.size() > greatest) {
            break;
        }
        text += one;
    }
    return text + end;
}

std::string attributes(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += " a" + std::to_string(i) + "='*/@x'";
    }
    return text;
}

struct Request {
    char const* name;
    std::string text;
};

Request const requests[] = {
    {"ManyProperties", filled("<Property n='*/@p%'/>")},
    {"ManyClasses", filled("<Property n='c%/@name'/>")},
    {"ManyCollections", filled("<Property n='*/c%'/>")},
    {"TheSamePropertyOverAndOver", filled("<Property n='*/@name'/>")},
    {"ManyConstraints", filled("<Constraint n='./@p%=[v%]'/>")},
    {"ManyGlobalEntries", filled("<Property n='/@supportedLocales'/>")},
    {"ManyDistinctNames", filled("<n% a%=''/>", 4'990)},
    {"AllAttributesEverywhere", filled("<Property" + attributes(200) + "/>")},
    {"LongNames", filled("<" + std::string(990, 'n') + "%/>")},
    {"Deep", filled(repeated("<a>", 250) + repeated("</a>", 250))},
    {"Text", filled("text ")},
    {"CharacterReferences", filled("&#x41;")},
    {"Comments", filled("<!---->")},
    {"Instructions", filled("<?a?>")},
    {"MarkedSections", filled("<![CDATA[]]>")},
    {"OneLongPath", "<Metadata start_at='[" + std::string(1'000'000, 'n') + "]'/>"},
    {"AVeryDeepPath", "<Metadata start_at='" + repeated("[n].", 200'000) + "[n]'/>"},
    {"AVeryDeepReference", "<Metadata start_atRef='" + repeated("[n].", 200'000) + "[n]'/>"},
};

class Requests : public testing::TestWithParam<Request> {};

TEST_P(Requests, OfTheGreatestSizeAreReadAndAnswered) {
    std::string const& text = GetParam().text;
    ASSERT_LE(text.size(), greatest);
    HostileSession session("<model><locales><locale>en</locale></locales><namespace name='N'>"
                           "<querySubject name='Q'><queryItem name='I'/></querySubject>"
                           "</namespace></model>");
    std::size_t const held = KRLIDOM_Reader::parse(text, "request").byteCount();
    RecordProperty("bytes", std::to_string(held));
    EXPECT_LE(held, 40 * text.size());
    vex::Budget const work({});
    EXPECT_NE(session.call(text).end.kind, vex::CallEnd::Kind::Stopped);
    RecordProperty("steps", std::to_string(work.stepsDone()));
    EXPECT_LE(work.stepsDone(), 10 + text.size() / 8); // calls of the object model
}

INSTANTIATE_TEST_SUITE_P(Kinds, Requests, testing::ValuesIn(requests),
                         [](auto const& tested) { return std::string(tested.param.name); });

} // namespace

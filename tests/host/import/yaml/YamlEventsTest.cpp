#include "host/import/yaml/YamlEvents.h"

#include "KRLException.h"

#include <gtest/gtest.h>

namespace {

using vex::YamlEvent;
using vex::YamlEvents;

/// The events as signs, each text in its place.
std::string eventsOf(std::string const& text, vex::YamlOptions options = {}) {
    constexpr char const* signs[] = {"{", "}", "[", "]", "", "*", "."};
    std::string const name = "f.yaml";
    std::string all;
    try {
        YamlEvents events(text, name, options);
        do {
            YamlEvent const& event = events.next();
            all += std::string(signs[static_cast<int>(event.kind)]) + event.text + ' ';
        } while (events.current().kind != YamlEvent::Kind::End);
    } catch (KRLDocumentException const& problem) {
        all += problem.what();
    }
    return all;
}

TEST(YamlEvents, AreGivenInOrder) {
    EXPECT_EQ(eventsOf("a: [b, {c: d}]\n"), "{ a [ b { c d } ] } . ");
    EXPECT_EQ(eventsOf("# nothing\n"), ". ");
}

TEST(YamlEvents, NeverStandForMoreThanIsWritten) {
    EXPECT_EQ(eventsOf("a: &x [b]\nc: *x\n"), "{ a [ b ] c *x } . ");
}

TEST(YamlEvents, EndWithASecondDocumentATextThatIsNoneAndTooDeepNesting) {
    EXPECT_EQ(eventsOf("a\n---\nb\n", {.content = "all rules"}),
              "a f.yaml:2:1: a second document begins here; write all rules into one");
    EXPECT_EQ(eventsOf("[[[a]]]", {.depth = 2}), "[ [ f.yaml:1:3: this is nested more than 2 deep");
    EXPECT_EQ(eventsOf("a: 'b").substr(0, 28), "{ a f.yaml:1:6: this is not ");
}

TEST(YamlEvents, TellTextFromNothing) {
    std::string const name = "f.yaml";
    YamlEvents events("[~, '~', null, '']", name);
    events.next();
    std::string nothing;
    while (events.next().kind == YamlEvent::Kind::Scalar) {
        nothing += events.current().isNothing() ? '1' : '0';
    }
    EXPECT_EQ(nothing, "1010");
}

TEST(YamlEvents, SkipWhatBeginsWhole) {
    std::string const name = "f.yaml";
    YamlEvents events("{a: {b: [c]}, d: e}", name);
    events.next();
    events.next(); // a
    events.next();
    events.skip();
    EXPECT_EQ(events.current().text, "d");
}

TEST(YamlEvents, TellTheAnchorsOfWhatBegins) {
    std::string const name = "f.yaml";
    YamlEvents events("&a {b: &c d, e: &f [g]}", name);
    std::string anchors;
    while (events.next().kind != YamlEvent::Kind::End) {
        anchors += events.current().anchor + '.';
    }
    EXPECT_EQ(anchors, "a..c..f....");
}

} // namespace

// Models whose shortcuts are out to make an answer endless or a search long.

#include "host/import/xml/ModelLoader.h"
#include "host/insight/ModelChecks.h"
#include "host/store/image/Budget.h"
#include "tests/hostile/HostileSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

constexpr char const* everyShortcut =
    "<Metadata Depth='0'><Property n='*/@name'/><Property n='*/@_path'/><Property n='*/@_ref'/>"
    "<Property n='*/folder'/><Property n='*/querySubject'/><Property n='*/queryItem'/></Metadata>";

std::string name(char const* letter, std::size_t number) {
    return letter + std::to_string(number);
}

std::size_t count(std::string const& text, std::string const& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

// Namespaces that each hold one shortcut, to the next namespace, and the last
// one to the first.
std::string ring(std::size_t length) {
    std::string text = "<model><namespace name='R'>";
    for (std::size_t i = 0; i < length; ++i) {
        text += "<namespace name='" + name("N", i) + "'><shortcut name='" + name("S", i) +
                "' refobj='[" + name("N", (i + 1) % length) + "]'/></namespace>";
    }
    return text + "</namespace></model>";
}

TEST(Shortcuts, InACycleOfAnyLengthEndWhereTheyMeetThemselves) {
    for (std::size_t length = 1; length <= 40; ++length) {
        HostileSession session(ring(length));
        std::string const start = "<Metadata Depth='0' start_at='[R].[N0]'>"
                                  "<Property n='*/@name'/><Property n='*/*'/></Metadata>";
        std::string const answer = session.ask(start);
        // Once around, and the first shortcut once more without members.
        EXPECT_EQ(count(answer, "<folder "), length + 2) << answer;
        EXPECT_EQ(count(answer, "name=\"S0\""), 2U) << answer;
    }
}

TEST(Shortcuts, InACycleAreAllFoundEndless) {
    for (std::size_t length = 1; length <= 40; ++length) {
        auto const model = vex::loadModelText(ring(length), "m.xml");
        EXPECT_EQ(vex::findEndlessShortcuts(*model).size(), length);
    }
}

TEST(Shortcuts, ToThemselvesToAncestorsAndToEachOtherEnd) {
    struct {
        char const* model;
        std::size_t elements; // those of the host are two of them
    } const cases[] = {
        {"<model><namespace name='N'><shortcut name='S' refobj='[N].[S]'/></namespace></model>", 4},
        {"<model><namespace name='N'><folder name='F'><folder name='G'>"
         "<shortcut name='S' refobj='[N]'/></folder></folder></namespace></model>",
         9},
        {"<model><namespace name='N'><shortcut name='S' refobj='[N].[T]'/>"
         "<shortcut name='T' refobj='[N].[S]'/></namespace></model>",
         5},
    };
    for (auto const& tested : cases) {
        HostileSession session(tested.model);
        vex::MetadataAnswer const answer = session.call(everyShortcut);
        EXPECT_EQ(answer.end.text, "");
        EXPECT_EQ(answer.response.elementCount(), tested.elements) << session.ask(everyShortcut);
    }
}

// Namespaces one after the other, each with `width` shortcuts to the next: the
// answer has width to the power of `levels` elements.
std::string lattice(std::size_t levels, std::size_t width) {
    std::string text = "<model><namespace name='R'>";
    for (std::size_t level = 0; level < levels; ++level) {
        text += "<namespace name='" + name("N", level) + "'>";
        for (std::size_t i = 0; i < width; ++i) {
            text +=
                "<shortcut name='" + name("S", i) + "' refobj='[" + name("N", level + 1) + "]'/>";
        }
        text += "</namespace>";
    }
    return text + "<namespace name='" + name("N", levels) + "'/></namespace></model>";
}

TEST(Shortcuts, ThatMultiplyEndAtTheElementsThatAreAllowed) {
    HostileSession session(lattice(100, 3));
    session.limits.response.elements = 20'000;
    for (char const* const request :
         {everyShortcut, "<Metadata Depth='90'><Property n='*/@name'/></Metadata>"}) {
        vex::MetadataAnswer const answer = session.call(request);
        EXPECT_THAT(answer.end.text, HasSubstr("The document holds 20000 elements"));
        EXPECT_EQ(answer.response.elementCount(), 20'000U);
    }
    EXPECT_EQ(session.complaint("<Metadata Depth='1'><Property n='*/@name'/></Metadata>"),
              "answered");
}

TEST(Shortcuts, ThatMultiplyAreCheckedWithoutBeingExpanded) {
    auto const model = vex::loadModelText(lattice(100, 3), "m.xml");
    vex::Diagnostics found;
    vex::checkModel(*model, "m.xml", found);
    EXPECT_EQ(found.size(), 0U);
}

TEST(Shortcuts, ThatMultiplyUnderViewsEndToo) {
    std::string model = lattice(100, 3);
    model.insert(model.find("</model>"),
                 "<securityViews><securityView id='v'><set kind='included'><item>none</item></set>"
                 "</securityView></securityViews>");
    HostileSession session(model, "<catalog><model path='/content/m' file='m'>"
                                  "<grant role='r' view='v'/></model>"
                                  "<user name='ann'><role>r</role></user></catalog>");
    session.limits.response.elements = 20'000;
    vex::MetadataAnswer const answer = session.call(everyShortcut);
    EXPECT_LE(answer.response.elementCount(), 20'000U);
}

// A namespace with as many shortcuts of one name to a query subject, and of
// another to itself.
std::string likeNamed(std::size_t number) {
    return "<model><namespace name='N'><querySubject name='Q'><queryItem "
           "name='I'/></querySubject>" +
           repeated("<shortcut name='S' refobj='[N].[Q]'/>", number) +
           repeated("<shortcut name='T' refobj='[N]'/>", number) + "</namespace></model>";
}

TEST(Shortcuts, ThatAllBearOneNameAreSearchedThroughOnce) {
    std::size_t const number = hostileSize(10'000);
    HostileSession session(likeNamed(number));
    for (char const* const start :
         {"start_atRef='[N].[S].[I]'", "start_atRef='[T].[Q].[I]'", "start_atRef='[T].[S].[I]'",
          "start_atRef='[S].[X].[X]'", "start_at='[N].[S].[I]'", "start_at='[N].[T].[S].[I]'",
          "start_at='[S].[I]'"}) {
        vex::Budget const work({});
        vex::MetadataAnswer const answer =
            session.call("<Metadata " + std::string(start) +
                         "><Property n='*/@name'/><Property n='*/@_ref'/>"
                         "<Property n='*/querySubject'/><Property n='*/queryItem'/></Metadata>");
        EXPECT_NE(answer.end.kind, vex::CallEnd::Kind::Stopped) << start << ": " << answer.end.text;
        EXPECT_LE(work.stepsDone(), 100 * number) << start; // of each with each: 10,000 times
    }
}

TEST(Shortcuts, ThatAllBearOneNameAreAllWritten) {
    // Each looks for its reference among all of its name, so a deadline matters.
    std::size_t const number = 500;
    HostileSession session(likeNamed(number));
    EXPECT_EQ(session.call("<Metadata Depth='2'><Property n='*/@name'/></Metadata>")
                  .response.elementCount(),
              2 * number + 3);
    session.limits.time = std::chrono::milliseconds(0);
    EXPECT_THAT(session.complaint("<Metadata Depth='2'><Property n='*/@name'/></Metadata>"),
                HasSubstr("deadline"));
}

} // namespace

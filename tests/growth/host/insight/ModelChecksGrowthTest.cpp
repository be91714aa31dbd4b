#include "host/insight/FileFindings.h"
#include "host/protocol/JsonFindings.h"
#include "tests/growth/CountingBuffer.h"
#include "tests/growth/GeneratedText.h"
#include "tests/growth/Growth.h"

namespace {

/// What it takes to look through a model and to write what was found, in each form.
Measurement checkOf(std::string const& elements) {
    std::string const text = "<model defaultLocale='en'><locales><locale>en</locale>"
                             "<locale>de</locale></locales>" +
                             elements + "</model>";
    return countWork(text.size(), [&] {
        vex::Diagnostics const found = vex::findInModel(text, "m.xml");
        CountingBuffer written;
        std::ostream out(&written);
        writeJson(out, found);
        writeSarif(out, found, "1");
        EXPECT_GT(written.count(), 0U);
    });
}

/// More findings than are kept of a rule.
constexpr std::size_t many = 6'000;

TEST(ModelChecksGrowth, FollowsTheObjectsWhoseReferencesAreLong) {
    constexpr std::size_t levels = 20;
    std::string const opening = "<querySubject name='" + std::string(2'000, 'a') + "'>";
    EXPECT_TRUE(staysInProportion(many, [&](std::size_t size) {
        return checkOf("<namespace name='n'>" + repeated(opening, levels) +
                       repeated("<calculation name='b' expression='[c]'/>", size) +
                       repeated("</querySubject>", levels) + "</namespace>");
    }));
}

TEST(ModelChecksGrowth, FollowsTheShortcutsOfACycle) {
    EXPECT_TRUE(staysInProportion(many, [](std::size_t size) {
        return checkOf("<namespace name='n'>" +
                       textOfEach(size,
                                  [&](std::string const& number) {
                                      std::size_t const next = (std::stoul(number) + 1) % size;
                                      return "<querySubject name='q" + number +
                                             "'><shortcut name='s' refobj='[n].[q" +
                                             std::to_string(next) + "]'/></querySubject>";
                                  }) +
                       "</namespace>");
    }));
}

TEST(ModelChecksGrowth, FollowsTheLiteralsOfAnExpression) {
    EXPECT_TRUE(staysInProportion(many, [](std::size_t size) {
        return checkOf(
            "<namespace name='n'><calculation name='c'><property name='expression'>" +
            textOfEach(size, [](auto const& n) { return "\"a" + n + "\" [b" + n + "] "; }) +
            "</property></calculation></namespace>");
    }));
}

} // namespace

#include "host/import/xml/ModelLoader.h"
#include "host/insight/LeakScan.h"
#include "tests/growth/GeneratedText.h"
#include "tests/growth/Growth.h"

namespace {

/// What it takes to look through the texts of the object "x", whose user sees nothing else.
Measurement scanOf(std::string const& members) {
    std::string const text = R"(<model defaultLocale="en"><locales><locale>en</locale></locales>
      <namespace id="n" name="Sales"><querySubject id="q" name="Orders">
        <queryItem id="total" name="Total"/></querySubject>)" +
                             members + "</namespace></model>";
    auto const model = vex::loadModelText(text, "m.xml");
    VEX_HANDLE const object = model->findById("x");
    return countWork(text.size(), [&] {
        vex::findLeaks(*model, {object}, [&](VEX_HANDLE each) { return each == object; });
    });
}

std::string calculation(std::string const& expression) {
    return "<calculation id='x' name='X'><property name='expression'>" + expression +
           "</property></calculation>";
}

TEST(LeakScanGrowth, FollowsTheLengthOfAnExpression) {
    struct Row {
        char const* name;
        char const* piece;
        char const* end;
    };
    constexpr Row rows[] = {
        {"references", "+[Sales].[Orders].[Total]", ""},
        {"names that lead nowhere", "+[a]", ""},
        {"names in one reference", ".[a]", ""},
        {"brackets that do not close", "[", ""},
        {"brackets that close once", "[", "]"},
        {"doubled brackets that do not close", "[a]]", ""},
        {"quotes that open and do not close", " 'a", " [b]"},
        {"doubled quotes", " \"\"\"a[b]", ""},
        {"a run of quotes", "\"", " [b]"},
        {"words behind each other", "a.b ", "[b]"},
        {"blanks behind names", "[a]    ", ""},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(staysInProportion(500, [&](std::size_t size) {
            return scanOf(calculation("[Sales]" + repeated(row.piece, size) + row.end));
        }));
    }
}

TEST(LeakScanGrowth, FollowsTheNumberOfObjectsThatOneNameStandsFor) {
    EXPECT_TRUE(staysInProportion(250, [](std::size_t size) {
        return scanOf(repeated("<queryItem name='a'/>", size) +
                      calculation(repeated("[a] ", size)));
    }));
}

TEST(LeakScanGrowth, FollowsTheNumberOfObjectsThatLeak) {
    EXPECT_TRUE(staysInProportion(250, [](std::size_t size) {
        return scanOf(
            textOfEach(size, [](auto const& n) { return "<queryItem name='a" + n + "'/>"; }) +
            calculation(textOfEach(size, [](auto const& n) { return "[a" + n + "] "; })));
    }));
}

} // namespace

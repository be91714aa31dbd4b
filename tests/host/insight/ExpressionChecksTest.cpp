#include "tests/host/insight/FindingsOf.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> unknownIn(std::string const& attributes) {
    std::vector<std::string> texts;
    for (vex::Diagnostic const& each : vex::findingsOf(
             "<namespace name='Sales'><querySubject name='Orders'><queryItem name='Total'/>"
             "</querySubject>\n<filter id='x' name='Open' " +
             attributes + "/></namespace><dataSource name='warehouse'/>")) {
        if (each.rule == "unknown-name-in-expression") {
            texts.push_back(std::to_string(each.line) + ' ' + each.text);
        }
    }
    return texts;
}

TEST(ExpressionChecks, FindNamesThatNoObjectHas) {
    EXPECT_THAT(unknownIn("expression='[Sales].[Orders].[Totl] > [Gone]'"),
                ElementsAre("3 [Sales].[Open] names [Sales].[Orders].[Totl] in its expression, "
                            "which no object is called; [Sales].[Orders] exists",
                            "3 [Sales].[Open] names [Gone] in its expression, which no object is "
                            "called"));
    EXPECT_THAT(unknownIn("right='[Sales].[Ordrs]'").size(), 1);
}

TEST(ExpressionChecks, LetNamesBeRelative) {
    EXPECT_THAT(unknownIn("expression='[Orders].[Total] + [Total] + Orders[Total]'"), IsEmpty());
}

TEST(ExpressionChecks, LeaveAloneWhatIsNoNameOfAnObject) {
    EXPECT_THAT(unknownIn("expression='\"[a]\" = code[0] and [Total].&amp;[7]'"), IsEmpty());
    EXPECT_THAT(unknownIn("expression='[warehouse].[dbo].[ORDERS]'"), IsEmpty());
    EXPECT_THAT(unknownIn("expression='#sb($choice)# + [whatever]'"), IsEmpty());
    EXPECT_THAT(unknownIn("expression='add(\"Own\", 1) + [Own]'"), IsEmpty());
    EXPECT_THAT(unknownIn("screenTip='[sic]'"), IsEmpty());
}

} // namespace

#include "tests/host/insight/FindingsOf.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using vex::notesOf;
using vex::warningsOf;

constexpr char const* views = "<securityView id='v'><set kind='included'><item>n</item></set>"
                              "</securityView>";

TEST(IdentityChecks, FindAnObjectWithoutANameInAnyLanguage) {
    EXPECT_THAT(warningsOf("<namespace name='A'>\n<folder id='f'>\n<queryItem name=''/></folder>\n"
                           "<filter><property name='name' locale='de'/></filter></namespace>"),
                ElementsAre("untranslated-name@5", "object-without-name@3", "object-without-name@4",
                            "object-without-name@5"));
}

TEST(IdentityChecks, LeaveClassesOfTheModelsOwnAlone) {
    EXPECT_THAT(warningsOf("<namespace name='A'><x/><relationship/></namespace>"), IsEmpty());
}

TEST(IdentityChecks, LeaveAnObjectWithANameInOneLanguageToTheTranslators) {
    EXPECT_THAT(warningsOf("<namespace name='A'>\n<folder><property name='name' locale='ja'>f"
                           "</property></folder></namespace>"),
                ElementsAre("untranslated-name@3"));
}

TEST(IdentityChecks, NoteAnObjectWithoutAnIdWhereThereAreViews) {
    std::string const model = "<namespace id='n' name='A'>\n<folder name='f'/></namespace>\n";
    EXPECT_THAT(notesOf(model + views), Contains("object-without-id@3"));
    EXPECT_THAT(notesOf(model), Not(Contains("object-without-id@3")));
}

} // namespace

#include "host/insight/Verification.h"

#include "host/import/xml/ModelLoader.h"
#include "tests/support/Casts.h"

#include <gtest/gtest.h>

namespace {

using vex::DifferenceCause;

vex::UserVerification found(std::vector<DifferenceCause> const& causes, std::size_t leaks = 0) {
    vex::UserVerification user;
    for (DifferenceCause const cause : causes) {
        user.differences.push_back({{}, true, cause});
    }
    user.leaks.resize(leaks);
    return user;
}

TEST(Verification, IsCleanWhenEachUsersIs) {
    EXPECT_TRUE(vex::Verification{}.isClean());
    EXPECT_TRUE((vex::Verification{{found({}), found({})}}.isClean()));
    EXPECT_FALSE((vex::Verification{{found({}), found({}, 1)}}.isClean()));
}

TEST(Verification, IsCleanWithDifferencesThatAreRequired) {
    EXPECT_TRUE(found({DifferenceCause::Start, DifferenceCause::WithoutName}).isClean());
    EXPECT_FALSE(found({DifferenceCause::Start, DifferenceCause::Unexplained}).isClean());
}

TEST(Verification, CountsRequiredAndUnexplainedDifferencesApart) {
    auto const user = found(
        {DifferenceCause::Start, DifferenceCause::Unexplained, DifferenceCause::BehindShortcut});
    EXPECT_EQ(user.requiredDifferences(), 2U);
    EXPECT_EQ(user.unexplainedDifferences(), 1U);
}

TEST(Verification, IsCleanWhenTreesAndCheckAreBothRefused) {
    EXPECT_TRUE(vex::tellRefusal("nora", true, "No view.").isClean());
    EXPECT_FALSE(vex::tellRefusal("nora", false, "No view.").isClean());
}

TEST(Verification, TellsWhatACheckFoundByWhatObjectsAreKnownBy) {
    auto const model = vex::loadModelText(casts::bilingualShop, "m.model.xml");
    VEX_HANDLE const folder = model->findById("f");
    VEX_HANDLE const filter = model->GetObjectByReference("[Sales].[Open]", 0);
    vex::TreeCheck check;
    check.objects = 12;
    check.leaks = {{folder, "note", filter, "[Sales].[Open]"}};
    check.differences = {{filter, true, DifferenceCause::Start},
                         {folder, false, DifferenceCause::NotGoneInto}};
    auto const told = vex::tellCheck("ann", check, *model, I18NLocale("de"));
    EXPECT_EQ(told.user, "ann");
    EXPECT_EQ(told.refusal, "");
    EXPECT_EQ(told.objects, 12U);
    ASSERT_EQ(told.leaks.size(), 1U);
    EXPECT_EQ(vex::describeObject(told.leaks[0].object), "folder \"Fakten\" (f)");
    EXPECT_EQ(told.leaks[0].property, "note");
    EXPECT_EQ(told.leaks[0].reference, "[Sales].[Open]");
    EXPECT_EQ(told.leaks[0].named.key(), "[Sales].[Open]");
    ASSERT_EQ(told.differences.size(), 2U);
    EXPECT_EQ(vex::describeObject(told.differences[0].object), "filter \"Open\"");
    EXPECT_TRUE(told.differences[0].inTree);
    EXPECT_EQ(told.differences[0].cause, DifferenceCause::Start);
    EXPECT_FALSE(told.differences[1].inTree);
}

TEST(Verification, IsNeitherCleanNorFinishedWhenACheckDidNotComeToItsEnd) {
    auto const user = vex::tellUnfinished("ann", "too large");
    EXPECT_FALSE(user.isClean());
    EXPECT_FALSE(user.isCompared());
    EXPECT_FALSE((vex::Verification{{found({}), user}}.isFinished()));
    EXPECT_TRUE((vex::Verification{{found({})}}.isFinished()));
    EXPECT_FALSE(vex::tellRefusal("nora", true, "No view.").isCompared());
}

} // namespace

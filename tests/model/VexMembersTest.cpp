#include "model/VexMembers.h"

#include "tests/support/TestModel.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// 40 times "<a/><b/><a/><b/><c/>": the classes change with every child.
std::string manyRuns() {
    std::string text = "<model id='m'><namespace id='n'>";
    for (int number = 0; number < 40; ++number) {
        std::string const id = std::to_string(number);
        text +=
            "<a id='a" + id + "'/><b id='b" + id + "'/><a id='x" + id + "'/><c id='c" + id + "'/>";
    }
    return text + "</namespace></model>";
}

std::vector<std::string> idsOf(TestModel const& model, Vex_Handle_Collection const& objects) {
    std::vector<std::string> ids;
    for (VEX_HANDLE const object : objects) {
        I18NString id;
        model.GetId(object, id);
        ids.push_back(id.toUtf8());
    }
    return ids;
}

} // namespace

TEST(VexMembers, AnswersTheFirstQuestionAsTheHundredth) {
    TestModel const model(manyRuns().c_str());
    std::vector<std::string> expected;
    for (int number = 0; number < 40; ++number) {
        expected.push_back("a" + std::to_string(number));
        expected.push_back("x" + std::to_string(number));
    }
    VexMembers members;
    members.read(model.byId("n"));
    for (int question = 0; question < 100; ++question) {
        Vex_Handle_Collection found;
        members.appendOfClass("a", found);
        EXPECT_EQ(idsOf(model, found), expected) << question;
        Vex_Handle_Collection others;
        members.appendOfClass("b", others);
        EXPECT_EQ(others.size(), 40U);
        members.appendOfClass("nothing", others);
        members.appendOfClass("", others);
        EXPECT_EQ(others.size(), 40U);
    }
}

TEST(VexMembers, ForgetsTheMembersOfTheObjectBefore) {
    TestModel const model(manyRuns().c_str());
    VexMembers members;
    members.read(model.byId("n"));
    Vex_Handle_Collection found;
    for (int question = 0; question < 20; ++question) {
        members.appendOfClass("c", found);
    }
    EXPECT_EQ(found.size(), 20U * 40U);
    members.read(model.byId("a1"));
    found.clear();
    members.appendOfClass("c", found);
    EXPECT_TRUE(found.empty());
}

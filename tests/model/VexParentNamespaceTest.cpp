#include "model/VexParentNamespace.h"

#include "VexObject.h"
#include "tests/support/TestModel.h"

#include <gtest/gtest.h>

namespace {

class ParentNamespace : public testing::Test {
protected:
    std::string around(char const* id) {
        VEX_HANDLE const found = FindParentNamespace(model.byId(id));
        I18NString text("none");
        if (found.IsNotNull()) {
            VexObject(found).GetId(text);
        }
        return text.toUtf8();
    }

    TestModel model{R"(
        <model id="m"><namespace id="root"><folder id="top"/>
          <namespace id="n"><folder id="f"><filter id="x"/></folder></namespace>
        </namespace></model>)"};
};

TEST_F(ParentNamespace, IsTheNearestAboveAnElement) {
    EXPECT_EQ(around("x"), "n");
    EXPECT_EQ(around("f"), "n");
    EXPECT_EQ(around("top"), "root");
}

TEST_F(ParentNamespace, IsNeverTheElementItself) {
    EXPECT_EQ(around("n"), "root");
    EXPECT_EQ(around("root"), "none");
    EXPECT_EQ(around("m"), "none");
}

TEST_F(ParentNamespace, IsNullForTheNullHandle) {
    EXPECT_FALSE(FindParentNamespace(VEX_HANDLE()).IsNotNull());
}

} // namespace

#include "VexModel.h"

#include "KRLException.h"
#include "VexObject.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

std::string complaintAbout(char const* document) {
    try {
        VexModel::readText(document, "here.xml");
    } catch (KRLDocumentException const& problem) {
        return problem.what();
    }
    return "nothing was raised";
}

TEST(ReadModel, AnswersAsTheStoreOfASession) {
    auto const model =
        VexModel::readText("<model id='m'><namespace id='n' name='N'/></model>", "here.xml");
    VEX_HANDLE const found = model->store().GetObjectByReference("[N]", 0);
    EXPECT_EQ(found, model->findById("n"));
    EXPECT_EQ(VexObject(found).GetParent(), model->store().GetRootObject());
    EXPECT_EQ(model->elementCount(), 2U);
    EXPECT_GT(model->byteCount(), 0U);
    I18NString reference;
    EXPECT_TRUE(model->getReference(found, reference));
    EXPECT_EQ(reference, "[N]");
    EXPECT_FALSE(model->getReference(VEX_HANDLE(1), reference));
    EXPECT_FALSE(model->findById("x").IsNotNull());
}

TEST(ReadModel, SaysWhereADocumentIsWrong) {
    EXPECT_THAT(complaintAbout("<model>\n<namespace id='a'/><namespace id='a'/></model>"),
                HasSubstr("here.xml:2:"));
    EXPECT_THAT(complaintAbout("<model>"), HasSubstr("here.xml:"));
    EXPECT_THROW(VexModel::readFile("/nowhere.xml"), KRLDocumentException);
}

TEST(ReadModel, NamesNothingOnceItIsGone) {
    auto model = VexModel::readText("<model><namespace id='n'/></model>", "here.xml");
    VEX_HANDLE const handle = model->findById("n");
    EXPECT_TRUE(VexObject(handle).IsValid());
    model.reset();
    EXPECT_FALSE(VexObject(handle).IsValid());
}

} // namespace

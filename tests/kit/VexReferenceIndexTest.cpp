#include "VexReferenceIndex.h"

#include "VexModel.h"
#include "VexObject.h"
#include "tests/platform/objects/PlatformFakes.h"

#include <gtest/gtest.h>

namespace {

/// Every element below an object, itself first.
void listElements(VEX_HANDLE object, Vex_Handle_Collection& found) {
    found.push_back(object);
    Vex_Handle_Collection members;
    VexObject(object).childObjects(members, nullptr, nullptr);
    for (VEX_HANDLE const member : members) {
        listElements(member, found);
    }
}

/// An index of a model, beside the model's own answers.
struct Indexed {
    explicit Indexed(std::shared_ptr<VexModel const> loaded)
        : model(std::move(loaded)), index(model->store().GetRootObject(), model->defaultLocale()) {}

    std::shared_ptr<VexModel const> model;
    VexReferenceIndex index;
};

Indexed indexed(char const* members) {
    return Indexed(VexModel::readText(
        std::string("<model defaultLocale='en'>") + members + "</model>", "test"));
}

TEST(ReferenceIndex, FindsWhatTheReadersModelFinds) {
    for (char const* const file : {"/samples/retail.model.xml", "/tests/fixtures/shop.model.xml",
                                   "/tests/fixtures/shortcuts.model.xml"}) {
        Indexed const on(VexModel::readFile(std::string(VEX_SOURCE_DIR) + file));
        Vex_Handle_Collection elements;
        listElements(on.model->store().GetRootObject(), elements);
        ASSERT_EQ(elements.size(), on.model->elementCount());
        std::size_t named = 0;
        for (VEX_HANDLE const element : elements) {
            I18NString expected;
            I18NString reference;
            ASSERT_EQ(on.index.getReference(element, reference),
                      on.model->getReference(element, expected));
            EXPECT_EQ(reference, expected);
            if (!reference.empty()) {
                ++named;
                EXPECT_EQ(on.index.find(reference),
                          on.model->store().GetObjectByReference(reference, 0))
                    << reference.c_str();
            }
        }
        EXPECT_GT(named, 5U) << file;
    }
}

TEST(ReferenceIndex, LeavesFoldersOutButNotTheFolderItself) {
    Indexed const on = indexed(R"(<namespace id="n" name="N"><folder id="f" name="F">
        <querySubject id="q" name="Q"><queryItemFolder id="d" name="D">
        <queryItem id="i" name="I"/></queryItemFolder></querySubject></folder></namespace>)");
    EXPECT_EQ(on.index.find("[N].[F]"), on.model->findById("f"));
    EXPECT_EQ(on.index.find("[N].[Q].[D]"), on.model->findById("d"));
    EXPECT_EQ(on.index.find(" [N] . [Q].[I]"), on.model->findById("i"));
    EXPECT_FALSE(on.index.find("[N].[F].[Q]").IsNotNull());
}

TEST(ReferenceIndex, GivesTheFirstOfSeveralInDocumentOrder) {
    Indexed const on = indexed(R"(<namespace id="n" name="N"><folder id="f" name="F">
        <filter id="one" name="X"/></folder><filter id="two" name="X"/></namespace>)");
    EXPECT_EQ(on.index.find("[N].[X]"), on.model->findById("one"));
}

TEST(ReferenceIndex, FindsWhatStandsBehindEachOfSeveralOfOneReference) {
    Indexed const on = indexed(R"(<namespace id="n" name="N"><folder id="f" name="F">
        <querySubject id="q" name="F"><queryItem id="a" name="A"/></querySubject></folder>
        <querySubject id="p" name="F"><queryItem id="b" name="B"/>
        <queryItem id="c" name="A"/></querySubject></namespace>)");
    EXPECT_EQ(on.index.find("[N].[F]"), on.model->findById("f"));
    EXPECT_EQ(on.index.find("[N].[F].[A]"), on.model->findById("a"));
    EXPECT_EQ(on.index.find("[N].[F].[B]"), on.model->findById("b"));
}

/// Folders of one name, each in the one before it, the outermost in a namespace; counts
/// what it is asked.
class NestedFolders final : public FakeModel {
public:
    using FakeModel::FakeModel;
    bool GetName(VEX_HANDLE object, I18NString& name) const override {
        ++m_asked;
        name = object == At(0) ? "namespace" : "folder";
        return true;
    }
    VEX_HANDLE GetParent(VEX_HANDLE object) const override {
        ++m_asked;
        return object == At(0) ? VEX_HANDLE() : VEX_HANDLE(object.Number() - 1);
    }
    VEX_HANDLE GetPropertyByName(VEX_HANDLE object, I18NString const&,
                                 I18NLocale const*) const override {
        ++m_asked;
        return object;
    }
    bool childObjects(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const*,
                      I18NString const*) const override {
        VEX_HANDLE const inside(object.Number() + 1);
        if (IsObject(inside)) {
            found.push_back(inside);
        }
        return true;
    }
    mutable std::size_t m_asked = 0;
};

TEST(ReferenceIndex, AsksAsManyTimesAsThereAreElementsHoweverTheyNest) {
    constexpr std::uint32_t count = 2'000;
    NestedFolders const folders(count);
    VexReferenceIndex const index(folders.At(0), I18NLocale("en"));
    EXPECT_LE(folders.m_asked, 4 * count);
    folders.m_asked = 0;
    EXPECT_EQ(index.find("[x].[x]"), folders.At(1));
    EXPECT_LE(folders.m_asked, 4U);
}

TEST(ReferenceIndex, BeginsAnewAtEachNamespace) {
    Indexed const on = indexed(R"(<namespace name="A"><namespace id="b" name="B">
        <filter id="x" name="X"/></namespace></namespace>)");
    EXPECT_EQ(on.index.find("[B]"), on.model->findById("b"));
    EXPECT_EQ(on.index.find("[B].[X]"), on.model->findById("x"));
    EXPECT_FALSE(on.index.find("[A].[B]").IsNotNull());
}

TEST(ReferenceIndex, CountsAMissingNameAsTheEmptyOne) {
    Indexed const on = indexed(R"(<namespace name="N"><filter id="x"/></namespace>)");
    EXPECT_EQ(on.index.find("[N].[]"), on.model->findById("x"));
}

TEST(ReferenceIndex, ReadsNamesInTheModelsLanguage) {
    Indexed const on =
        indexed(R"(<namespace id="n"><property name="name" locale="de">Laden</property>
        <property name="name" locale="en">Shop</property></namespace>)");
    EXPECT_EQ(on.index.find("[Shop]"), on.model->findById("n"));
    EXPECT_FALSE(on.index.find("[Laden]").IsNotNull());
}

TEST(ReferenceIndex, FindsNothingOutsideOfNamespacesOrForATextThatDoesNotSplit) {
    Indexed const on = indexed(R"(<folder id="f" name="F"/><namespace name="N"/>)");
    for (char const* const text : {"[F]", "[]", "", "N", "[N", "[N].[F]"}) {
        EXPECT_FALSE(on.index.find(text).IsNotNull()) << text;
    }
    I18NString reference("kept");
    EXPECT_FALSE(on.index.getReference(on.model->findById("f"), reference));
    EXPECT_FALSE(on.index.getReference(VEX_HANDLE(), reference));
    EXPECT_EQ(reference, "kept");
    EXPECT_FALSE(VexReferenceIndex().find("[N]").IsNotNull());
}

TEST(ReferenceIndex, DoublesABracketInAName) {
    Indexed const on = indexed(R"(<namespace id="n" name="a]b"/>)");
    I18NString reference;
    EXPECT_TRUE(on.index.getReference(on.model->findById("n"), reference));
    EXPECT_EQ(reference, "[a]]b]");
    EXPECT_EQ(on.index.find(reference), on.model->findById("n"));
}

} // namespace

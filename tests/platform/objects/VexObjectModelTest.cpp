#include "KRLException.h"
#include "VexObject.h"
#include "tests/platform/objects/PlatformFakes.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>

namespace {

constexpr std::uint32_t pageSize = 1U << VexObjectDirectory::PageBits;

/// Takes every handle that it is asked about for one of its objects.
class TrustingModel final : public FakeModel {
public:
    using FakeModel::FakeModel;
    bool IsObject(VEX_HANDLE object) const override {
        m_wasAskedOutside = m_wasAskedOutside || !Holds(object);
        return true;
    }
    mutable bool m_wasAskedOutside = false;
};

TEST(VexObjectModel, NeverGivesOutHandleZero) {
    FakeModel const model(1);
    EXPECT_GE(model.First(), pageSize);
    EXPECT_EQ(model.First() % pageSize, 0U);
    EXPECT_EQ(VexObjectDirectory::Find(VEX_HANDLE()), nullptr);
}

TEST(VexObjectModel, IsFoundByEveryHandleOfItsOwn) {
    FakeModel const one(pageSize + 1);
    FakeModel const other(1);
    for (std::uint32_t index : {0U, pageSize - 1, pageSize}) {
        EXPECT_EQ(VexObjectDirectory::Find(one.At(index)), &one);
        EXPECT_TRUE(VexObject(one.At(index)).IsValid());
    }
    EXPECT_EQ(VexObjectDirectory::Find(other.At(0)), &other);
    EXPECT_FALSE(VexObject(one.At(pageSize + 1)).IsValid());
    EXPECT_FALSE(VexObject(other.At(1)).IsValid());
}

TEST(VexObjectModel, IsAskedAboutHandlesOfItsOwnRangeOnly) {
    TrustingModel const model(2);
    EXPECT_TRUE(VexObject(model.At(1)).IsValid());
    for (std::uint32_t const index : {2U, pageSize - 1}) {
        EXPECT_FALSE(VexObject(model.At(index)).IsValid());
    }
    EXPECT_FALSE(model.m_wasAskedOutside);
}

TEST(VexObjectModel, TakesAPageEvenWithoutObjects) {
    FakeModel const none(0);
    FakeModel const next(1);
    EXPECT_EQ(next.First() - none.First(), pageSize);
    EXPECT_FALSE(VexObject(none.At(0)).IsValid());
}

TEST(VexObjectModel, LeavesItsHandlesToNobodyWhenItGoes) {
    auto model = std::make_unique<FakeModel>(10);
    VEX_HANDLE const handle = model->At(3);
    EXPECT_TRUE(VexObject(handle).IsValid());
    model.reset();
    EXPECT_FALSE(VexObject(handle).IsValid());
    FakeModel const later(10);
    EXPECT_FALSE(VexObject(handle).IsValid());
    EXPECT_GT(later.First(), handle.Number());
}

TEST(VexObjectModel, TakesItsHandlesOnce) {
    /// Asks a second time.
    class Greedy final : public FakeModel {
    public:
        Greedy() : FakeModel(1) {}
        void more() { TakeHandles(pageSize); }
    };
    Greedy greedy;
    VEX_HANDLE const handle = greedy.At(0);
    EXPECT_THROW(greedy.more(), KRLException);
    EXPECT_EQ(greedy.At(0), handle);
    FakeModel const next(1);
    EXPECT_EQ(next.First() - greedy.First(), pageSize); // nothing was taken in between
}

TEST(VexObjectModel, RefusesMoreHandlesThanThereAre) {
    EXPECT_EXIT(
        {
            std::uint32_t const all = 1U << 31U;
            try {
                FakeModel const model(all);
            } catch (KRLLimitException const&) {
                FakeModel const fits(all / 2);
                try {
                    FakeModel const second(all / 2);
                } catch (KRLLimitException const& failure) {
                    std::fputs(failure.what(), stderr);
                    std::exit(7);
                }
            }
        },
        testing::ExitedWithCode(7), "has handles for [0-9]+ more");
}

TEST(VexObject, GivesNothingOnAHandleThatNamesNothing) {
    for (VEX_HANDLE const handle : {VEX_HANDLE(), VEX_HANDLE(5), VEX_HANDLE(0x7FFF'FFFFU),
                                    VEX_HANDLE(0x8000'0000U), VEX_HANDLE(0xFFFF'FFFFU)}) {
        VexObject const object(handle, nullptr);
        I18NString text("kept");
        Vex_Handle_Collection found;
        EXPECT_FALSE(object.IsValid());
        EXPECT_FALSE(object.GetId(text));
        EXPECT_FALSE(object.GetName(text));
        EXPECT_FALSE(object.GetClass(text));
        EXPECT_FALSE(object.GetRole(text));
        EXPECT_FALSE(object.GetValue(text, true));
        EXPECT_EQ(text, "kept");
        EXPECT_EQ(object.GetLocale(), nullptr);
        EXPECT_FALSE(object.GetParent().IsNotNull());
        EXPECT_FALSE(object.GetPropertyByName("name", nullptr).IsNotNull());
        EXPECT_FALSE(object.GetPropertyByRole("role", nullptr).IsNotNull());
        VexTextMatch match = VexTextMatch::Same;
        EXPECT_EQ(VexObject::FindPropertyValue({&handle, 1}, "name", nullptr, "", match), 0U);
        EXPECT_EQ(match, VexTextMatch::NoText);
        EXPECT_FALSE(object.Properties(found, nullptr, nullptr, false));
        EXPECT_FALSE(object.childObjects(found, nullptr, nullptr));
        EXPECT_FALSE(object.getElementsByTagName("folder", found));
        EXPECT_TRUE(found.empty());
        EXPECT_FALSE(object.hasChildObjects());
        EXPECT_FALSE(object.hasProperties());
    }
}

TEST(VexObject, AsksItsModel) {
    FakeModel const model(2);
    VexObject const object(model.At(1));
    I18NString text;
    Vex_Handle_Collection found;
    EXPECT_TRUE(object.GetId(text));
    EXPECT_TRUE(object.GetName(text));
    EXPECT_TRUE(object.GetClass(text));
    EXPECT_TRUE(object.GetRole(text));
    EXPECT_TRUE(object.GetValue(text, false));
    EXPECT_EQ(text, "x");
    EXPECT_NE(object.GetLocale(), nullptr);
    EXPECT_TRUE(object.GetParent() == model.At(0));
    EXPECT_TRUE(object.GetPropertyByName("name", nullptr) == model.At(0));
    EXPECT_TRUE(object.GetPropertyByRole("role", nullptr) == model.At(0));
    EXPECT_TRUE(object.Properties(found, nullptr, nullptr, false));
    EXPECT_TRUE(object.childObjects(found, nullptr, nullptr));
    EXPECT_TRUE(object.getElementsByTagName("folder", found));
    EXPECT_EQ(found.size(), 3U);
    EXPECT_TRUE(object.hasChildObjects());
    EXPECT_TRUE(object.hasProperties());
}

} // namespace

#include "KRLException.h"
#include "VexObject.h"
#include "tests/platform/objects/PlatformFakes.h"

#include <memory>
#include <span>
#include <unordered_set>
#include <utility>
#include <vector>

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

TEST(VexHandle, IsAValueWithZeroNamingNothing) {
    EXPECT_FALSE(VEX_HANDLE().IsNotNull());
    EXPECT_FALSE(ConvertFromInt(0).IsNotNull());
    EXPECT_TRUE(ConvertFromInt(0) == VEX_HANDLE());
    EXPECT_TRUE(VEX_HANDLE() == 0);
    VEX_HANDLE const handle(4'097);
    EXPECT_TRUE(handle.IsNotNull());
    EXPECT_TRUE(handle != 0);
    EXPECT_EQ(Convert2Int(handle), 4'097);
    EXPECT_TRUE(ConvertFromInt(Convert2Int(handle)) == handle);
    EXPECT_TRUE(handle != VEX_HANDLE(4'098));
    std::unordered_set<VEX_HANDLE> const set{handle, VEX_HANDLE(4'097)};
    EXPECT_EQ(set.size(), 1U);
}

TEST(VexHandle, SurvivesTheTripThroughANegativeInt) {
    VEX_HANDLE const high(0xFFFF'FFFFU);
    EXPECT_EQ(Convert2Int(high), -1);
    EXPECT_TRUE(ConvertFromInt(-1) == high);
}

TEST(VexHandleCollection, GivesTheNullHandlePastTheEnd) {
    Vex_Handle_Collection handles;
    EXPECT_TRUE(handles.empty());
    EXPECT_FALSE(handles[0].IsNotNull());
    handles.push_back(VEX_HANDLE(7));
    EXPECT_TRUE(handles[0] == VEX_HANDLE(7));
    EXPECT_FALSE(handles[1].IsNotNull());
    VEX_HANDLE* const more = handles.extend(2);
    more[1] = VEX_HANDLE(9);
    EXPECT_EQ(handles.size(), 3U);
    EXPECT_FALSE(handles[1].IsNotNull());
    EXPECT_TRUE(handles[2] == VEX_HANDLE(9));
    Vex_Handle_Collection other;
    other.swap(handles);
    EXPECT_EQ(other.size(), 3U);
    EXPECT_TRUE(handles.empty());
}

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

/// What an object's value of the property "name" is to the text.
VexTextMatch matchOf(VEX_HANDLE object, char const* text) {
    VexTextMatch match = VexTextMatch::Same;
    VexObject::FindPropertyValue({&object, 1}, "name", nullptr, text, match);
    return match;
}

TEST(VexObject, MatchesTheValueThatItsModelGives) {
    FakeModel const model(2);
    EXPECT_EQ(matchOf(model.At(1), "x"), VexTextMatch::Same);
    EXPECT_EQ(matchOf(model.At(1), "xx"), VexTextMatch::Different);
    EXPECT_EQ(matchOf(model.At(1), ""), VexTextMatch::Different);
}

TEST(VexObject, MatchesNothingWithoutTheProperty) {
    /// Has no properties at all.
    class Bare final : public FakeModel {
    public:
        using FakeModel::FakeModel;
        VEX_HANDLE GetPropertyByName(VEX_HANDLE, I18NString const&,
                                     I18NLocale const*) const override {
            return {};
        }
    };
    Bare const model(1);
    EXPECT_EQ(matchOf(model.At(0), ""), VexTextMatch::NoText);
}

/// Has properties, none with a value.
class MuteModel final : public FakeModel {
public:
    using FakeModel::FakeModel;
    bool GetValue(VEX_HANDLE, I18NString&, bool) const override { return false; }
};

TEST(VexObject, MatchesNothingWithoutAValue) {
    MuteModel const model(1);
    EXPECT_EQ(matchOf(model.At(0), ""), VexTextMatch::NoText);
}

/// A row of objects with the values 0, 1, 2, 0, 1, 2 ..., each of which holds itself and
/// lies in the one before it when `nests`.
class Row final : public FakeModel {
public:
    explicit Row(std::uint32_t count, bool nests = false) : FakeModel(count), m_nests(nests) {}
    VEX_HANDLE GetPropertyByName(VEX_HANDLE object, I18NString const& name,
                                 I18NLocale const*) const override {
        return name == "number" ? object : VEX_HANDLE();
    }
    bool GetValue(VEX_HANDLE object, I18NString& text, bool) const override {
        text = std::to_string((object.Number() - At(0).Number()) % 3).c_str();
        return true;
    }
    VEX_HANDLE GetParent(VEX_HANDLE object) const override {
        return m_nests && object != At(0) ? VEX_HANDLE(object.Number() - 1) : VEX_HANDLE();
    }
    bool getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                              Vex_Handle_Collection& found) const override {
        if (tag == "itself") {
            found.push_back(object);
        }
        return true;
    }

private:
    bool m_nests;
};

/// How many elements are found within the objects whose "number" is the text.
Vex_Handle_Collection within(std::vector<VEX_HANDLE> const& objects, char const* text,
                             char const* name = "number", char const* tag = "itself") {
    Vex_Handle_Collection found;
    VexObject::FindElementsWithin(objects, name, nullptr, text, tag, found);
    return found;
}

TEST(VexObject, FindsElementsWithinTheObjectsThatHaveOneText) {
    Row const one(4);
    Row const other(3);
    std::vector<VEX_HANDLE> objects{one.At(0), one.At(1),   one.At(2), one.At(3), VEX_HANDLE(),
                                    one.At(4), other.At(1), one.At(1)}; // the fifth is past the end
    Vex_Handle_Collection const found = within(objects, "1");
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0], one.At(1));
    EXPECT_EQ(found[1], other.At(1));
    EXPECT_EQ(found[2], one.At(1));
    EXPECT_EQ(within(objects, "0").size(), 2U);
    EXPECT_TRUE(within(objects, "3").empty());
    EXPECT_TRUE(within(objects, "1", "nothing").empty());
    EXPECT_TRUE(within(objects, "1", "number", "another").empty());
    EXPECT_TRUE(within({}, "1").empty());
    MuteModel const mute(1);
    EXPECT_TRUE(within({mute.At(0)}, "").empty());
}

TEST(VexObject, FindsNothingTwiceWithinObjectsThatStandInsideEachOther) {
    Row const row(7, true);
    std::vector<VEX_HANDLE> objects;
    for (std::uint32_t i = 0; i < 7; ++i) {
        objects.push_back(row.At(i));
    }
    Vex_Handle_Collection const found = within(objects, "1"); // the second, and the fifth in it
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0], row.At(1));
    EXPECT_EQ(within({row.At(4), row.At(1)}, "1").size(), 2U);
}

TEST(VexObject, FindsAValueAmongObjectsOfSeveralModels) {
    /// Has one value, another for each model.
    class Told final : public FakeModel {
    public:
        Told(std::uint32_t count, char const* value) : FakeModel(count), m_value(value) {}
        bool GetValue(VEX_HANDLE, I18NString& text, bool) const override {
            text = m_value;
            return true;
        }

    private:
        char const* m_value;
    };
    Told const one(100, "1");
    Told const other(2, "2");
    MuteModel const mute(1);
    std::vector<VEX_HANDLE> objects;
    for (std::uint32_t i = 0; i < 100; ++i) { // more than are handed over at once
        objects.push_back(one.At(i));
    }
    objects.push_back(other.At(0));
    objects.push_back(mute.At(0));
    objects.push_back(one.At(100)); // past the model's range
    auto const find = [&](std::size_t from, char const* text) {
        VexTextMatch match = VexTextMatch::Different;
        std::size_t const before = VexObject::FindPropertyValue(
            std::span<VEX_HANDLE const>(objects).subspan(from), "name", nullptr, text, match);
        return std::pair(before, match);
    };
    EXPECT_EQ(find(0, "1"), std::pair(std::size_t{0}, VexTextMatch::Same));
    EXPECT_EQ(find(0, "2"), std::pair(std::size_t{100}, VexTextMatch::Same));
    EXPECT_EQ(find(0, "3"), std::pair(std::size_t{101}, VexTextMatch::NoText));
    EXPECT_EQ(find(102, "3"), std::pair(std::size_t{0}, VexTextMatch::NoText));
    objects.resize(101);
    EXPECT_EQ(find(0, "3"), std::pair(std::size_t{101}, VexTextMatch::Different));
    EXPECT_EQ(find(101, "3"), std::pair(std::size_t{0}, VexTextMatch::Different));
}

} // namespace

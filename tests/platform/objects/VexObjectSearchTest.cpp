#include "VexObject.h"
#include "tests/platform/objects/PlatformFakes.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

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

TEST(VexObject, HasNoSetOfTextsReadyUnlessItsModelSaysSo) {
    class NoTexts final : public VexTextSet {
    public:
        bool contains(I18NString const&) const override { return false; }
        std::size_t size() const override { return 0; }
        void appendTo(std::vector<std::u16string_view>&) const override {}
    };
    /// Tells what it was asked for.
    class Told final : public FakeModel {
    public:
        using FakeModel::FakeModel;
        std::shared_ptr<VexTextSet const> FindTextSet(VEX_HANDLE object, I18NString const& within,
                                                      I18NString const& name,
                                                      I18NString const& text,
                                                      I18NString const& tag) const override {
            asked = std::to_string(object.Number() - At(0).Number()) + ' ' + within.toUtf8() + ' ' +
                    name.toUtf8() + ' ' + text.toUtf8() + ' ' + tag.toUtf8();
            return std::make_shared<NoTexts>();
        }
        mutable std::string asked;
    };
    auto const find = [](VEX_HANDLE object) {
        return VexObject(object).FindTextSet("set", "kind", "included", "item");
    };
    FakeModel const silent(2);
    EXPECT_EQ(find(silent.At(1)), nullptr);
    EXPECT_EQ(find(VEX_HANDLE()), nullptr);
    Told const model(2);
    EXPECT_NE(find(model.At(1)), nullptr);
    EXPECT_EQ(model.asked, "1 set kind included item");
    EXPECT_EQ(find(model.At(2)), nullptr); // past the end
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

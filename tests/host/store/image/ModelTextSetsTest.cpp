// The sets of texts that a model has ready, beside the texts as they are read.

#include "KRLException.h"
#include "host/store/image/Budget.h"
#include "host/store/image/ImageFile.h"
#include "tests/host/store/image/ModelProbe.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Probe = ModelProbe;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

struct Words {
    char const* within = "set";
    char const* name = "kind";
    char const* text = "included";
    char const* tag = "item";
};

std::shared_ptr<VexTextSet const> findSet(VEX_HANDLE object, Words const& words = {}) {
    return VexObject(object).FindTextSet(words.within, words.name, words.text, words.tag);
}

std::vector<std::string> textsOf(VexTextSet const& set) {
    std::vector<std::u16string_view> units;
    set.appendTo(units);
    EXPECT_EQ(units.size(), set.size());
    std::vector<std::string> texts;
    for (std::u16string_view const text : units) {
        texts.push_back(I18NString(text).toUtf8());
    }
    return texts;
}

std::vector<std::string> textsBelow(VEX_HANDLE object, Words const& words = {}) {
    std::shared_ptr<VexTextSet const> const set = findSet(object, words);
    return set == nullptr ? std::vector<std::string>{"(no set)"} : textsOf(*set);
}

/// The same texts, read as whoever has no set does.
std::set<std::string> readBelow(VEX_HANDLE object, Words const& words = {}) {
    Vex_Handle_Collection holders;
    VexObject(object).getElementsByTagName(words.within, holders);
    std::set<std::string> texts;
    for (VEX_HANDLE const holder : holders) {
        I18NString text;
        if (VexObject(VexObject(holder).GetPropertyByName(words.name, nullptr))
                .GetValue(text, true) &&
            text == words.text) {
            for (VEX_HANDLE const element : Probe::below(holder, words.tag)) {
                I18NString value;
                VexObject(element).GetValue(value, true);
                texts.insert(value.toUtf8());
            }
        }
    }
    return texts;
}

std::string itemsUpTo(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "<item>id." + std::to_string(i) + "</item>";
    }
    return text;
}

std::string viewOf(int count) {
    return "<model><securityView id='v'><set kind='included'>" + itemsUpTo(count) +
           "</set></securityView></model>";
}

/// How many steps of a budget that takes.
std::size_t stepsOf(auto const& work) {
    vex::Budget const budget({});
    work();
    return budget.stepsDone();
}

/// Elements of few classes that stand inside each other anyhow.
std::string randomTree(std::mt19937& random, int depth) {
    static char const* const tags[] = {"set", "item", "group", "securityView"};
    static char const* const kinds[] = {"", " kind='included'", " kind='excluded'", " kind=''",
                                        " other='included'"};
    std::string text;
    for (auto count = random() % 5; count != 0; --count) {
        std::string const tag = tags[random() % 4];
        text += "<" + tag + kinds[random() % 5] + ">";
        text += random() % 4 == 0 ? "" : "t" + std::to_string(random() % 12);
        if (random() % 8 == 0) {
            text += "<property name='kind' locale='de'>included</property>";
        }
        text += (depth == 0 ? "" : randomTree(random, depth - 1)) + "</" + tag + ">";
    }
    return text;
}

} // namespace

TEST(ModelTextSets, HoldTheValuesBelowThoseElementsThatHaveTheText) {
    Probe const probe(R"(<model id="m" defaultLocale="en"><securityView id="v">
        <set kind="included"><item>a</item><group><item>b</item></group><other>x</other></set>
        <group><set kind="included"><item>c</item></set></group>
        <set kind="excluded"><item>d</item></set>
        <set kind="Included"><item>e</item></set>
        <set><item>f</item></set>
        <set kind=""><item>g</item></set>
        <set><property name="kind" locale="de">included</property>
          <property name="kind" locale="en">excluded</property><item>h</item></set>
        <set><property name="kind">included</property><property name="kind">excluded</property>
          <item>i</item></set>
        <set><kind><item>j</item></kind></set>
        <item>k</item></securityView>
        <set kind="included"><item>l</item></set></model>)");
    EXPECT_THAT(textsBelow(probe.id("v")), UnorderedElementsAre("a", "b", "c", "i"));
    EXPECT_THAT(textsBelow(probe.id("v"), {.text = "excluded"}), UnorderedElementsAre("d", "h"));
    EXPECT_THAT(textsBelow(probe.id("v"), {.tag = "other"}), UnorderedElementsAre("x"));
    EXPECT_THAT(textsBelow(probe.id("v"), {.within = "group", .text = "included"}), IsEmpty());
    EXPECT_THAT(textsBelow(probe.root()), UnorderedElementsAre("a", "b", "c", "i", "l"));
    EXPECT_THAT(textsBelow(probe.id("v"), {.within = "nothing"}), IsEmpty());
    EXPECT_THAT(textsBelow(probe.id("v"), {.name = "nothing"}), IsEmpty());
    EXPECT_THAT(textsBelow(probe.id("v"), {.text = "nothing"}), IsEmpty());
    EXPECT_THAT(textsBelow(probe.id("v"), {.tag = "nothing"}), IsEmpty());
}

TEST(ModelTextSets, TakeWhatStandsInsideEachOtherOnceAndARepeatedTextOnce) {
    Probe const probe(R"(<model><securityView id="v"><set kind="included"><item>a</item>
        <set kind="excluded"><item>b</item><set kind="included"><item>c</item></set></set>
        <item>a</item><item> a </item></set></securityView></model>)");
    EXPECT_THAT(textsBelow(probe.id("v")), UnorderedElementsAre("a", "b", "c"));
    EXPECT_THAT(textsBelow(probe.id("v"), {.text = "excluded"}), UnorderedElementsAre("b", "c"));
}

TEST(ModelTextSets, HoldTheEmptyTextForAnElementWithoutAValue) {
    Probe const probe(R"(<model><securityView id="v"><set kind="included"><item/></set>
        <set kind="excluded"><item>a</item></set></securityView></model>)");
    EXPECT_TRUE(findSet(probe.id("v"))->contains(""));
    EXPECT_FALSE(findSet(probe.id("v"))->contains("a"));
    EXPECT_FALSE(findSet(probe.id("v"), {.text = "excluded"})->contains(""));
}

TEST(ModelTextSets, TellTextsApartByCaseLengthAndEveryCodeUnit) {
    Probe const probe("<model><securityView id='v'><set kind='included'><item>abcdefgh</item>"
                      "<item>\xF0\x9F\x98\x80</item></set></securityView></model>");
    std::shared_ptr<VexTextSet const> const set = findSet(probe.id("v"));
    EXPECT_TRUE(set->contains("abcdefgh"));
    EXPECT_TRUE(set->contains(I18NString(u"\U0001F600")));
    for (char const* const other :
         {"Abcdefgh", "abcdefgH", "abcdefg", "abcdefghi", "hgfedcba", "abcdabcd", " abcdefgh"}) {
        EXPECT_FALSE(set->contains(other)) << other;
    }
    EXPECT_FALSE(set->contains(I18NString(u"\U0001F601")));
    EXPECT_FALSE(set->contains(I18NString(u"abcdefgh\0", 9)));
}

TEST(ModelTextSets, AreOfElementsOnly) {
    Probe const probe(R"(<model><securityView id="v" name="x"><set kind="included">
        <item>a</item></set></securityView></model>)");
    EXPECT_EQ(findSet(Probe::property(probe.id("v"), "name")), nullptr);
    EXPECT_EQ(findSet(Probe::property(probe.id("v"), "set")), nullptr);
    EXPECT_EQ(findSet(VEX_HANDLE()), nullptr);
}

TEST(ModelTextSets, HoldWhatIsReadOnRandomModels) {
    std::mt19937 random(15);
    int compared = 0;
    for (int round = 0; round < 300; ++round) {
        Probe const probe("<model defaultLocale='en'>" + randomTree(random, 4) + "</model>");
        for (std::size_t number = 0; number < probe.model().elementCount(); ++number) {
            VEX_HANDLE const object = probe.model().getElement(number);
            for (char const* const text : {"included", "excluded"}) {
                std::shared_ptr<VexTextSet const> const set = findSet(object, {.text = text});
                if (set == nullptr) { // there are so many sets inside each other
                    continue;
                }
                std::set<std::string> const expected = readBelow(object, {.text = text});
                std::vector<std::string> const held = textsOf(*set);
                EXPECT_EQ(std::set<std::string>(held.begin(), held.end()), expected);
                EXPECT_EQ(held.size(), expected.size());
                for (int id = 0; id < 14; ++id) {
                    std::string const asked = id == 13 ? "" : "t" + std::to_string(id);
                    EXPECT_EQ(set->contains(asked.c_str()), expected.contains(asked));
                }
                compared += expected.empty() ? 0 : 1;
            }
        }
    }
    EXPECT_GT(compared, 500);
}

TEST(ModelTextSets, AreMadeOnceAndThenAskedForInOneStep) {
    Probe const probe(viewOf(10'000));
    std::shared_ptr<VexTextSet const> const set = findSet(probe.id("v"));
    EXPECT_EQ(set->size(), 10'000U);
    for (int again = 0; again < 3; ++again) {
        EXPECT_EQ(findSet(probe.id("v")), set);
    }
    EXPECT_EQ(stepsOf([&] { findSet(probe.id("v")); }), 1U);
    EXPECT_EQ(stepsOf([&] { findSet(probe.root()); }), 317U); // another one, made first
}

TEST(ModelTextSets, AreLeftUnmadeByALimitAndMadeAtTheNextQuestion) {
    Probe const probe(viewOf(10'000));
    Probe const alike(viewOf(10'000));
    std::size_t const needed = stepsOf([&] { findSet(alike.id("v")); });
    std::size_t const bytes = probe.model().byteCount();
    for (std::size_t steps : {std::size_t{0}, std::size_t{1}, needed / 2, needed - 1}) {
        vex::Budget const budget({.steps = steps});
        EXPECT_THROW(findSet(probe.id("v")), KRLLimitException) << steps;
        EXPECT_EQ(probe.model().byteCount(), bytes);
    }
    vex::Budget const budget({.steps = needed});
    EXPECT_EQ(findSet(probe.id("v"))->size(), 10'000U);
}

TEST(ModelTextSets, EndAtADeadlineAndWhenTheCallIsCancelled) {
    Probe const probe(viewOf(10'000));
    {
        vex::Budget const late({.deadline = std::chrono::steady_clock::time_point::min()});
        EXPECT_THROW(findSet(probe.id("v")), KRLLimitException);
    }
    {
        std::atomic<bool> const cancelled{true};
        vex::Budget const stopped({.cancelled = &cancelled});
        EXPECT_THROW(findSet(probe.id("v")), KRLLimitException);
    }
    EXPECT_EQ(findSet(probe.id("v"))->size(), 10'000U);
}

TEST(ModelTextSets, MayBeKeptForLongerThanTheirModel) {
    std::shared_ptr<VexTextSet const> set;
    {
        Probe const probe(viewOf(100));
        set = findSet(probe.id("v"));
    }
    EXPECT_TRUE(set->contains("id.99"));
    EXPECT_FALSE(set->contains("id.100"));
    EXPECT_EQ(textsOf(*set).size(), 100U);
}

TEST(ModelTextSets, OfAnImageAreThoseOfItsDocumentAndKeepItMapped) {
    std::string name = testing::TempDir() + "vex-sets-XXXXXX";
    std::filesystem::path const folder = ::mkdtemp(name.data());
    std::string const file = folder / "m.vexm";
    vex::writeImage(Probe(viewOf(1'000)).model(), file);
    std::shared_ptr<VexTextSet const> set;
    {
        auto const model = vex::openImage(file);
        set = findSet(model->findById("v"));
        EXPECT_EQ(findSet(model->findById("v")), set);
    }
    std::filesystem::remove_all(folder);
    std::vector<std::string> const held = textsOf(*set);
    EXPECT_EQ(std::set<std::string>(held.begin(), held.end()),
              readBelow(Probe(viewOf(1'000)).id("v")));
    EXPECT_TRUE(set->contains("id.999"));
    EXPECT_FALSE(set->contains("id.1000"));
}

TEST(ModelTextSets, TakeFewBytesForEachText) {
    Probe const probe(viewOf(100'000));
    std::size_t const before = probe.model().byteCount();
    findSet(probe.id("v"));
    EXPECT_LE(probe.model().byteCount() - before, 1'300'000U);
    EXPECT_GE(probe.model().byteCount() - before, 1'200'000U);
}

TEST(ModelTextSets, OfViewsInsideEachOtherTakeNoMoreThanTheModelHasElements) {
    std::string views;
    for (int depth = 0; depth < 100; ++depth) {
        views += "<securityView id='v" + std::to_string(depth) + "'>";
    }
    views += "<set kind='included'>" + itemsUpTo(2'000) + "</set>";
    for (int depth = 0; depth < 100; ++depth) {
        views += "</securityView>";
    }
    Probe const probe("<model>" + views + "</model>");
    std::size_t const before = probe.model().byteCount();
    int ready = 0;
    for (int depth = 99; depth >= 0; --depth) {
        std::shared_ptr<VexTextSet const> const set =
            findSet(probe.id(("v" + std::to_string(depth)).c_str()));
        ready += set != nullptr ? 1 : 0;
        EXPECT_TRUE(set == nullptr || set->size() == 2'000U);
    }
    EXPECT_EQ(ready, 4);
    EXPECT_LE(probe.model().byteCount() - before, 4U * 13 * 2'100);
    EXPECT_NE(findSet(probe.id("v99")), nullptr); // one that is there stays
}

TEST(ModelTextSets, OfWhateverWordsAnybodyAsksForAreNoMoreThanTheModelHasElements) {
    Probe const probe(viewOf(10));
    int ready = 0;
    for (int number = 0; number < 1'000; ++number) {
        ready +=
            findSet(probe.id("v"), {.text = std::to_string(number).c_str()}) != nullptr ? 1 : 0;
    }
    EXPECT_EQ(ready, 4 * 13);
    EXPECT_EQ(findSet(probe.id("v")), nullptr);
}

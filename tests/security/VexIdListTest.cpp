#include "security/VexIdList.h"

#include <algorithm>
#include <new>
#include <string>

#include <gtest/gtest.h>

namespace {

/// Texts in the order given, with counts of what was asked.
class Texts final : public VexTextSet {
public:
    explicit Texts(std::vector<std::u16string> texts) : m_texts(std::move(texts)) {}

    bool contains(I18NString const& text) const override {
        ++asked;
        return std::find(m_texts.begin(), m_texts.end(), text.view()) != m_texts.end();
    }
    std::size_t size() const override { return m_texts.size(); }
    void appendTo(std::vector<std::u16string_view>& texts) const override {
        ++read;
        for (std::u16string const& text : m_texts) {
            texts.push_back(text);
            if (failsToRead) {
                throw std::bad_alloc();
            }
        }
    }

    mutable int asked = 0;
    mutable int read = 0;
    bool failsToRead = false;

private:
    std::vector<std::u16string> m_texts;
};

std::u16string numbered(std::size_t number) {
    std::string const text = std::to_string(number);
    return {text.begin(), text.end()};
}

/// So many sets with one id each, the numbers from 0 on.
std::vector<std::shared_ptr<Texts>> addSets(VexIdList& list, std::size_t count) {
    std::vector<std::shared_ptr<Texts>> sets;
    for (std::size_t number = 0; number < count; ++number) {
        sets.push_back(std::make_shared<Texts>(std::vector{numbered(number)}));
        list.add(sets.back());
    }
    return sets;
}

int askedIn(std::vector<std::shared_ptr<Texts>> const& sets) {
    int asked = 0;
    for (auto const& set : sets) {
        asked += set->asked;
    }
    return asked;
}

} // namespace

TEST(VexIdList, AnEmptyOneContainsNothing) {
    VexIdList list;
    EXPECT_FALSE(list.contains(""));
    EXPECT_FALSE(list.contains("a"));
    list.add(std::make_shared<Texts>(std::vector<std::u16string>{}));
    EXPECT_FALSE(list.contains(""));
    EXPECT_FALSE(list.contains("a"));
}

TEST(VexIdList, ContainsWhatWasInsertedAndWhatItsSetsHold) {
    VexIdList list;
    list.reserveMore(2);
    list.insert(u"a");
    list.add(std::make_shared<Texts>(std::vector<std::u16string>{u"b", u"c"}));
    list.insert(u"d");
    list.add(std::make_shared<Texts>(std::vector<std::u16string>{u"", u"c"}));
    for (char const* const id : {"a", "b", "c", "d", ""}) {
        EXPECT_TRUE(list.contains(id)) << id;
    }
    EXPECT_FALSE(list.contains("e"));
    EXPECT_FALSE(list.contains("A"));
}

TEST(VexIdList, NeverReadsAFewSets) {
    VexIdList list;
    auto const sets = addSets(list, 4);
    for (int question = 0; question < 100; ++question) {
        EXPECT_TRUE(list.contains("3"));
        EXPECT_FALSE(list.contains("4"));
    }
    for (auto const& set : sets) {
        EXPECT_EQ(set->read, 0);
    }
}

TEST(VexIdList, ReadsManySetsOnceAsManyQuestionsWereAsked) {
    VexIdList list;
    std::size_t const count = 50;
    auto const sets = addSets(list, count);
    for (int question = 0; question < 1'000; ++question) {
        std::size_t const number = static_cast<std::size_t>(question) % (count + 10);
        EXPECT_EQ(list.contains(I18NString(numbered(number))), number < count);
    }
    for (auto const& set : sets) {
        EXPECT_EQ(set->read, 1);
    }
    EXPECT_LE(askedIn(sets), 150);
    // One that comes later is asked again.
    list.add(std::make_shared<Texts>(std::vector<std::u16string>{u"later"}));
    EXPECT_TRUE(list.contains("later"));
    EXPECT_TRUE(list.contains("49"));
    EXPECT_FALSE(list.contains("50"));
}

TEST(VexIdList, AFewQuestionsReadNoneOfManySets) {
    VexIdList list;
    auto const large = std::make_shared<Texts>(std::vector<std::u16string>(1'000, u"x"));
    list.add(large);
    auto const sets = addSets(list, 9);
    for (int question = 0; question < 100; ++question) {
        EXPECT_FALSE(list.contains("unknown"));
    }
    EXPECT_EQ(large->read, 0);
    EXPECT_FALSE(list.contains("unknown"));
    EXPECT_FALSE(list.contains("unknown"));
    EXPECT_EQ(large->read, 1);
}

TEST(VexIdList, AReadingThatFailsLosesNoIdAndIsRepeated) {
    VexIdList list;
    auto const sets = addSets(list, 6);
    sets[3]->failsToRead = true;
    int failed = 0;
    for (int question = 0; question < 20; ++question) {
        try {
            EXPECT_TRUE(list.contains("5"));
            EXPECT_FALSE(list.contains("6"));
        } catch (std::bad_alloc const&) {
            ++failed;
        }
    }
    EXPECT_GT(failed, 1);
    sets[3]->failsToRead = false;
    for (std::size_t number = 0; number < 6; ++number) {
        EXPECT_TRUE(list.contains(I18NString(numbered(number))));
    }
    EXPECT_FALSE(list.contains("6"));
}

TEST(VexIdList, KeepsASetThatItsHostLetsGoOf) {
    VexIdList list;
    auto set = std::make_shared<Texts>(std::vector<std::u16string>{u"a"});
    std::weak_ptr<Texts> const watched = set;
    list.add(std::move(set));
    EXPECT_FALSE(watched.expired());
    EXPECT_TRUE(list.contains("a"));
}

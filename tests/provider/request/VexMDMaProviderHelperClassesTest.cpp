// What a request means for one class of objects.

#include "KRLIDOM_Reader.h"
#include "provider/request/VexMDMaProviderHelper.h"

#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

namespace {

using Texts = std::list<std::string>;
using TextMap = std::map<std::string, std::string>;

// What a request with those entries selects for the class "C".
class Selection {
public:
    explicit Selection(std::initializer_list<char const*> properties,
                       std::initializer_list<char const*> constraints = {})
        : m_document(KRLIDOM_Reader::parse(requestOf(properties, constraints), "request")),
          m_helper(m_document.document().getDocumentElement()) {
        m_helper.ProcessClientRequest();
    }

    Texts properties() const {
        std::list<I18NString> names{"what was there before"};
        m_helper.GetPropertiesForClass("C", names);
        return texts(names);
    }
    Texts collections() const {
        std::list<I18NString> names{"what was there before"};
        m_helper.GetCollectionsForClass("C", names);
        return texts(names);
    }
    TextMap constraints() const {
        std::map<I18NString, I18NString> found{{"what was there", "before"}};
        m_helper.GetConstraintsForClass("C", found);
        TextMap result;
        for (auto const& [key, value] : found) {
            result.emplace(key.toUtf8(), value.toUtf8());
        }
        return result;
    }
    VexMDMaProviderHelper const& helper() const { return m_helper; }

    static Texts texts(std::list<I18NString> const& strings) {
        Texts result;
        for (I18NString const& string : strings) {
            result.push_back(string.toUtf8());
        }
        return result;
    }

private:
    static std::string requestOf(std::initializer_list<char const*> properties,
                                 std::initializer_list<char const*> constraints) {
        std::string xml = "<Metadata>";
        for (char const* const property : properties) {
            xml += std::string("<Property p='") + property + "'/>";
        }
        for (char const* const constraint : constraints) {
            xml += std::string("<Constraint c='") + constraint + "'/>";
        }
        return xml + "</Metadata>";
    }

    KRLIDOM_OwnedDocument m_document;
    VexMDMaProviderHelper m_helper;
};

TEST(ClassProperties, ListTheStartObjectsThenEveryClasssThenTheClasssOwn) {
    EXPECT_EQ(Selection({"C/@z", "*/@y", "./@x", "C/@x"}).properties(),
              (Texts{"x", "y", "z", "x"}));
}

TEST(ClassProperties, LeaveOutOtherClassesAndGlobalEntries) {
    EXPECT_EQ(Selection({"D/@a", "CC/@b", "xC/@c", "/@defaultLocale", "./C/@d"}).properties(),
              Texts{});
}

TEST(ClassProperties, StandForAllWhereARestBeginsWithAnAsterisk) {
    EXPECT_EQ(Selection({"*/@a", "*/@*", "*/@b"}).properties(), Texts{"*"});
    EXPECT_EQ(Selection({"*/@a", "*/@*rest", "*/@*"}).properties(), Texts{"*rest"});
}

TEST(ClassProperties, KeepTheNamesOfOtherPrefixesBesideAWildcard) {
    EXPECT_EQ(Selection({"./@a", "*/@*", "*/@b", "C/@c"}).properties(), (Texts{"a", "*", "c"}));
}

TEST(ClassProperties, KeepAnEmptyName) {
    EXPECT_EQ(Selection({"./@"}).properties(), Texts{""});
}

// covers quirk: shortcut-and-namespace-always-walked
TEST(ClassCollections, AlwaysEndWithShortcutAndNamespace) {
    EXPECT_EQ(Selection({}).collections(), (Texts{"shortcut", "namespace"}));
    EXPECT_EQ(Selection({"./namespace", "C/shortcut"}).collections(),
              (Texts{"namespace", "shortcut", "shortcut", "namespace"}));
}

TEST(ClassCollections, ListTheStartObjectsThenEveryClasssThenTheClasssOwn) {
    EXPECT_EQ(Selection({"C/c", "*/b", "./a", "D/d"}).collections(),
              (Texts{"a", "b", "c", "shortcut", "namespace"}));
}

TEST(ClassCollections, StandForAllWhereARestBeginsWithAnAsterisk) {
    EXPECT_EQ(Selection({"./a", "./*", "./b"}).collections(),
              (Texts{"*", "shortcut", "namespace"}));
}

TEST(ClassConstraints, GiveNothingForAnEmptyRequest) {
    EXPECT_EQ(Selection({}).constraints(), TextMap{});
    EXPECT_EQ(Selection({}).properties(), Texts{});
}

TEST(ClassConstraints, GatherAllThreePrefixes) {
    EXPECT_EQ(Selection({}, {"./@a=[1]", "*/@b=[2]", "C/@c=[3]", "D/@d=[4]"}).constraints(),
              (TextMap{{"a", "1"}, {"b", "2"}, {"c", "3"}}));
}

TEST(ClassConstraints, PreferTheStartObjectsToEveryClasssToTheClasssOwn) {
    EXPECT_EQ(Selection({}, {"C/@x=[3]", "*/@x=[2]", "./@x=[1]"}).constraints(),
              (TextMap{{"x", "1"}}));
    EXPECT_EQ(Selection({}, {"C/@x=[3]", "*/@x=[2]"}).constraints(), (TextMap{{"x", "2"}}));
}

TEST(ClassConstraints, StandForAllWhereARestBeginsWithAnAsterisk) {
    // "*" comes before the letters in key order, and "!" before "*".
    EXPECT_EQ(Selection({}, {"./@a=[1]", "./@*=[2]", "./@!=[3]"}).constraints(),
              (TextMap{{"*", "2"}}));
    EXPECT_EQ(Selection({}, {"./@*=[2]", "C/@c=[3]"}).constraints(),
              (TextMap{{"*", "2"}, {"c", "3"}}));
}

TEST(ClassConstraints, TakeAKeyOfALongerClassNameToo) {
    // The prefix is "C"; two characters are dropped unchecked: here "X/".
    EXPECT_EQ(Selection({}, {"CX/@a=[1]"}).constraints(), (TextMap{{"@a", "1"}}));
    EXPECT_EQ(Selection({}, {"Country/@a=[1]"}).constraints(), (TextMap{{"ntry/@a", "1"}}));
}

TEST(ClassConstraints, GiveAnEmptyNameForAKeyThatEndsAfterThePrefix) {
    EXPECT_EQ(Selection({}, {"C=[1]"}).constraints(), (TextMap{{"", "1"}}));
}

TEST(RequestPrefix, AppendsToTheNamesThatAreThere) {
    Selection const selection({});
    std::list<I18NString> names{"a"};
    selection.helper().ProcessPrefix({"p/x", "q/y", "xp/z", "p/"}, "p/", names);
    EXPECT_EQ(Selection::texts(names), (Texts{"a", "x", ""}));
    selection.helper().ProcessPrefix({"p/b", "p/*"}, "p/", names);
    EXPECT_EQ(Selection::texts(names), (Texts{"a", "x", "", "*"}));
}

TEST(RequestPrefix, KeepsTheValueOfAConstraintThatIsThere) {
    Selection const selection({});
    std::map<I18NString, I18NString> found{{"a", "first"}};
    selection.helper().ProcessConstraintPrefix({{"C/@a", "second"}, {"C/@b", "new"}}, "C", found);
    EXPECT_EQ(found, (std::map<I18NString, I18NString>{{"a", "first"}, {"b", "new"}}));
}

} // namespace

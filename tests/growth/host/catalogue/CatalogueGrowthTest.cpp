#include "host/catalogue/Catalogue.h"
#include "host/insight/FileFindings.h"
#include "host/protocol/JsonFindings.h"
#include "tests/growth/CountingBuffer.h"
#include "tests/growth/GeneratedText.h"
#include "tests/growth/Growth.h"

namespace {

std::string grantsOf(std::size_t count) {
    return textOfEach(count, [](std::string const& number) {
        return "<grant role='r" + number + "' view='v" + number + "'/>";
    });
}

std::string rolesOf(std::size_t count) {
    return textOfEach(count,
                      [](std::string const& number) { return "<role>r" + number + "</role>"; });
}

std::string catalogueOf(std::string const& grants, std::string const& users) {
    return "<catalog><model path='/content/m' file='m.xml'>" + grants + "</model>" + users +
           "</catalog>";
}

TEST(CatalogueGrowth, OfViewsFollowsTheGrantsAndTheRolesOfAUser) {
    EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
        std::string const text =
            catalogueOf(grantsOf(size), "<user name='u'>" + rolesOf(size) + "</user>");
        auto const catalogue = vex::loadCatalogueText(text, "c.xml", "");
        return countWork(text.size(), [&] {
            EXPECT_EQ(availableViews(catalogue->models[0], catalogue->users[0]).size(), size);
        });
    }));
}

TEST(CatalogueGrowth, OfViewsFollowsTheRolesThatAreAskedForOneByOne) {
    EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
        std::string const text = catalogueOf(
            grantsOf(size), textOfEach(size, [](std::string const& number) {
                return "<user name='u" + number + "'><role>r" + number + "</role></user>";
            }));
        auto const catalogue = vex::loadCatalogueText(text, "c.xml", "");
        return countWork(text.size(), [&] {
            for (vex::CatalogueUser const& user : catalogue->users) {
                EXPECT_EQ(availableViews(catalogue->models[0], user).size(), 1U);
            }
        });
    }));
}

TEST(CatalogueGrowth, OfModelsAndUsersThatAreAskedForByNameFollowsThem) {
    EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
        std::string const text = "<catalog>" +
                                 textOfEach(size,
                                            [](std::string const& number) {
                                                return "<model path='/m" + number +
                                                       "' file='m.xml'/><user name='u" + number +
                                                       "'/>";
                                            }) +
                                 "</catalog>";
        auto const catalogue = vex::loadCatalogueText(text, "c.xml", "");
        return countWork(text.size(), [&] {
            for (std::size_t number = 0; number < size; ++number) {
                EXPECT_NE(catalogue->findModel(catalogue->models[number].path), nullptr);
                EXPECT_NE(catalogue->findUser(catalogue->users[number].name), nullptr);
            }
        });
    }));
}

/// What it takes to look through a catalogue and to write what was found.
Measurement checkOf(std::string const& text) {
    return countWork(text.size(), [&] {
        vex::Diagnostics const found = vex::findInCatalogue(text, "c.xml", "");
        CountingBuffer written;
        std::ostream out(&written);
        writeJson(out, found);
        writeSarif(out, found, "1");
        EXPECT_GT(written.count(), 0U);
    });
}

/// More findings than are kept of a rule.
constexpr std::size_t many = 6'000;

TEST(CatalogueGrowth, OfFindingsFollowsTheCatalogue) {
    struct Row {
        char const* name;
        std::string (*make)(std::size_t size);
    };
    constexpr Row rows[] = {
        {"elements that have no place",
         [](std::size_t size) { return catalogueOf("", repeated("<x/>", size)); }},
        {"grants and users of other roles",
         [](std::size_t size) {
             return catalogueOf(grantsOf(size), textOfEach(size, [](std::string const& number) {
                                    return "<user name='u" + number + "'><role>s" + number +
                                           "</role></user>";
                                }));
         }},
        {"models",
         [](std::size_t size) {
             return "<catalog>" +
                    textOfEach(size,
                               [](std::string const& number) {
                                   return "<model path='/m" + number + "' file='m.xml'/>";
                               }) +
                    "<user name='u'/></catalog>";
         }},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(
            staysInProportion(many, [&](std::size_t size) { return checkOf(row.make(size)); }));
    }
}

} // namespace

// Of a whole command: what the plug-in itself does is not counted, what it asks the host is.

#include "tests/growth/GeneratedText.h"
#include "tests/growth/Growth.h"

namespace {

std::string const views = "<securityViews><securityView id='v' name='V'><set kind='included'>"
                          "<item>n</item></set></securityView></securityViews>";

std::string modelOf(std::string const& elements) {
    return "<model defaultLocale='en'><locales><locale>en</locale></locales>"
           "<namespace id='n' name='N'>" +
           elements + "</namespace>" + views + "</model>";
}

std::string smallModel() {
    return modelOf("<querySubject id='q' name='Q'/>");
}

std::string querySubjectsOf(std::size_t count) {
    return textOfEach(count, [](std::string const& number) {
        return "<querySubject id='q" + number + "' name='Q" + number + "'/>";
    });
}

std::string catalogueOf(std::string const& grants, std::string const& users) {
    return "<catalog><model path='/content/m' file='m.xml'>" + grants + "</model>" + users +
           "</catalog>";
}

/// A grant for each of so many roles, and a user who has them all.
std::string catalogueOfRoles(std::size_t count) {
    return catalogueOf(
        textOfEach(count, [](auto const& n) { return "<grant role='r" + n + "' view='v'/>"; }),
        "<user name='ann'>" +
            textOfEach(count, [](auto const& n) { return "<role>r" + n + "</role>"; }) + "</user>");
}

/// A grant for each of so many users, who have a role of their own.
std::string catalogueOfUsers(std::size_t count) {
    return catalogueOf(
        textOfEach(count, [](auto const& n) { return "<grant role='r" + n + "' view='v'/>"; }),
        textOfEach(count, [](auto const& n) {
            return "<user name='u" + n + "'><role>r" + n + "</role></user>";
        }));
}

/// Users of one role, which is granted a view.
std::string catalogueOfAlike(std::size_t count) {
    return catalogueOf("<grant role='r' view='v'/>", textOfEach(count, [](auto const& n) {
                           return "<user name='u" + n + "'><role>r</role></user>";
                       }));
}

/// What it takes to ask about these users.
Measurement commandOf(std::string const& catalogue, std::string const& model,
                      std::vector<std::string> arguments) {
    CommandFolder const folder;
    std::size_t const bytes = folder.write("c.xml", catalogue) + folder.write("m.xml", model);
    arguments.insert(arguments.end(), {"--catalog", "c.xml", "--model", "/content/m"});
    return folder.countCommand(bytes, arguments);
}

using Arguments = std::vector<std::string>;

TEST(WhoGrowth, FollowsTheRolesThatGrantsName) {
    EXPECT_TRUE(staysInProportion(250, [](std::size_t size) {
        return commandOf(catalogueOfRoles(size), smallModel(), {"who", "q", "--json"});
    }));
}

TEST(WhoGrowth, FollowsTheUsersWhoHaveARoleOfTheirOwn) {
    EXPECT_TRUE(staysInProportion(250, [](std::size_t size) {
        return commandOf(catalogueOfUsers(size), smallModel(), {"who", "q"});
    }));
}

TEST(WhoGrowth, FollowsTheUsersOfWhomTheSameIsSaid) {
    EXPECT_TRUE(staysInProportion(2'000, [](std::size_t size) {
        return commandOf(catalogueOfAlike(size), smallModel(), {"who", "q"});
    }));
}

TEST(MatrixGrowth, FollowsTheObjectsInEveryForm) {
    for (char const* const format : {"text", "csv", "json"}) {
        SCOPED_TRACE(format);
        EXPECT_TRUE(staysInProportion(1'000, [&](std::size_t size) {
            return commandOf(catalogueOfUsers(1), modelOf(querySubjectsOf(size)),
                             {"matrix", "--format", format});
        }));
    }
}

TEST(MatrixGrowth, FollowsTheUsersInEveryForm) {
    for (char const* const format : {"text", "csv", "json"}) {
        SCOPED_TRACE(format);
        EXPECT_TRUE(staysInProportion(250, [&](std::size_t size) {
            return commandOf(catalogueOfUsers(size), smallModel(),
                             {"matrix", "--class", "querySubject", "--format", format});
        }));
    }
}

TEST(AccessGrowth, OfAllUsersFollowsThem) {
    EXPECT_TRUE(staysInProportion(250, [](std::size_t size) {
        return commandOf(catalogueOfUsers(size), smallModel(), {"access", "q", "--all-users"});
    }));
}

TEST(DiffGrowth, OfAllUsersFollowsThem) {
    for (Arguments const& form : {Arguments{}, Arguments{"--json"}}) {
        EXPECT_TRUE(staysInProportion(250, [&](std::size_t size) {
            Arguments arguments{"diff", "--all-users", "--other-file", "m.xml"};
            arguments.insert(arguments.end(), form.begin(), form.end());
            return commandOf(catalogueOfUsers(size), smallModel(), arguments);
        }));
    }
}

TEST(VerifyGrowth, FollowsTheObjectsInEveryForm) {
    for (char const* const format : {"text", "json", "sarif"}) {
        SCOPED_TRACE(format);
        EXPECT_TRUE(staysInProportion(1'000, [&](std::size_t size) {
            // What no tree goes into: a finding for each.
            return commandOf(
                catalogueOfUsers(1),
                "<model><namespace id='n' name='N'/><x>" +
                    textOfEach(size, [](auto const& n) { return "<y id='y" + n + "'/>"; }) +
                    "</x>" + views + "</model>",
                {"verify", "--format", format});
        }));
    }
}

TEST(TreeGrowth, FollowsTheObjectsThatAreDrawn) {
    constexpr std::size_t levels = 50;
    EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
        CommandFolder const folder;
        std::size_t const bytes =
            folder.write("m.xml", modelOf(repeated("<folder name='f'>", levels) +
                                          querySubjectsOf(size) + repeated("</folder>", levels)));
        return folder.countCommand(bytes, {"tree", "m.xml"});
    }));
}

TEST(ValidateGrowth, FollowsACatalogueAndItsModel) {
    for (char const* const format : {"text", "json", "sarif"}) {
        SCOPED_TRACE(format);
        EXPECT_TRUE(staysInProportion(1'000, [&](std::size_t size) {
            CommandFolder const folder;
            std::size_t const bytes = folder.write("c.xml", catalogueOfUsers(size)) +
                                      folder.write("m.xml", modelOf(querySubjectsOf(size)));
            return folder.countCommand(bytes, {"validate", "c.xml", "--format", format});
        }));
    }
}

} // namespace

#include "host/import/odbc/ConnectionString.h"

#include "host/import/odbc/OdbcException.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using vex::ConnectionString;

TEST(ConnectionString, HasKeywordsInEitherCaseAndValuesInBraces) {
    ConnectionString const how(" Driver = {PostgreSQL Unicode} ; UID=ann;;Note={a;b}}c};Port=");
    EXPECT_EQ(*how.find("driver"), "PostgreSQL Unicode");
    EXPECT_EQ(*how.find("Uid"), "ann");
    EXPECT_EQ(*how.find("NOTE"), "a;b}c");
    EXPECT_EQ(*how.find("port"), "");
    EXPECT_EQ(how.find("DSN"), nullptr);
}

TEST(ConnectionString, WithoutAnEqualsSignIsTheNameOfADataSource) {
    EXPECT_EQ(ConnectionString(" shop ").text(), "DSN=shop;");
}

TEST(ConnectionString, IsGivenToTheDriverWithBracesWhereTheyWereGiven) {
    ConnectionString how("Driver=SQLite3;Database={a;b}");
    how.addDefault("database", "other");
    how.addDefault("NoCreat", "1");
    EXPECT_EQ(how.text(), "Driver=SQLite3;Database={a;b};NoCreat=1;");
    EXPECT_EQ(ConnectionString("Driver=SQLite3;Database=a%20=b{}.db").text(),
              "Driver=SQLite3;Database=a%20=b{}.db;");
}

TEST(ConnectionString, HasAPasswordThatIsAddedInBraces) {
    ConnectionString how("Driver=SQLite3");
    how.setPassword("x}y");
    EXPECT_EQ(how.text(), "Driver=SQLite3;PWD={x}}y};");
    EXPECT_TRUE(how.hasPassword());
}

TEST(ConnectionString, IsShownWithoutWhatMayBeSecret) {
    ConnectionString const how(
        "Driver=PostgreSQL Unicode;Server=db;UID=ann;Pwd=geheim;pqopt={sslkey=k};Option=3");
    EXPECT_EQ(how.shown(),
              "Driver=PostgreSQL Unicode;Server=db;UID=ann;Pwd=...;pqopt=...;Option=...");
}

TEST(ConnectionString, TakesItsSecretsOutOfMessages) {
    ConnectionString const how("Driver=d;UID=ann;PASSWORD={ge;heim};SSLKey=k;"
                               "pqopt={options=abcd password=versteckt};Option=3");
    EXPECT_EQ(how.withoutSecrets("no ge;heim, {ge;heim}, versteckt or k for ann in 3 tries"),
              "no ..., ..., ... or ... for ann in 3 tries");
}

TEST(ConnectionString, KnowsOfAPasswordUnderBothOfItsNames) {
    EXPECT_TRUE(ConnectionString("pwd=").hasPassword());
    EXPECT_TRUE(ConnectionString("Password=x").hasPassword());
    EXPECT_FALSE(ConnectionString("UID=x").hasPassword());
}

TEST(ConnectionString, ThatIsNoneIsRefusedWithItsPlaceAndNothingOfItsText) {
    struct Case {
        std::string text;
        char const* said;
    };
    for (Case const& each :
         {Case{"", "no keyword at character 1"}, Case{"UID=a;geheim", "\"=\""},
          Case{"UID=a;=geheim", "no keyword at character 7"},
          Case{"PWD={geheim", "braces that do not end before a \";\" at character 5"},
          Case{"PWD={geheim}heim;UID=a", "braces that do not end"},
          Case{"PWD={geheim}}", "braces that do not end"},
          Case{std::string("PWD=geheim\0", 11), "a zero byte at character 11"}}) {
        try {
            ConnectionString const how(each.text);
            ADD_FAILURE() << each.text;
        } catch (vex::OdbcException const& refused) {
            EXPECT_THAT(refused.what(), HasSubstr(each.said));
            EXPECT_THAT(refused.what(), Not(HasSubstr("geheim")));
        }
    }
}

} // namespace

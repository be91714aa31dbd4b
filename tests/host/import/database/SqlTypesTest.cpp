#include "host/import/database/SqlTypes.h"

#include <gmock/gmock.h>

namespace {

using testing::StrEq;

TEST(SqlTypes, OfPostgresAreKnownByTheNamesOfItsCatalogue) {
    EXPECT_THAT(vex::datatypeOfPostgres("int4"), StrEq("int32"));
    EXPECT_THAT(vex::datatypeOfPostgres("numeric"), StrEq("decimal"));
    EXPECT_THAT(vex::datatypeOfPostgres("timestamptz"), StrEq("dateTime"));
    EXPECT_THAT(vex::datatypeOfPostgres("_int4"), StrEq(""));
}

TEST(SqlTypes, OfSqliteFollowItsRulesButForDatesAndTruth) {
    for (auto const& [declared, datatype] : {std::pair{"INTEGER", "int64"},
                                             {"VARCHAR(20)", "string"},
                                             {"NVARCHAR (20)", "string"},
                                             {"Decimal(8,2)", "decimal"},
                                             {"DOUBLE PRECISION", "double"},
                                             {"DATE", "date"},
                                             {"DATETIME", "dateTime"},
                                             {"BOOLEAN", "boolean"},
                                             {"BLOB", "binary"},
                                             {"unsigned big int", "int64"},
                                             {"", ""},
                                             {"whatever", ""}}) {
        EXPECT_THAT(vex::datatypeOfSqlite(declared), StrEq(datatype)) << declared;
    }
}

TEST(SqlTypes, AreNumbersWhereValuesAddUp) {
    EXPECT_TRUE(vex::isNumericDatatype("int16"));
    EXPECT_TRUE(vex::isNumericDatatype("decimal"));
    EXPECT_FALSE(vex::isNumericDatatype("dateTime"));
    EXPECT_FALSE(vex::isNumericDatatype(""));
}

} // namespace

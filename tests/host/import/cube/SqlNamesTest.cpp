#include "host/import/cube/SqlNames.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using vex::namesInCubeSql;

TEST(SqlNames, StandInBraces) {
    EXPECT_THAT(namesInCubeSql("price * 2"), IsEmpty());
    EXPECT_THAT(namesInCubeSql("{price} * 2"), Contains(ElementsAre("price")));
    EXPECT_THAT(namesInCubeSql("a + ${CUBE.price}"), Contains(ElementsAre("CUBE", "price")));
    EXPECT_THAT(namesInCubeSql("{orders.users.city}"),
                Contains(ElementsAre("orders", "users", "city")));
}

TEST(SqlNames, GoOnBehindTheBraces) {
    EXPECT_THAT(namesInCubeSql("{CUBE}.price + 1"), Contains(ElementsAre("CUBE", "price")));
    EXPECT_THAT(namesInCubeSql("{users}.city"), Contains(ElementsAre("users", "city")));
}

TEST(SqlNames, OfCodeAllCount) {
    auto const names = namesInCubeSql("{FILTER_PARAMS.orders.price.filter('cost')}");
    EXPECT_THAT(names, Contains(ElementsAre("FILTER_PARAMS", "orders", "price", "filter")));
    EXPECT_THAT(names, Contains(ElementsAre("cost")));
    EXPECT_THAT(namesInCubeSql("{f({a} + b)}"), Contains(ElementsAre("b")));
}

TEST(SqlNames, MayHaveBlanksAndAnyScript) {
    EXPECT_THAT(namesInCubeSql("{CUBE.net amount}"), Contains(ElementsAre("CUBE", "net amount")));
    EXPECT_THAT(namesInCubeSql("{größe}"), Contains(ElementsAre("größe")));
    EXPECT_THAT(namesInCubeSql("{ a }"), Contains(ElementsAre("a")));
}

TEST(SqlNames, AreFoundWhereBracesDoNotClose) {
    EXPECT_THAT(namesInCubeSql("{CUBE.price"), Contains(ElementsAre("CUBE", "price")));
    EXPECT_THAT(namesInCubeSql("{"), ElementsAre(ElementsAre("")));
    EXPECT_THAT(namesInCubeSql("}"), IsEmpty());
}

} // namespace

#include <QOR/JsonValue.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using QOR::JsonValue;

TEST(JsonValue, IsAnAggregateOfItsText) {
    EXPECT_TRUE(std::is_aggregate_v<JsonValue>);
    EXPECT_EQ(JsonValue{"{\"a\": 1}"}.text, "{\"a\": 1}");
    EXPECT_EQ(JsonValue{}.text, "");
}

TEST(JsonValue, ComparesTheBytesOfTheText) {
    EXPECT_EQ(JsonValue{"[1]"}, JsonValue{"[1]"});
    EXPECT_NE(JsonValue{"[1]"}, JsonValue{"[ 1 ]"});
    EXPECT_NE(JsonValue{"null"}, JsonValue{std::string("null\0", 5)});
}

TEST(JsonValue, CopiesItsText) {
    JsonValue original{"true"};
    const JsonValue copy = original;

    original.text = "false";

    EXPECT_EQ(copy.text, "true");
}

}  // namespace

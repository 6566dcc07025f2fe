// Values of every type as text and as JSON.
#include "model/Values.h"

#include "model/ModelPath.h"
#include "support/Sample.h"

#include <AttributeContainer/Attr.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

using namespace qormodel;
using qormodel::testing::LoadedText;
using qormodel::testing::valueModel;

namespace {

const std::string uuid = "00112233-4455-6677-8899-aabbccddeeff";

struct Row {
    std::string type;
    std::string stored;
    std::string text;
    std::string json;
};

class Value : public ::testing::TestWithParam<Row> {};

std::shared_ptr<ac::Attribute> read(const Row& row) {
    const LoadedText loaded(valueModel("Attr<" + row.type + '>', row.stored));
    const auto found = inqAttribute(loaded.document, "/Tested");
    return found ? found->attribute : nullptr;
}

// An attribute of that value, which lasts as long as the expression that it is made in.
template <class T> struct Holder {
    explicit Holder(const T& value) { attribute.set(value); }
    operator const ac::Attribute&() const { return attribute; }

    ac::CustAttr<T> attribute{std::nullopt};
};

template <class T> Holder<T> holding(const T& value) { return Holder<T>(value); }

}  // namespace

TEST_P(Value, StandsAsText) {
    const auto attribute = read(GetParam());
    ASSERT_TRUE(attribute);
    EXPECT_EQ(valueText(*attribute), GetParam().text);
}

TEST_P(Value, StandsAsJson) {
    const auto attribute = read(GetParam());
    ASSERT_TRUE(attribute);
    EXPECT_EQ(valueJson(*attribute).dump(), GetParam().json);
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryType, Value,
    ::testing::Values(
        Row{"int", "-5", "-5", "-5"}, Row{"int8_t", "-128", "-128", "-128"},
        Row{"uint8_t", "200", "200", "200"}, Row{"int16_t", "-32768", "-32768", "-32768"},
        Row{"uint16_t", "65535", "65535", "65535"}, Row{"int32_t", "7", "7", "7"},
        Row{"uint32_t", "4294967295", "4294967295", "4294967295"},
        Row{"int64_t", "-9223372036854775808", "-9223372036854775808", "-9223372036854775808"},
        Row{"uint64_t", "18446744073709551615", "18446744073709551615", "18446744073709551615"},
        Row{"double", "0.1", "0.1", "0.1"}, Row{"double", "1.#INF", "inf", "\"inf\""},
        Row{"double", "0.1234567890123456", "0.1234567890123456", "0.1234567890123456"},
        Row{"String", R"("a \"b\"")", R"(a \"b\")", R"("a \"b\"")"},
        Row{"bool", "TRUE", "true", "true"}, Row{"bool", "1", "false", "false"},
        Row{"Vec3dd", "1 2.5 -3", "1 2.5 -3", "[1.0,2.5,-3.0]"},
        Row{"Vec4dd", "1 2 3 4", "1 2 3 4", "[1.0,2.0,3.0,4.0]"},
        Row{"Vec3df", "1 2 0.5", "1 2 0.5", "[1.0,2.0,0.5]"},
        Row{"SVec3us", "1 2 3", "1 2 3", "[1,2,3]"},
        Row{"Vec4df", "1 2 3 4", "1 2 3 4", "[1.0,2.0,3.0,4.0]"},
        Row{"SVec2dd", "1 -2", "1 -2", "[1.0,-2.0]"}, Row{"SVec2df", "1 2", "1 2", "[1.0,2.0]"},
        Row{"SVec2i", "1 -2 ", "1 -2", "[1,-2]"}, Row{"SVec2ui", "1 2 ", "1 2", "[1,2]"}));

INSTANTIATE_TEST_SUITE_P(
    OfEveryTypeWithElements, Value,
    ::testing::Values(
        Row{"StringArray", R"(2 "a b" "c")", R"({ "a b" "c" })", R"(["a b","c"])"},
        Row{"StringSet", R"(3 "b" "a" "b")", R"({ "a" "b" })", R"(["a","b"])"},
        Row{"StringMap", R"(1 "k"=>"v w")", R"({ "k" => "v w" })", R"({"k":"v w"})"},
        Row{"Mat4df", "1 2 3 4  5 6 7 8  1 2 3 4  5 6 7 8  ", "1 2 3 4 5 6 7 8 1 2 3 4 5 6 7 8",
            "[1.0,2.0,3.0,4.0,5.0,6.0,7.0,8.0,1.0,2.0,3.0,4.0,5.0,6.0,7.0,8.0]"},
        Row{"Mat4dd", "1 0 0 0  0 1 0 0  0 0 1 0  -4 5 6 1  ", "1 0 0 0 0 1 0 0 0 0 1 0 -4 5 6 1",
            "[1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0,0.0,-4.0,5.0,6.0,1.0]"},
        Row{"DVector", "{ 1 -2.5 } ", "{ 1 -2.5 }", "[1.0,-2.5]"},
        Row{"DVector", "{ } ", "{ }", "[]"},
        Row{"Vec3ddVector", "{ 1 2 3 4 5 6 } ", "{ (1 2 3) (4 5 6) }",
            "[[1.0,2.0,3.0],[4.0,5.0,6.0]]"},
        Row{"Vec4ddVector", "{ 1 2 3 4 } ", "{ (1 2 3 4) }", "[[1.0,2.0,3.0,4.0]]"},
        Row{"Vec2ddVector", "{ 1 2 } ", "{ (1 2) }", "[[1.0,2.0]]"},
        Row{"Vec2dfVector", "{ 1 2 } ", "{ (1 2) }", "[[1.0,2.0]]"},
        Row{"IntVector", "{ 1 -2 } ", "{ 1 -2 }", "[1,-2]"},
        Row{"Int8Vector", "{ 1 -2 } ", "{ 1 -2 }", "[1,-2]"},
        Row{"UInt8Vector", "{ 1 255 } ", "{ 1 255 }", "[1,255]"},
        Row{"Int16Vector", "{ 1 -2 } ", "{ 1 -2 }", "[1,-2]"},
        Row{"UInt16Vector", "{ 1 2 } ", "{ 1 2 }", "[1,2]"},
        Row{"Int32Vector", "{ 1 -2 } ", "{ 1 -2 }", "[1,-2]"},
        Row{"UInt32Vector", "{ 1 2 } ", "{ 1 2 }", "[1,2]"},
        Row{"Int64Vector", "{ 1 -2 } ", "{ 1 -2 }", "[1,-2]"},
        Row{"UInt64Vector", "{ 1 2 } ", "{ 1 2 }", "[1,2]"},
        Row{"VecPoly3d", "{ { 1 2 3 } { 4 5 6 7 8 9 } } ", "{ { (1 2 3) } { (4 5 6) (7 8 9) } }",
            "[[[1.0,2.0,3.0]],[[4.0,5.0,6.0],[7.0,8.0,9.0]]]"},
        Row{"Vec3dfVector", "{ 1 2 3 } ", "{ (1 2 3) }", "[[1.0,2.0,3.0]]"},
        Row{"Vec2iVector", "{ 1 -2 } ", "{ (1 -2) }", "[[1,-2]]"},
        Row{"Vec2usVector", "{ 1 2 } ", "{ (1 2) }", "[[1,2]]"},
        Row{"Mat4ddVector", "{ 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1 } ",
            "{ (1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1) }",
            "[[1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0]]"},
        Row{"Uuid", uuid, uuid, '"' + uuid + '"'},
        Row{"Vec3uiVector", "{ 1 2 3 } ", "{ (1 2 3) }", "[[1,2,3]]"},
        Row{"UuidSet", "{ " + uuid + " } ", "{ " + uuid + " }", "[\"" + uuid + "\"]"},
        Row{"UuidVector", "{ " + uuid + " } ", "{ " + uuid + " }", "[\"" + uuid + "\"]"},
        Row{"BoolVector", "{ true false } ", "{ true false }", "[true,false]"},
        Row{"Json::Value", R"("{\"a\":1}")", R"({\"a\":1})", R"("{\"a\":1}")"}));

TEST(ValueText, ShowsPointsWithColoursInGroups) {
    const ac::ScanPt point{{1, 2, 3}, {10, 20, 30, 40}};

    EXPECT_EQ(valueText(holding(point)), "1 2 3 10 20 30 40");
    EXPECT_EQ(valueText(holding(std::vector<ac::ScanPt>{point})), "{ (1 2 3 10 20 30 40) }");
    EXPECT_EQ(valueJson(holding(point)).dump(),
              R"({"position":[1.0,2.0,3.0],"color":[10,20,30,40]})");
}

TEST(ValueText, EscapesControlCharacters) {
    EXPECT_EQ(valueText(holding(std::string("a\nb\tc"))), "a\\nb\\tc");
}

TEST(ValueText, WritesNumbersThatHaveNoTextInStreams) {
    EXPECT_EQ(valueText(holding(std::nan(""))), "nan");
    EXPECT_EQ(valueText(holding(-std::numeric_limits<double>::infinity())), "-inf");
    EXPECT_EQ(valueJson(holding(std::nan(""))), "nan");
    EXPECT_EQ(valueJson(holding(-std::numeric_limits<double>::infinity())), "-inf");
}

TEST(ShortValueText, CutsAListAndTellsItsSize) {
    const std::vector<int> list(1000, 12);

    EXPECT_EQ(shortValueText(holding(list), 10), "{ 12 12 12 ... 1000 elements }");
}

TEST(ShortValueText, CutsATextBetweenItsCharacters) {
    EXPECT_EQ(shortValueText(holding(std::string(5, 'a')), 3), "aaaaa");  // hardly longer
    const std::string umlauts = "\xc3\xa4";
    std::string text;
    for (int i = 0; i < 60; ++i) text += umlauts;

    EXPECT_EQ(shortValueText(holding(text), 5), umlauts + umlauts + "...");
}

TEST(NumPoints, CountsListsOfPointsOnly) {
    const QOR::Vec3d<double> point(1, 2, 3);

    EXPECT_EQ(numPoints(holding(std::vector<QOR::Vec3d<double>>{point, point})), 2u);
    EXPECT_EQ(numPoints(holding(std::vector<QOR::Vec3d<float>>(3))), 3u);
    EXPECT_EQ(numPoints(holding(std::vector<QOR::Vec4d<double>>(4))), 4u);
    EXPECT_EQ(numPoints(holding(std::vector<ac::ScanPt>(5))), 5u);
    EXPECT_EQ(numPoints(holding(point)), std::nullopt);
    EXPECT_EQ(numPoints(holding(std::vector<double>(3))), std::nullopt);
}

TEST(IsDefaultValue, ComparesWithANewValueOfTheType) {
    EXPECT_TRUE(isDefaultValue(holding(0)));
    EXPECT_FALSE(isDefaultValue(holding(1)));
    EXPECT_TRUE(isDefaultValue(holding(std::string())));
    EXPECT_FALSE(isDefaultValue(holding(std::vector<int>{0})));
}

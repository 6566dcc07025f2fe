// Which texts are values of which types.
#include "model/ValueText.h"

#include "model/Values.h"

#include <AttributeContainer/Attr.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace qormodel {
namespace {

// The value that a text stands for, as `get` prints it; else what was expected.
template <class T> std::string read(const std::string& text) {
    std::string expected;
    const auto value = parseValue(ac::CustAttr<T>(std::nullopt), text, expected);
    return value ? valueText(*value) : "expected " + expected;
}

TEST(ValueFromText, IsAWholeNumberWithinTheRangeOfItsType) {
    EXPECT_EQ(read<int>("-2147483648"), "-2147483648");
    EXPECT_EQ(read<int>("+5"), "5");
    EXPECT_EQ(read<unsigned char>("255"), "255");
    EXPECT_EQ(read<std::uint64_t>("18446744073709551615"), "18446744073709551615");
    const std::string ofInt = "expected a whole number from -2147483648 to 2147483647";
    for (const char* const text : {"2147483648", "1.5", "zz", "", "1 2", "0x10", "5m"})
        EXPECT_EQ(read<int>(text), ofInt) << text;
    EXPECT_EQ(read<unsigned char>("256"), "expected a whole number from 0 to 255");
    EXPECT_EQ(read<signed char>("-129"), "expected a whole number from -128 to 127");
    EXPECT_EQ(read<unsigned short>("-1"), "expected a whole number from 0 to 65535");
}

TEST(ValueFromText, IsANumber) {
    EXPECT_EQ(read<double>("1e-3"), "0.001");
    EXPECT_EQ(read<double>(" -2.5 "), "-2.5");
    for (const char* const text : {"one", "1.2.3", "", "1,5", "nan"})
        EXPECT_EQ(read<double>(text), "expected a number") << text;
}

TEST(ValueFromText, IsAFlag) {
    EXPECT_EQ(read<bool>("true"), "true");
    EXPECT_EQ(read<bool>("FALSE"), "false");
    for (const char* const text : {"yes", "", "truely"})
        EXPECT_EQ(read<bool>(text), "expected true or false") << text;
}

TEST(ValueFromText, IsAGroupOfNumbersInAnyOfItsSpellings) {
    using Point = QOR::Vec3d<double>;
    EXPECT_EQ(read<Point>("1 2 3"), "1 2 3");
    EXPECT_EQ(read<Point>("(1, 2, 3)"), "1 2 3");
    EXPECT_EQ(read<Point>("1 2"), "expected 3 times a number");
    EXPECT_EQ(read<Point>("1 2 3 4"), "expected 3 times a number");
    EXPECT_EQ(read<Point>("1 2 x"), "expected 3 times a number");
}

TEST(ValueFromText, IsAListInBraces) {
    using Points = std::vector<QOR::Vec3d<double>>;
    EXPECT_EQ(read<Points>("{ (1 2 3) (4 5 6) }"), "{ (1 2 3) (4 5 6) }");
    EXPECT_EQ(read<Points>("{1 2 3 4 5 6}"), "{ (1 2 3) (4 5 6) }");
    EXPECT_EQ(read<Points>("{}"), "{ }");
    const std::string expected = "expected a list in braces, each element 3 times a number";
    for (const char* const text : {"1 2 3", "{1 2}", "{1 2 3 4}", "{1 2 3", "{a b c}", ""})
        EXPECT_EQ(read<Points>(text), expected) << text;
    EXPECT_EQ(read<std::vector<int>>("{1 2.5}"),
              "expected a list in braces, each element a whole number from -2147483648 to "
              "2147483647");
}

TEST(ValueFromText, IsAnIdentifier) {
    EXPECT_EQ(read<QOR::uuids::uuid>("01234567-89AB-cdef-0123-456789abcdef"),
              "01234567-89ab-cdef-0123-456789abcdef");
    EXPECT_EQ(read<QOR::uuids::uuid>("0123"), "expected 32 hexadecimal digits");
}

TEST(ValueFromText, IsAnyText) {
    EXPECT_EQ(read<std::string>(""), "");
    EXPECT_EQ(read<std::string>("a, (b) {c}"), "a, (b) {c}");
}

TEST(ValueFromText, IsAListOfTextsAsGetPrintsIt) {
    using Texts = std::vector<std::string>;
    EXPECT_EQ(read<Texts>(R"({ "a b" "" "c\"d" })"), R"({ "a b" "" "c\"d" })");
    EXPECT_EQ(read<Texts>("{}"), "{ }");
    EXPECT_EQ(read<std::set<std::string>>(R"({"b" "a"})"), R"({ "a" "b" })");
    for (const char* const text : {"a", "\"a\"", "{ a }", "{ \"a }", "{ \"a\" } b", ""})
        EXPECT_EQ(read<Texts>(text), "expected texts in quotes, all in braces") << text;
}

TEST(ValueFromText, IsAMapOfTextsAsGetPrintsIt) {
    EXPECT_EQ(read<ac::StringMap>(R"({ "a" => "x } y" })"), R"({ "a" => "x } y" })");
    EXPECT_EQ(read<ac::StringMap>(R"({ "a" })"),
              R"(expected pairs "key" => "text", all in braces)");
}

TEST(ValueFromText, IsJson) {
    EXPECT_EQ(read<QOR::JsonValue>("[1, 2.5, true]"), "[1, 2.5, true]");
    EXPECT_EQ(read<QOR::JsonValue>("{a}"), "expected JSON");
}

}  // namespace
}  // namespace qormodel

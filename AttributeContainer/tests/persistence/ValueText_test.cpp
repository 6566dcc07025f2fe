#include "persistence/ValueText.h"

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/ModelFormat.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace QOR;
using namespace QOR::AttributeContainer;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

template <class T> T readBack(const T& value) {
    std::istringstream stream(valueText(value));
    return DataInFormat<T>(stream, ModelFormat::Text).get();
}

}  // namespace

TEST(ValueText, WritesIntegersAsPlainDecimals) {
    EXPECT_EQ(valueText<signed char>(-128), "-128");
    EXPECT_EQ(valueText<unsigned char>(65), "65");
    EXPECT_EQ(valueText<short>(-5), "-5");
    EXPECT_EQ(valueText(2147483647), "2147483647");
    EXPECT_EQ(valueText<std::uint64_t>(18446744073709551615u), "18446744073709551615");
    EXPECT_EQ(valueText<std::int64_t>(std::numeric_limits<std::int64_t>::min()),
              "-9223372036854775808");
}

TEST(ValueText, GivesNumbersTheDefaultPrecisionOfAStream) {
    EXPECT_EQ(valueText(1.0), "1");
    EXPECT_EQ(valueText(1.0 / 3), "0.333333");
    EXPECT_EQ(valueText(1234567.0), "1.23457e+06");
    EXPECT_EQ(valueText(123456.0), "123456");
    EXPECT_EQ(valueText(0.00001), "1e-05");
    EXPECT_EQ(valueText(-0.0), "-0");
    EXPECT_EQ(valueText(1e300), "1e+300");
    EXPECT_EQ(valueText(1.1f), "1.1");
}

TEST(ValueText, AgreesWithAStreamOnRandomNumbers) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponent(-12, 12);
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    for (int i = 0; i < 20'000; ++i) {
        const double number = std::pow(10.0, exponent(random)) * (random() % 2 ? 1 : -1);
        stream.str({});
        stream << number;
        ASSERT_EQ(valueText(number), stream.str());
    }
}

TEST(ValueText, ShowsNumbersThatAreNotFinite) {
    EXPECT_EQ(valueText(infinity), "inf");
    EXPECT_EQ(valueText(-infinity), "-inf");
    EXPECT_EQ(valueText(std::copysign(notANumber, 1.0)), "nan");
    EXPECT_EQ(valueText(std::copysign(notANumber, -1.0)), "-nan");
    EXPECT_EQ(valueText(std::numeric_limits<float>::infinity()), "inf");
    EXPECT_EQ(valueText(Vec3d<double>(infinity, 1, std::copysign(notANumber, 1.0))), "inf 1 nan");
}

TEST(ValueText, GivesComponentsAndElementsTheSamePrecision) {
    EXPECT_EQ(valueText(Vec3d<double>(1.0 / 3, -1000, 1234567)), "0.333333 -1000 1.23457e+06");
    EXPECT_EQ(valueText(SVec2d<float>(1.1f, 0)), "1.1 0");
    EXPECT_EQ(valueText(std::vector<double>{1.0 / 3, 1234567}), "{ 0.333333 1.23457e+06 } ");
    EXPECT_EQ(valueText(std::vector<std::vector<Vec3d<double>>>{{{1.0 / 3, 2, 3}}, {}}),
              "{ { 0.333333 2 3 }  { }  } ");
    EXPECT_EQ(valueText(ScanPtColor<Vec3d<float>>{{1.0f / 3, 2, 3}, {4, 5, 6, 7}}),
              "0.333333 2 3 4 5 6 7");
    Mat4d<double> matrix;
    matrix(0, 0) = 1.0 / 3;
    EXPECT_EQ(valueText(matrix), "0.333333 0 0 0  0 0 0 0  0 0 0 0  0 0 0 0  ");
}

TEST(ValueText, LeavesAStringBare) {
    EXPECT_EQ(valueText(std::string("a \"b\"\n")), "a \"b\"\n");
    EXPECT_EQ(valueText(std::string()), "");
}

TEST(ValueText, QuotesAJsonDocument) {
    EXPECT_EQ(valueText(JsonValue{R"({"a":1})"}), R"("{\"a\":1}")");
    EXPECT_EQ(readBack(JsonValue{R"({"a":"\n"})"}).text, R"({"a":"\n"})");
}

TEST(ValueText, QuotesStringsInListsAndMaps) {
    EXPECT_EQ(valueText(std::vector<std::string>{"a \"b\"", ""}), R"(2 "a \"b\"" "")");
    EXPECT_EQ(valueText(std::vector<std::string>{}), "0");
    EXPECT_EQ(valueText(std::set<std::string>{"b", "a"}), R"(2 "a" "b")");
    EXPECT_EQ(valueText(std::map<std::string, std::string>{{"k", "v"}}), R"(1 "k"=>"v")");
}

TEST(ValueText, HasTheFrameOfTheStreamForTheOtherTypes) {
    EXPECT_EQ(valueText(true), "true");
    EXPECT_EQ(valueText(std::vector<bool>{true, false}), "{ true false } ");
    EXPECT_EQ(valueText(std::vector<signed char>{65}), "{ 65 } ");
    EXPECT_EQ(valueText(SVec2d<int>(1, -2)), "1 -2 ");
    EXPECT_EQ(valueText(SVec3d<unsigned short>(1, 2, 3)), "1 2 3");
    EXPECT_EQ(valueText(std::vector<int>{}), "{ } ");
    EXPECT_EQ(valueText(std::set<std::uint32_t>{2, 1}), "{ 1 2 } ");
    EXPECT_EQ(valueText(uuids::uuid{}), "00000000-0000-0000-0000-000000000000");
    EXPECT_EQ(valueText(Time{}), "0.0.0 0:0:0");
    EXPECT_EQ(valueText(VersionNum("a", 1, 2, 3, 4, 0, "")), R"("a" 1.2.3.4)");
    EXPECT_EQ(valueText(StatisticVal<double>{1, 1.0 / 3, 3, 4}), "StatisticVal 1[0.333333,3]4");
}

TEST(ValueText, DependsOnNoLocale) {
    class Commas : public std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    const auto former = std::locale::global(std::locale(std::locale::classic(), new Commas));
    const auto number = valueText(1234.5);
    const auto list = valueText(std::vector<int>{12345});
    std::locale::global(former);
    EXPECT_EQ(number, "1234.5");
    EXPECT_EQ(list, "{ 12345 } ");
}

#include <AttributeContainer/DataOutFormat.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ValueTypes.h>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace QOR;
using namespace QOR::AttributeContainer;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

template <class T> std::string written(const T& value, int format = ModelFormat::Text) {
    std::ostringstream stream;
    DataOutFormat<T>(stream, format).put(value);
    return stream.str();
}

uuids::uuid countingUuid() {
    uuids::uuid::Bytes bytes;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(0x10 * i + 0xf - i);
    return uuids::uuid(bytes);
}
constexpr const char* countingUuidText = "0f1e2d3c-4b5a-6978-8796-a5b4c3d2e1f0";

Time someTime() {
    Time time;
    time.setTime(2024, 3, 5, 7, 8, 9, 0);
    return time;
}

template <class... Rows> constexpr bool allHaveCodecs(TypeList<Rows...>) {
    return (CodecValue<typename Rows::Value> && ...);
}

}  // namespace

static_assert(allHaveCodecs(ValueTypes{}), "an attribute of every value type must be stored");
static_assert(CodecValue<Time> && CodecValue<VersionNum> && CodecValue<std::set<std::uint32_t>>);
static_assert(!CodecValue<long double> && !CodecValue<char> && !CodecValue<const int> &&
              !CodecValue<std::vector<Time>> && !CodecValue<std::set<double>>);

TEST(DataOutFormat, WritesIntegersAsPlainDecimals) {
    EXPECT_EQ(written<signed char>(-128), "-128");
    EXPECT_EQ(written<signed char>(65), "65");
    EXPECT_EQ(written<unsigned char>(255), "255");
    EXPECT_EQ(written<short>(-32768), "-32768");
    EXPECT_EQ(written<unsigned short>(65535), "65535");
    EXPECT_EQ(written<int>(-2147483647 - 1), "-2147483648");
    EXPECT_EQ(written<unsigned int>(4294967295u), "4294967295");
    EXPECT_EQ(written<std::int64_t>(std::numeric_limits<std::int64_t>::min()),
              "-9223372036854775808");
    EXPECT_EQ(written<std::uint64_t>(18446744073709551615u), "18446744073709551615");
}

TEST(DataOutFormat, WritesNumbersWithTheDigitsOfTheirMagnitude) {
    struct Row {
        double number;
        const char* text;
    };
    const Row table[] = {{0.1, "0.1"},
                         {1.0, "1"},
                         {1.0 / 3, "0.33333333"},
                         {20.0 / 3, "6.666666667"},
                         {2000.0 / 3, "666.666666667"},
                         {-1234.5, "-1234.5"},
                         {123456789012, "123456789012"},
                         {0.000123456789, "0.00012345679"},
                         {0.00001, "1e-05"},
                         {5e-324, "4.9406565e-324"},
                         {0.0, "0"},
                         {-0.0, "-0"},
                         {1e15, "1000000000000000"}};
    for (const auto& [number, text] : table) EXPECT_EQ(written(number), text);
}

TEST(DataOutFormat, WritesALargeNumberToItsLastDigit) {
    EXPECT_EQ(written(1e300),
              "10000000000000000525047602552044202487044685811081591549158541155118024579889081"
              "95786371375080447864043704443832883878176942523235360430575644792184786706982848"
              "38720092657580373783023379478809005936895323497079994508111903896764088007465274"
              "2780142494579258788820056842838115669472196386865459400540160");
}

TEST(DataOutFormat, WritesFloatsAsTheDoublesThatTheyAre) {
    EXPECT_EQ(written(0.1f), "0.1");
    EXPECT_EQ(written(1.1f), "1.100000024");
    EXPECT_EQ(written(-1.5f), "-1.5");
    EXPECT_EQ(written(16777216.0f), "16777216");
}

TEST(DataOutFormat, WritesZeroForWhatIsNotFinite) {
    EXPECT_EQ(written(infinity), "0");
    EXPECT_EQ(written(-infinity), "0");
    EXPECT_EQ(written(notANumber), "0");
    EXPECT_EQ(written(-notANumber), "0");
    EXPECT_EQ(written(std::numeric_limits<float>::infinity()), "0");
    EXPECT_EQ(written(Vec3d<double>(infinity, 1.5, notANumber)), "0 1.5 0");
    EXPECT_EQ(written(std::vector<double>{infinity, 2}), "{ 0 2 } ");
}

TEST(DataOutFormat, WritesTruthValuesAsWords) {
    EXPECT_EQ(written(true), "true");
    EXPECT_EQ(written(false), "false");
    EXPECT_EQ(written(true, ModelFormat::XmlV2), "true");
}

TEST(DataOutFormat, QuotesStringsByTheFormat) {
    EXPECT_EQ(written<std::string>("a b"), R"("a b")");
    EXPECT_EQ(written<std::string>("a b", ModelFormat::XmlV1), R"("a b")");
    EXPECT_EQ(written<std::string>("a b", ModelFormat::XmlV2), "'a b'");
    EXPECT_EQ(written<std::string>(""), R"("")");
    EXPECT_EQ(written<std::string>("", ModelFormat::XmlV2), "''");
}

TEST(DataOutFormat, EscapesStringsAndInXmlTheirEntitiesToo) {
    const std::string value = "<\"&'>\n\\";
    EXPECT_EQ(written(value), R"("<\"&'>\n\\")");
    EXPECT_EQ(written(value, ModelFormat::XmlV1), R"("&lt;\&quot;&amp;&apos;&gt;\n\\")");
    EXPECT_EQ(written(value, ModelFormat::XmlV2), R"('&lt;\&quot;&amp;&apos;&gt;\n\\')");
}

TEST(DataOutFormat, WritesStringsOfAnySize) {
    const std::string longString(100'000, 'x');
    EXPECT_EQ(written(longString), '"' + longString + '"');
    EXPECT_EQ(written(std::vector<std::string>{"a", longString, "b"}),
              "3 \"a\" \"" + longString + "\" \"b\"");
}

TEST(DataOutFormat, WritesAJsonDocumentAsAString) {
    EXPECT_EQ(written(JsonValue{R"({"a":1})"}), R"("{\"a\":1}")");
    EXPECT_EQ(written(JsonValue{}), R"("")");
}

TEST(DataOutFormat, WritesUuidsInLowerCase) {
    EXPECT_EQ(written(countingUuid()), countingUuidText);
    EXPECT_EQ(written(uuids::uuid{}), "00000000-0000-0000-0000-000000000000");
}

TEST(DataOutFormat, WritesTimesWithNoFill) {
    EXPECT_EQ(written(someTime()), "5.3.2024 7:8:9");
    EXPECT_EQ(written(Time{}), "0.0.0 0:0:0");
}

TEST(DataOutFormat, WritesVersionsAsNameAndNumbers) {
    const VersionNum version("kVLib", 9, 1, 0, 0, 0, "rev");
    EXPECT_EQ(written(version), R"("kVLib" 9.1.0.0)");
    EXPECT_EQ(written(version, ModelFormat::XmlV2), "'kVLib' 9.1.0.0");
    EXPECT_EQ(written(VersionNum("a", 1, 2, 3, 4, 5, "")), R"("a" 1.2.3.4.5)");
}

TEST(DataOutFormat, WritesIntegerVectorsWithABlankBetweenOrBehind) {
    EXPECT_EQ(written(SVec2d<unsigned short>(1, 65535)), "1 65535");
    EXPECT_EQ(written(SVec3d<unsigned short>(1, 2, 3)), "1 2 3");
    EXPECT_EQ(written(SVec3d<int>(-1, 2, -3)), "-1 2 -3");
    EXPECT_EQ(written(SVec2d<int>(-1, 2)), "-1 2 ");
    EXPECT_EQ(written(SVec2d<unsigned int>(1, 2)), "1 2 ");
    EXPECT_EQ(written(SVec3d<unsigned int>(1, 2, 3)), "1 2 3 ");
}

TEST(DataOutFormat, WritesAllComponentsWithTheDigitsOfTheLargest) {
    EXPECT_EQ(written(Vec3d<double>(1.0 / 3, -1000, 0.123456789012)),
              "0.333333333333 -1000 0.123456789012");
    EXPECT_EQ(written(SVec2d<double>(1.0 / 3, 0)), "0.33333333 0");
    EXPECT_EQ(written(SVec2d<float>(0.1f, 100)), "0.10000000149 100");
    EXPECT_EQ(written(SVec3d<float>(0.5f, 1, 2)), "0.5 1 2");
    EXPECT_EQ(written(SVec3d<double>(0.5, 1, 2)), "0.5 1 2");
    EXPECT_EQ(written(Vec3d<float>()), "0 0 0");
    EXPECT_EQ(written(Vec4d<double>(1, 1.0 / 3, -0.0, 4)), "1 0.3333333333 -0 4");
    EXPECT_EQ(written(Vec4d<float>(1, 2, 3, 4)), "1 2 3 4");
}

TEST(DataOutFormat, WritesByteVectorsAsFourCharacters) {
    EXPECT_EQ(written(Vec4d<unsigned char>('a', 0xff, '4', '}')), "a \xff 4 }");
}

TEST(DataOutFormat, WritesMatricesRowByRowWithTwoBlanksBehindEach) {
    EXPECT_EQ(written(Mat4d<double>::identity()), "1 0 0 0  0 1 0 0  0 0 1 0  0 0 0 1  ");
    Mat4d<float> matrix;
    matrix(0, 0) = 1.1f;
    matrix(0, 1) = 0.1f;  // each element has the digits of its own
    EXPECT_EQ(written(matrix), "1.100000024 0.1 0 0  0 0 0 0  0 0 0 0  0 0 0 0  ");
}

TEST(DataOutFormat, WritesScanPointsAtTheStandingPrecision) {
    const ScanPt point{{1.1f, 1.0f / 3, 100}, {1, 2, 3, 255}};
    EXPECT_EQ(written(point), "1.1 0.33333334 100 1 2 3 255");

    std::ostringstream stream;
    DataOutFormat<ScanPt> codec(stream, ModelFormat::Text);
    stream.precision(3);
    codec.put({{1.2345f, std::numeric_limits<float>::infinity(), 12345}, {}});
    EXPECT_EQ(stream.str(), "1.23 inf 1.23e+04 0 0 0 0");
    EXPECT_EQ(stream.precision(), 3);
}

TEST(DataOutFormat, WritesStatisticsBehindTheirWord) {
    const StatisticVal<double> statistics{1, 2.5, 1.0 / 3, 1000};
    EXPECT_EQ(written(statistics), "StatisticVal 1[2.5,0.33333333]1000");

    StatisticValLimits<double> limits{{1, 2, 3, 4}, {5, 6}, {7, 8}, {9, 10}, {11, 1.0 / 3}};
    EXPECT_EQ(written(limits),
              "StatisticValLimitsEx 1[2,3]4 Limits [5 6,7 8] [9 10,11 0.33333333333]");
}

TEST(DataOutFormat, PutsListsBetweenBraces) {
    EXPECT_EQ(written(std::vector<int>{}), "{ } ");
    EXPECT_EQ(written(std::vector<int>{1, -2, 3}), "{ 1 -2 3 } ");
    EXPECT_EQ(written(std::vector<signed char>{65, -1}), "{ 65 -1 } ");
    EXPECT_EQ(written(std::vector<unsigned char>{65, 255}), "{ 65 255 } ");
    EXPECT_EQ(written(std::vector<bool>{true, false}), "{ true false } ");
    EXPECT_EQ(written(std::vector<float>{1.1f, 0.1f}), "{ 1.100000024 0.1 } ");
    EXPECT_EQ(written(std::vector<Vec3d<double>>{{1, 2, 3}, {0.5, 0, 1000}}),
              "{ 1 2 3 0.5 0 1000 } ");
    EXPECT_EQ(written(std::vector<SVec2d<int>>{{1, 2}, {3, 4}}), "{ 1 2  3 4  } ");
    EXPECT_EQ(written(std::vector<uuids::uuid>{countingUuid()}),
              std::string("{ ") + countingUuidText + " } ");
    EXPECT_EQ(written(std::vector<ScanPt>{{{1, 2, 3}, {4, 5, 6, 7}}}), "{ 1 2 3 4 5 6 7 } ");
    EXPECT_EQ(written(std::vector<Mat4d<double>>{Mat4d<double>()}),
              "{ 0 0 0 0  0 0 0 0  0 0 0 0  0 0 0 0   } ");
}

TEST(DataOutFormat, PutsListsIntoLists) {
    using Polygons = std::vector<std::vector<Vec3d<double>>>;
    EXPECT_EQ(written(Polygons{}), "{ } ");
    EXPECT_EQ(written(Polygons{{{1, 2, 3}}, {}}), "{ { 1 2 3 }  { }  } ");
}

TEST(DataOutFormat, WritesSetsInTheirOrder) {
    EXPECT_EQ(written(std::set<std::uint32_t>{3, 1}), "{ 1 3 } ");
    EXPECT_EQ(written(std::set<std::uint64_t>{}), "{ } ");
    EXPECT_EQ(written(std::set<uuids::uuid>{countingUuid(), uuids::uuid{}}),
              std::string("{ 00000000-0000-0000-0000-000000000000 ") + countingUuidText + " } ");
    EXPECT_EQ(written(std::set<std::string>{"b", "a"}), R"(2 "a" "b")");
}

TEST(DataOutFormat, CountsStringsInsteadOfBracingThem) {
    EXPECT_EQ(written(std::vector<std::string>{}), "0");
    EXPECT_EQ(written(std::vector<std::string>{"a b", "", "\""}), R"(3 "a b" "" "\"")");
    EXPECT_EQ(written(std::vector<std::string>{"a"}, ModelFormat::XmlV2), "1 'a'");
    using Map = std::map<std::string, std::string>;
    EXPECT_EQ(written(Map{}), "0");
    EXPECT_EQ(written(Map{{"k", "v"}, {"j", ""}}), R"(2 "j"=>"" "k"=>"v")");
}

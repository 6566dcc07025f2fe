#include "persistence/Reading.h"

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/ModelFormat.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr float smallestFloat = std::numeric_limits<float>::min();

}  // namespace

// ---- words and strings ------------------------------------------------------------------------

TEST(DataInFormatValues, TakesOnlyTheWordTrueAsTrue) {
    EXPECT_TRUE(read<bool>("true"));
    EXPECT_TRUE(read<bool>(" True "));
    EXPECT_TRUE(read<bool>("TRUE"));
    EXPECT_FALSE(read<bool>("false"));
    EXPECT_FALSE(read<bool>("1"));
    EXPECT_FALSE(read<bool>("true}"));
    EXPECT_FALSE(read<bool>(""));
    EXPECT_EQ(reading<bool>("true x").rest, " x");
}

TEST(DataInFormatValues, EndsAWordOfXmlAtABlankOrQuote) {
    EXPECT_TRUE(read<bool>("true\" />", ModelFormat::XmlV2));
    EXPECT_EQ(reading<bool>("true\" />", ModelFormat::XmlV2).rest, "\" />");
    EXPECT_EQ(reading<bool>(" true x", ModelFormat::XmlV2).rest, " x");
    EXPECT_FALSE(read<bool>("\"", ModelFormat::XmlV2));
    EXPECT_EQ(reading<bool>("\"", ModelFormat::XmlV2).rest, "\"");
    EXPECT_FALSE(read<bool>("true\" />", ModelFormat::Text));
    const auto uuid = read<uuids::uuid>("0123456789abcdef0123456789abcdef\"", ModelFormat::XmlV2);
    EXPECT_EQ(uuid.toString(), "01234567-89ab-cdef-0123-456789abcdef");
}

TEST(DataInFormatValues, ReadsUuidsInAllTheirForms) {
    const std::string expected = "01234567-89ab-cdef-0123-456789abcdef";
    for (const char* const text :
         {"01234567-89ab-cdef-0123-456789abcdef", " {01234567-89AB-CDEF-0123-456789ABCDEF} ",
          "0123456789abcdef0123456789abcdef", "0-1-23456789abcdef0123456789abcdef"})
        EXPECT_EQ(read<uuids::uuid>(text).toString(), expected) << text;
}

TEST(DataInFormatValues, LeavesAUuidForAnyOtherWord) {
    std::istringstream stream(
        "01234567-89ab-cdef-0123-456789abcdef {0123456789abcdef0123456789abcdef "
        "0123456789abcdef0123456789abcde 0123456789abcdef0123456789abcdef00 x");
    DataInFormat<uuids::uuid> codec(stream, ModelFormat::Text);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(codec.get().toString(), "01234567-89ab-cdef-0123-456789abcdef");
    EXPECT_TRUE(stream.eof());
}

TEST(DataInFormatValues, ReadsStringsBetweenQuotes) {
    EXPECT_EQ(read<std::string>(R"( "a b" )"), "a b");
    EXPECT_EQ(read<std::string>(R"("")"), "");
    EXPECT_EQ(read<std::string>(R"("a\"b\\")"), "a\"b\\");
    EXPECT_EQ(read<std::string>(R"("a\nb")"), "a\nb");
    EXPECT_EQ(reading<std::string>(R"("a\\"b")").value, "a\\");
    EXPECT_EQ(reading<std::string>(R"("a\\"b")").rest, "b\"");
    EXPECT_EQ(read<std::string>("\"a\"", ModelFormat::XmlV1), "a");
    EXPECT_EQ(read<JsonValue>(R"("{\"a\":1}")").text, R"({"a":1})");
}

TEST(DataInFormatValues, LeavesAStringThatHasNoQuote) {
    EXPECT_EQ(reading<std::string>(" a\"b\"").value, "");
    EXPECT_EQ(reading<std::string>(" a\"b\"").rest, "a\"b\"");
    EXPECT_EQ(reading<std::string>(" a\"b\"").state, good);
    EXPECT_EQ(reading<std::string>("  ").state, failedAtEnd);

    std::istringstream stream("\"a\" b");
    DataInFormat<std::string> codec(stream, ModelFormat::Text);
    codec.get();
    EXPECT_EQ(codec.get(), "a");
}

TEST(DataInFormatValues, KeepsWhatItHasOfAStringWithoutEnd) {
    EXPECT_EQ(reading<std::string>("\"a b").value, "a b");
    EXPECT_EQ(reading<std::string>("\"a b").state, failedAtEnd);
    EXPECT_EQ(read<std::string>("\"a\\"), "a\\");
    EXPECT_EQ(read<std::string>("\"a\\\""), "a\"");
}

TEST(DataInFormatValues, PassesStringsOfXmlWithoutDeliveringThem) {
    EXPECT_EQ(reading<std::string>(" 'a \"b\"' c", ModelFormat::XmlV2).value, "");
    EXPECT_EQ(reading<std::string>(" 'a \"b\"' c", ModelFormat::XmlV2).rest, " c");
    EXPECT_EQ(reading<std::string>("'a", ModelFormat::XmlV2).state, failedAtEnd);
    EXPECT_EQ(reading<std::string>("\"a\"", ModelFormat::XmlV2).rest, "\"a\"");

    // An element that holds the string: the stream then stands in front of it.
    const auto element = reading<std::string>("<Name value=\"'x'\" />", ModelFormat::XmlV2);
    EXPECT_EQ(element.value, "");
    EXPECT_EQ(element.rest, "'x'\" />");
    EXPECT_EQ(reading<std::string>("<Name", ModelFormat::XmlV2).rest, "");
}

// ---- other values -----------------------------------------------------------------------------

TEST(DataInFormatValues, ReadsTimes) {
    Time expected;
    expected.setTime(2024, 3, 5, 7, 8, 9, 0);
    EXPECT_EQ(read<Time>("5.3.2024 7:8:9"), expected);
    EXPECT_EQ(read<Time>(" 05 / 03 / 2024 07:08:09 "), expected);
    EXPECT_EQ(read<Time>("5.3.2024"), Time{});
    EXPECT_TRUE(reading<Time>("5.3.x").state & std::ios::failbit);
}

TEST(DataInFormatValues, ReadsVersionsByNameAndNumbers) {
    const auto version = read<VersionNum>(R"( "kVLib" 1.2.3.4.5)");
    EXPECT_EQ(version.getName(), "kVLib");
    EXPECT_EQ(version.getReleaseNumbers(), "1.2.3.4.5");
    EXPECT_EQ(reading<VersionNum>("\"a\" 1.2.3.4 x").rest, " x");
}

TEST(DataInFormatValues, LeavesTodaysVersionWhereNoNameStands) {
    const VersionNum today;
    for (const char* const text : {"", "  ", "x 1.2.3.4", "1.2.3.4"}) {
        const auto version = reading<VersionNum>(text);
        EXPECT_EQ(version.value.getName(), today.getName());
        EXPECT_EQ(version.value.getReleaseNumbers(), today.getReleaseNumbers());
        EXPECT_FALSE(version.state & std::ios::failbit);
    }
    EXPECT_EQ(reading<VersionNum>(" 1.2").rest, "1.2");
}

TEST(DataInFormatValues, ReadsTheNumbersOfAnXmlVersionFromItsComment) {
    const auto version =
        reading<VersionNum>("\n<!-- 'kVLib' 1.2.3.4 -->\n<ZELK>", ModelFormat::XmlV2);
    EXPECT_EQ(version.value.getName(), "");
    EXPECT_EQ(version.value.getReleaseNumbers(), "1.2.3.4");
    EXPECT_EQ(version.rest, "<ZELK>");
}

TEST(DataInFormatValues, ReadsVectorsComponentByComponent) {
    EXPECT_EQ(read<Vec3d<double>>("1 -2\n.5 "), Vec3d<double>(1, -2, 0.5));
    EXPECT_EQ(read<Vec3d<float>>("1 0 -5"), Vec3d<float>(1, smallestFloat, smallestFloat));
    EXPECT_EQ(read<Vec4d<double>>("1 2 3 4"), Vec4d<double>(1, 2, 3, 4));
    EXPECT_EQ(read<Vec4d<float>>("1 2 3 4"), Vec4d<float>(1, 2, 3, 4));
    EXPECT_EQ(read<SVec2d<double>>("1 2"), SVec2d<double>(1, 2));
    EXPECT_EQ(read<SVec2d<float>>("1 2"), SVec2d<float>(1, 2));
    EXPECT_EQ(read<SVec3d<double>>("1 2 3"), SVec3d<double>(1, 2, 3));
    EXPECT_EQ(read<SVec3d<float>>("1 2 3"), SVec3d<float>(1, 2, 3));
    EXPECT_EQ(read<SVec2d<unsigned short>>("1 70000"), SVec2d<unsigned short>(1, 65535));
    EXPECT_EQ(read<SVec3d<unsigned short>>("1 2 3"), SVec3d<unsigned short>(1, 2, 3));
    EXPECT_EQ(read<SVec3d<int>>("-1 2 99999999999"), SVec3d<int>(-1, 2, 2147483647));
    EXPECT_EQ(read<SVec3d<unsigned int>>("1 2 3 "), SVec3d<unsigned int>(1, 2, 3));
    EXPECT_EQ(read<SVec2d<int>>("-1 2 "), SVec2d<int>(-1, 2));
    EXPECT_EQ(read<SVec2d<unsigned int>>("1 2 "), SVec2d<unsigned int>(1, 2));
}

TEST(DataInFormatValues, LeavesComponentsThatAreMissing) {
    EXPECT_EQ(read<Vec3d<double>>("1 2"), Vec3d<double>(1, 2, 0));
    EXPECT_EQ(reading<Vec3d<double>>("1 2").state, atEnd);
    EXPECT_EQ(read<Vec3d<double>>("1 x 3"), Vec3d<double>(1, 0, 0));
    EXPECT_EQ(reading<Vec3d<double>>("1 x 3").rest, "x 3");
    // The stream's own operator fails the stream.
    EXPECT_TRUE(reading<SVec2d<int>>("1 x").state & std::ios::failbit);
    EXPECT_EQ(read<SVec2d<int>>("1 x"), SVec2d<int>(1, 0));
}

TEST(DataInFormatValues, LosesTheBytesOfAVectorThatAreWhiteSpace) {
    EXPECT_EQ(read<Vec4d<unsigned char>>("a \xff 4 }"), Vec4d<unsigned char>('a', 0xff, '4', '}'));
    EXPECT_EQ(read<Vec4d<unsigned char>>("a \n b c d"), Vec4d<unsigned char>('a', 'b', 'c', 'd'));
}

TEST(DataInFormatValues, ReadsMatricesRowByRow) {
    const auto matrix = read<Mat4d<double>>("1 2 3 4  5 6 7 8  9 10 11 12  13 14 15 16  ");
    for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(matrix[i], i + 1.0);
    EXPECT_EQ(read<Mat4d<float>>("1.5 2")[0], 1.5f);
    EXPECT_EQ(read<Mat4d<float>>("1.5 2")[2], 0.0f);
}

TEST(DataInFormatValues, ReadsScanPointsByTheStream) {
    const auto point = read<ScanPtColor<Vec3d<float>>>("-1.5 0 3e2 1 2 300 -4");
    EXPECT_EQ(point.position, Vec3d<float>(-1.5f, 0, 300));  // not held above zero
    EXPECT_EQ(point.color, (std::array<std::uint8_t, 4>{1, 2, 255, 0}));
    EXPECT_TRUE(reading<ScanPtColor<Vec3d<float>>>("1 2 x").state & std::ios::failbit);
}

TEST(DataInFormatValues, ReadsStatisticsBehindAnyWord) {
    const StatisticVal<double> expected{1, 2.5, -3, 4};
    EXPECT_EQ(read<StatisticVal<double>>("StatisticVal 1[2.5,-3]4"), expected);
    EXPECT_EQ(read<StatisticVal<double>>("X 1 ; 2.5 ; -3 ; 4"), expected);
    EXPECT_EQ(reading<StatisticVal<double>>("StatisticVal 1[2.5,-3]4 5").rest, " 5");
}

TEST(DataInFormatValues, ReadsBothFormsOfLimits) {
    using Limits = StatisticValLimits<double>;
    const Limits extended{{1, 2, 3, 4}, {5, 6}, {7, 8}, {9, 10}, {11, 12}};
    EXPECT_EQ(read<Limits>("StatisticValLimitsEx 1[2,3]4 Limits [5 6,7 8] [9 10,11 12]"), extended);
    EXPECT_EQ(reading<Limits>("StatisticValLimitsEx 1[2,3]4 Limits [5 6,7 8] [9 10,11 12] x").rest,
              " x");

    const Limits older{{1, 2, 3, 4}, {5, 6}, {5, 6}, {9, 10}, {9, 10}};
    EXPECT_EQ(read<Limits>("StatisticValLimits 1[2,3]4 Limits [5,6] [9 10]"), older);
    EXPECT_EQ(reading<Limits>("StatisticValLimits 1[2,3]4 Limits [5,6] [9 10] x").rest, " x");

    const Limits none{{1, 2, 3, 4}, {}, {}, {}, {}};
    EXPECT_EQ(read<Limits>("Other 1[2,3]4 Limits [5 6,7 8] [9 10,11 12]"), none);
}

TEST(DataInFormatValues, ForgetsFormerLimits) {
    std::istringstream stream("StatisticValLimits 1[2,3]4 Limits [5,6] [9 10] Other 1[2,3]4");
    DataInFormat<StatisticValLimits<double>> codec(stream, ModelFormat::Text);
    codec.get();
    EXPECT_EQ(codec.get().r, SVec2d<double>(0, 0));
}

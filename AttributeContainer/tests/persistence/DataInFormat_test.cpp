#include "persistence/Reading.h"

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/ModelFormat.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr float smallestFloat = std::numeric_limits<float>::min();
constexpr float largestFloat = std::numeric_limits<float>::max();

}  // namespace

// ---- floating-point numbers -------------------------------------------------------------------

TEST(DataInFormat, ReadsDoubles) {
    EXPECT_EQ(read<double>("0"), 0.0);
    EXPECT_EQ(read<double>(" \t\n-1.5 "), -1.5);
    EXPECT_EQ(read<double>("+2.5e3"), 2500.0);
    EXPECT_EQ(read<double>(".5"), 0.5);
    EXPECT_EQ(read<double>("5."), 5.0);
    EXPECT_EQ(read<double>("1E-2"), 0.01);
    EXPECT_EQ(read<double>("0.1"), 0.1);
    EXPECT_EQ(read<double>("123456789012345678901234567890"), 123456789012345678901234567890.0);
    EXPECT_EQ(read<double>("9007199254740993"), 9007199254740992.0);
    EXPECT_TRUE(std::signbit(read<double>("-0")));
}

TEST(DataInFormat, StandsBehindANumber) {
    EXPECT_EQ(reading<double>("1.5]2").rest, "]2");
    EXPECT_EQ(reading<double>("1.5 ").rest, " ");
    EXPECT_EQ(reading<double>("1.5 ").state, good);
    EXPECT_EQ(reading<double>("1.5").state, atEnd);
    EXPECT_EQ(reading<double>("1").state, atEnd);
}

TEST(DataInFormat, LeavesADoubleWhereNoNumberStands) {
    EXPECT_EQ(reading<double>("").value, 0.0);
    EXPECT_EQ(reading<double>("").state, atEnd);
    EXPECT_EQ(reading<double>("  ").state, atEnd);
    EXPECT_EQ(reading<double>(" x1").value, 0.0);
    EXPECT_EQ(reading<double>(" x1").rest, "x1");
    EXPECT_EQ(reading<double>(" x1").state, good);
    EXPECT_EQ(reading<float>("x").value, 0.0f);

    std::istringstream stream("5 x");
    DataInFormat<double> codec(stream, ModelFormat::Text);
    codec.get();
    EXPECT_EQ(codec.get(), 5.0);
}

TEST(DataInFormat, LeavesAFailedStreamAlone) {
    std::istringstream stream("5");
    stream.setstate(std::ios::failbit);
    EXPECT_EQ(DataInFormat<double>(stream, ModelFormat::Text).get(), 0.0);
    EXPECT_EQ(DataInFormat<int>(stream, ModelFormat::Text).get(), 0);
    EXPECT_EQ(stream.rdstate(), std::ios::failbit);
    stream.clear();
    EXPECT_EQ(stream.peek(), '5');
}

TEST(DataInFormat, ThrowsForCharactersOfANumberThatMakeNone) {
    for (const char* const text : {"1e", "1e+", ".", "-", "+", "+-5", "1.2.3", "1-2", "e5", "--1",
                                   "1e400e", "123456789012345678901234567890-"}) {
        std::istringstream stream(text);
        DataInFormat<double> codec(stream, ModelFormat::Text);
        try {
            codec.get();
            ADD_FAILURE() << text;
        } catch (const std::invalid_argument& error) {
            EXPECT_STREQ(error.what(), "Invalid number format");
        }
        stream.clear();
        EXPECT_EQ(stream.peek(), EOF) << text;
    }
    EXPECT_THROW(read<float>("1e"), std::invalid_argument);
    EXPECT_THROW(read<Vec3d<double>>("1 2 3e"), std::invalid_argument);
    EXPECT_THROW(read<std::vector<double>>("{ 1 2e } "), std::invalid_argument);
}

TEST(DataInFormat, ClearsTheStreamForANumberOutOfRange) {
    EXPECT_EQ(read<double>("1e400"), HUGE_VAL);
    EXPECT_EQ(read<double>("-1e400"), -HUGE_VAL);
    EXPECT_EQ(read<double>("1e-400"), 0.0);
    EXPECT_EQ(read<double>("4.9e-324"), 5e-324);
    EXPECT_EQ(reading<double>("1e400").state, good);
    EXPECT_EQ(reading<double>("1e-310").state, good);
    EXPECT_EQ(reading<double>("1e300").state, atEnd);
}

TEST(DataInFormat, HoldsFloatsBetweenTheSmallestNormalAndTheLargest) {
    EXPECT_EQ(read<float>("0"), 1.1754944e-38f);
    EXPECT_EQ(read<float>("0"), smallestFloat);
    EXPECT_EQ(read<float>("-1.5"), smallestFloat);
    EXPECT_EQ(read<float>("1e-40"), smallestFloat);
    EXPECT_EQ(read<float>("1e39"), largestFloat);
    EXPECT_EQ(read<float>("1e400"), largestFloat);
    EXPECT_EQ(read<float>("-1e400"), smallestFloat);
    EXPECT_EQ(read<float>("3.4028234663852886e38"), largestFloat);
    EXPECT_EQ(read<float>("1.5"), 1.5f);
    EXPECT_EQ(read<float>("0.1"), 0.1f);
}

TEST(DataInFormat, ReadsTheOldFormOfInfinity) {
    EXPECT_EQ(read<double>("1.#INF"), HUGE_VAL);
    EXPECT_EQ(read<double>("-1.#INF"), -HUGE_VAL);
    EXPECT_EQ(read<double>("1.#iNf "), HUGE_VAL);
    EXPECT_EQ(read<double>("1#inf"), HUGE_VAL);
    EXPECT_EQ(read<float>("1.#INF"), std::numeric_limits<float>::infinity());
    EXPECT_EQ(reading<double>("1.#INF2").rest, "2");
    EXPECT_EQ(reading<double>("1.#INF").state, good);
}

TEST(DataInFormat, LeavesOtherMarksBehindAOneInTheStream) {
    EXPECT_EQ(read<double>("1.#IND"), 1.0);
    EXPECT_EQ(reading<double>("1.#IND").rest, "#IND");
    EXPECT_EQ(reading<double>("1.#IND").state, good);
    EXPECT_EQ(reading<double>("1.#IN").rest, "#IN");
    EXPECT_EQ(reading<double>("1.#IN").state, good);
    EXPECT_EQ(reading<double>("1#").rest, "#");
    EXPECT_EQ(reading<double>("2.#INF").rest, "#INF");
    // A negative float is held at the smallest one before the mark could count.
    EXPECT_EQ(read<float>("-1.#INF"), smallestFloat);
    EXPECT_EQ(reading<float>("-1.#INF").rest, "#INF");
}

TEST(DataInFormat, KeepsErrno) {
    errno = EDOM;
    read<double>("1e400");
    read<double>("1e-310");
    EXPECT_THROW(read<double>("1e400e"), std::invalid_argument);
    read<int>("99999999999999999999");
    EXPECT_EQ(errno, EDOM);
}

// ---- integers ---------------------------------------------------------------------------------

TEST(DataInFormat, ReadsIntegers) {
    EXPECT_EQ(read<int>(" -5 "), -5);
    EXPECT_EQ(read<short>("+12"), 12);
    EXPECT_EQ(read<std::int64_t>("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(read<std::uint64_t>("18446744073709551615"), 18446744073709551615u);
    EXPECT_EQ(reading<int>("5,6").rest, ",6");
    EXPECT_EQ(reading<int>("5").state, atEnd);
}

TEST(DataInFormat, ClampsSmallIntegersToTheirType) {
    EXPECT_EQ(read<int>("99999999999"), 2147483647);
    EXPECT_EQ(read<int>("-99999999999"), -2147483647 - 1);
    EXPECT_EQ(read<short>("40000"), 32767);
    EXPECT_EQ(read<short>("-40000"), -32768);
    EXPECT_EQ(read<unsigned short>("65536"), 65535);
    EXPECT_EQ(read<unsigned int>("4294967296"), 4294967295u);
    EXPECT_EQ(read<unsigned int>("-1"), 4294967295u);  // counted back from 2^64
    EXPECT_EQ(read<std::uint64_t>("-1"), 18446744073709551615u);
}

TEST(DataInFormat, LeavesAnIntegerForWhatDoesNotConvert) {
    std::istringstream stream("7 99999999999999999999 -- 1.9e5 x");
    DataInFormat<std::int64_t> codec(stream, ModelFormat::Text);
    EXPECT_EQ(codec.get(), 7);
    EXPECT_EQ(codec.get(), 7);  // out of range
    EXPECT_EQ(codec.get(), 7);  // no number
    EXPECT_EQ(codec.get(), 1);  // the characters behind are taken too
    EXPECT_EQ(codec.get(), 1);  // no character of a number
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(read<std::uint64_t>("18446744073709551616"), 0u);
    EXPECT_EQ(reading<int>("-.e1 2").rest, " 2");
}

TEST(DataInFormat, ReadsByteIntegersAsWords) {
    EXPECT_EQ(read<signed char>(" -5 "), -5);
    EXPECT_EQ(read<unsigned char>("200"), 200);
    EXPECT_EQ(read<unsigned char>("300"), 255);
    EXPECT_EQ(read<signed char>("-300"), -128);
    EXPECT_EQ(read<signed char>("x"), 0);
    EXPECT_EQ(reading<signed char>("5,6 7").value, 5);
    EXPECT_EQ(reading<signed char>("5,6 7").rest, " 7");  // the whole word goes
    EXPECT_EQ(reading<unsigned char>("").state, failedAtEnd);
}

TEST(DataInFormat, ReadsNumbersWhateverTheLocaleIs) {
    class Commas : public std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::istringstream stream("1234.5 1e-310 7");
    stream.imbue(std::locale(std::locale::classic(), new Commas));
    DataInFormat<double> codec(stream, ModelFormat::Text);
    EXPECT_EQ(codec.get(), 1234.5);
    EXPECT_EQ(codec.get(), 1e-310);
    EXPECT_EQ(DataInFormat<int>(stream, ModelFormat::Text).get(), 7);
}

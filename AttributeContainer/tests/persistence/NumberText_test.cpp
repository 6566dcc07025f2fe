#include "persistence/NumberText.h"

#include "persistence/DecimalPowers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace QOR::AttributeContainer;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

// More rounds where QOR_TEST_ROUNDS asks for them: 10 takes about ten times as long.
int rounds(int usual) {
    const char* const factor = std::getenv("QOR_TEST_ROUNDS");
    return usual * (factor ? std::max(1, std::atoi(factor)) : 1);
}

std::string generalText(double number, int precision) {
    char buffer[maxNumberText];
    return {buffer, numberToText(buffer, number, precision)};
}

std::string printed(double number, int precision) {
    char buffer[500];
    const int size = std::snprintf(buffer, sizeof buffer, "%.*g", precision, number);
    return {buffer, static_cast<std::size_t>(size)};
}

int ruleByLogarithm(double number) {
    if (number == 0) return 1;
    const double logarithm = std::log10(std::fabs(number));
    return logarithm < 0 ? 8 : static_cast<int>(std::ceil(logarithm)) + 9;
}

double anyFinite(std::mt19937_64& random) {
    for (;;) {
        const auto number = std::bit_cast<double>(random());
        if (std::isfinite(number)) return number;
    }
}

// Every power of ten that a double can hold, with the doubles next to it on both sides.
std::vector<double> aroundPowersOfTen() {
    std::vector<double> numbers;
    for (int exponent = -323; exponent <= 308; ++exponent) {
        const double power = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        double below = power, above = power;
        numbers.push_back(power);
        for (int i = 0; i < 40; ++i) {
            numbers.push_back(below = std::nextafter(below, 0.0));
            numbers.push_back(above = std::nextafter(above, infinity));
        }
    }
    return numbers;
}

}  // namespace

TEST(DigitRule, GivesTheDigitsOfEachMagnitude) {
    struct Row {
        double number;
        int digits;
    };
    const Row table[] = {{0.0, 1},    {-0.0, 1},    {0.25, 8},    {1e-300, 8},
                         {5e-324, 8}, {0.99, 8},    {1.0, 9},     {-1.0, 9},
                         {5.0, 10},   {10.0, 10},   {10.5, 11},   {99.0, 11},
                         {100.0, 11}, {1000.0, 12}, {1234.5, 13}, {-1234.5, 13},
                         {1e22, 31},  {2e22, 32},   {1e300, 309}, {1.7976931348623157e308, 318}};
    for (const auto& [number, digits] : table) EXPECT_EQ(digitRule(number), digits) << number;
}

TEST(DigitRule, AgreesWithTheLogarithmNextToPowersOfTen) {
    for (const double number : aroundPowersOfTen()) {
        ASSERT_EQ(digitRule(number), ruleByLogarithm(number)) << printed(number, 17);
        ASSERT_EQ(digitRule(-number), ruleByLogarithm(number)) << printed(number, 17);
    }
}

TEST(DigitRule, AgreesWithTheLogarithmOfRandomNumbers) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponent(-3, 25);
    for (int i = rounds(300'000); i > 0; --i) {
        for (const double number : {anyFinite(random), std::pow(10.0, exponent(random))})
            ASSERT_EQ(digitRule(number), ruleByLogarithm(number)) << printed(number, 17);
    }
}

TEST(DigitRule, NeverFallsFromANumberToTheNext) {
    int former = 0;
    auto numbers = aroundPowersOfTen();
    std::sort(numbers.begin(), numbers.end());
    for (const double number : numbers) {
        ASSERT_GE(digitRule(number), former) << printed(number, 17);
        former = digitRule(number);
    }
}

TEST(NumberToText, WritesTheGeneralNotation) {
    struct Row {
        double number;
        int precision;
        const char* text;
    };
    const Row table[] = {
        {0.0, 1, "0"},
        {-0.0, 1, "-0"},
        {1.0, 9, "1"},
        {-5.0, 10, "-5"},
        {0.1, 8, "0.1"},
        {1234.5, 13, "1234.5"},
        {0.0001, 8, "0.0001"},
        {0.00001, 8, "1e-05"},
        {0.000123456789, 8, "0.00012345679"},
        {123456.0, 3, "1.23e+05"},
        {9.9999999996, 10, "10"},
        {99.95, 3, "100"},  // the double lies above 99.95
        {0.99999999996, 8, "1"},
        {0.5, 0, "0.5"},
        {2.5, 1, "2"},  // a tie goes to the even digit
        {3.5, 1, "4"},
        {0.125, 2, "0.12"},
        {0.375, 2, "0.38"},
        {1e15, 24, "1000000000000000"},
        {100000000000000.5, 18, "100000000000000.5"},
        {infinity, 6, "inf"},
        {-infinity, 6, "-inf"},
    };
    for (const auto& [number, precision, text] : table)
        EXPECT_EQ(generalText(number, precision), text);
}

TEST(NumberToText, GivesTheBytesOfPrintfForRandomBitPatterns) {
    std::mt19937_64 random(2);
    for (int i = rounds(150'000); i > 0; --i) {
        const double number = anyFinite(random);
        const int precision = digitRule(number);
        ASSERT_EQ(generalText(number, precision), printed(number, precision));
    }
}

TEST(NumberToText, GivesTheBytesOfPrintfForNumbersOfUsualSize) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> exponent(-6, 17);
    for (int i = rounds(400'000); i > 0; --i) {
        const double number = std::pow(10.0, exponent(random)) * (random() % 2 == 0 ? 1 : -1);
        const double rounded = std::round(number * 1e5) / 1e5;
        const auto single = static_cast<double>(static_cast<float>(number));
        const int anyPrecision = 1 + static_cast<int>(random() % 18);
        ASSERT_EQ(generalText(number, anyPrecision), printed(number, anyPrecision));
        for (const double each : {number, rounded, single})
            ASSERT_EQ(generalText(each, digitRule(each)), printed(each, digitRule(each)));
    }
}

TEST(NumberToText, GivesTheBytesOfPrintfForTies) {
    std::mt19937_64 random(4);
    for (int i = rounds(100'000); i > 0; --i) {
        // Odd multiples of a power of two end in 5, so that some precision cuts at a tie.
        const int shift = 1 + static_cast<int>(random() % 14);
        const double number =
            std::ldexp(static_cast<double>((random() >> (30 + random() % 30)) | 1), -shift);
        for (int precision = 1; precision <= 18; ++precision)
            ASSERT_EQ(generalText(number, precision), printed(number, precision));
    }
}

TEST(NumberToText, GivesTheBytesOfPrintfNextToPowersOfTen) {
    for (const double number : aroundPowersOfTen())
        for (const int precision : {1, 6, 9, 16, digitRule(number)})
            ASSERT_EQ(generalText(number, precision), printed(number, precision));
}

TEST(NumberToText, HasRoomForTheLongestNumber) {
    const double longest = -std::numeric_limits<double>::max();
    EXPECT_EQ(generalText(longest, 318).size(), 310u);
    EXPECT_EQ(generalText(longest, 318), printed(longest, 318));
}

TEST(DecimalExponent, CountsFromEachPowerOfTen) {
    for (int exponent = -4; exponent < 22; ++exponent) {
        EXPECT_EQ(decimalExponent(powerOfTen(exponent)), exponent);
        EXPECT_EQ(decimalExponent(std::nextafter(powerOfTen(exponent + 1), 0.0)), exponent);
    }
}

TEST(TextToNumber, ConvertsTheNumberInFront) {
    struct Row {
        std::string text;
        double number;
        int length;
    };
    const Row table[] = {
        {"0", 0, 1},      {"1.5", 1.5, 3},   {"+2", 2, 2},      {"-2.", -2, 3},   {".5", 0.5, 2},
        {"-.5", -0.5, 3}, {"1e3", 1000, 3},  {"1E-2", 0.01, 4}, {"1e+2", 100, 4}, {"1e", 1, 1},
        {"1e+", 1, 1},    {"1.2.3", 1.2, 3}, {"1-2", 1, 1},     {"", 0, 0},       {"-", 0, 0},
        {".", 0, 0},      {"e5", 0, 0},      {"+-5", 0, 0},     {"--5", 0, 0},    {"00012", 12, 5},
    };
    for (const auto& [text, number, length] : table) {
        const auto result = textToNumber(text);
        EXPECT_EQ(result.number, number) << text;
        EXPECT_EQ(result.end - text.data(), length) << text;
        EXPECT_FALSE(result.outOfRange) << text;
    }
}

TEST(TextToNumber, TellsWhatIsOutOfRangeAsStrtodDoes) {
    const std::string zeros(400, '0');
    const std::string texts[] = {"1e400",
                                 "-1e400",
                                 "1e-400",
                                 "-1e-400",
                                 "4.9e-324",
                                 "2e-324",
                                 "-2.5e-324",
                                 "2.2250738585072011e-308",
                                 "2.2250738585072014e-308",
                                 "2.2250738585072012e-308",
                                 "1.7976931348623157e308",
                                 "1.7976931348623159e308",
                                 "+1.5e999",
                                 "0e999",
                                 "0.000e-400",
                                 "1e99999999999999999999",
                                 "1e-99999999999999999999",
                                 "." + zeros + "1e401",
                                 "." + zeros + "1e5",
                                 "1" + zeros,
                                 "1" + zeros + "e-400",
                                 "123.456e-310",
                                 "1.e-320",
                                 "-.1e-320",
                                 "9007199254740993",
                                 "3.5e-310"};
    for (const auto& text : texts) {
        errno = 0;
        char* end = nullptr;
        const double expected = std::strtod(text.c_str(), &end);
        const bool outOfRange = errno == ERANGE;
        const auto result = textToNumber(text);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(result.number),
                  std::bit_cast<std::uint64_t>(expected))
            << text;
        EXPECT_EQ(result.end - text.data(), end - text.c_str()) << text;
        EXPECT_EQ(result.outOfRange, outOfRange) << text;
    }
}

TEST(TextToNumber, AgreesWithStrtodOnRandomTexts) {
    std::mt19937_64 random(5);
    const std::string characters = "0123456789012345678901234567890123456789..+-eE";
    for (int i = rounds(300'000); i > 0; --i) {
        std::string text;
        for (auto size = random() % 24; size > 0; --size)
            text += characters[random() % characters.size()];
        errno = 0;
        char* end = nullptr;
        double expected = std::strtod(text.c_str(), &end);
        if (end == text.c_str()) expected = 0;  // some systems give -0 for a text without a number
        const bool outOfRange = errno == ERANGE;
        const auto result = textToNumber(text);
        ASSERT_EQ(result.end - text.data(), end - text.c_str()) << text;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(result.number),
                  std::bit_cast<std::uint64_t>(expected))
            << text;
        ASSERT_EQ(result.outOfRange, outOfRange) << text;
    }
}

TEST(TextToNumber, LeavesErrnoAsItWas) {
    errno = EDOM;
    textToNumber("1e-310");
    textToNumber("1e999");
    EXPECT_EQ(errno, EDOM);
}

TEST(TextToNumber, BringsBackWhatTheDigitRuleKeeps) {
    std::mt19937_64 random(6);
    std::uniform_real_distribution<double> exponent(-3, 6);
    for (int i = rounds(50'000); i > 0; --i) {
        const double number = std::pow(10.0, exponent(random));
        const std::string text = generalText(number, digitRule(number));
        ASSERT_NEAR(textToNumber(text).number / number, 1, 1e-7) << text;
    }
}

TEST(TextToSigned, ConvertsTheFrontOrNothing) {
    EXPECT_EQ(textToSigned("-12"), -12);
    EXPECT_EQ(textToSigned("+12"), 12);
    EXPECT_EQ(textToSigned("12.9"), 12);
    EXPECT_EQ(textToSigned("1e5"), 1);
    EXPECT_EQ(textToSigned("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(textToSigned("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(textToSigned("9223372036854775808"), std::nullopt);
    EXPECT_EQ(textToSigned(""), std::nullopt);
    EXPECT_EQ(textToSigned("+-5"), std::nullopt);
    EXPECT_EQ(textToSigned("--5"), std::nullopt);
    EXPECT_EQ(textToSigned(".5"), std::nullopt);
}

TEST(TextToUnsigned, CountsBackFromTheTopForAMinus) {
    EXPECT_EQ(textToUnsigned("12"), 12u);
    EXPECT_EQ(textToUnsigned("+12"), 12u);
    EXPECT_EQ(textToUnsigned("-1"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(textToUnsigned("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(textToUnsigned("18446744073709551616"), std::nullopt);
    EXPECT_EQ(textToUnsigned("-18446744073709551616"), std::nullopt);
    EXPECT_EQ(textToUnsigned("-+5"), std::nullopt);
    EXPECT_EQ(textToUnsigned("e"), std::nullopt);
}

#include <AttributeContainer/DataOutFormat.h>

#include <AttributeContainer/ModelFormat.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <iomanip>
#include <locale>
#include <random>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <vector>

using namespace QOR;
using namespace QOR::AttributeContainer;

// What the codecs do to a stream, and that their bytes are those of the stream's own operators.

namespace {

int digitRule(double number) {
    if (number == 0) return 1;
    const double logarithm = std::log10(std::fabs(number));
    return logarithm < 0 ? 8 : static_cast<int>(std::ceil(logarithm)) + 9;
}

// The plain way to write a list of points: piece by piece through the stream.
template <class Number>
void putPieces(std::ostream& stream, const std::vector<Vec3d<Number>>& points) {
    stream << "{";
    for (const auto& point : points) {
        std::array<Number, 3> finite{point.x, point.y, point.z};
        int precision = 1;
        for (Number& number : finite) {
            if (!std::isfinite(number)) number = 0;
            precision = std::max(precision, digitRule(number));
        }
        stream << ' ';
        stream.precision(precision);
        stream << finite[0] << ' ' << finite[1] << ' ' << finite[2];
        stream.precision(8);
    }
    stream << " } ";
}

// Both ways on streams that `prepare` has set up.
template <class Number, class Prepare>
void expectSameBytes(const std::vector<Vec3d<Number>>& points, Prepare prepare) {
    std::ostringstream expected, actual;
    prepare(expected);
    prepare(actual);
    putPieces(expected, points);
    DataOutFormat<std::vector<Vec3d<Number>>>(actual, ModelFormat::Text).put(points);
    ASSERT_EQ(actual.str(), expected.str());
    ASSERT_EQ(actual.width(), expected.width());
    ASSERT_EQ(actual.precision(), 8);
}

const std::vector<Vec3d<double>> somePoints{
    {1, -2, 0.5}, {1234567, 0, -0.0}, {1e-9, 0.1, 1e20}, {0, 0, 0}, {0.1, 0.2, HUGE_VAL}};

class CommaNumbers : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

class ShoutingWriter : public std::num_put<char> {
    iter_type do_put(iter_type to, std::ios_base&, char, double) const override {
        for (const char character : {'N', 'U', 'M'}) *to++ = character;
        return to;
    }
};

// Takes so many characters and no more.
class NarrowBuffer : public std::streambuf {
public:
    explicit NarrowBuffer(std::size_t newRoom) : room(newRoom) {}
    std::string taken;

private:
    int_type overflow(int_type character) override {
        if (taken.size() >= room) return traits_type::eof();
        taken += traits_type::to_char_type(character);
        return character;
    }
    const std::size_t room;
};

class ThrowingBuffer : public std::streambuf {
    int_type overflow(int_type) override { throw std::runtime_error("disk full"); }
};

}  // namespace

TEST(DataOutFormatStream, SetsThePrecisionToEightWhenMade) {
    std::ostringstream stream;
    stream.precision(3);
    DataOutFormat<int> codec(stream, ModelFormat::Text);
    EXPECT_EQ(stream.precision(), 8);
}

TEST(DataOutFormatStream, HasPrecisionEightAgainAfterANumber) {
    std::ostringstream stream;
    DataOutFormat<double> codec(stream, ModelFormat::Text);
    stream.precision(3);
    codec.put(1e300);
    EXPECT_EQ(stream.precision(), 8);

    stream << std::fixed;  // the stream's own road
    stream.precision(3);
    codec.put(1.0);
    EXPECT_EQ(stream.precision(), 8);
}

TEST(DataOutFormatStream, LeavesThePrecisionForValuesWithoutNumbersUnderTheRule) {
    std::ostringstream stream;
    DataOutFormat<int> integer(stream, ModelFormat::Text);
    DataOutFormat<JsonValue> json(stream, ModelFormat::Text);
    stream.precision(3);
    integer.put(5);
    EXPECT_EQ(stream.precision(), 3);
    json.put({});
    EXPECT_EQ(stream.precision(), 8);
}

TEST(DataOutFormatStream, GivesTheBytesOfTheStreamForRandomBitPatterns) {
    std::mt19937_64 random(1);
    std::vector<Vec3d<double>> doubles;
    std::vector<Vec3d<float>> floats;
    const auto anyDouble = [&] { return std::bit_cast<double>(random()); };
    const auto anyFloat = [&] {
        return std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    };
    for (int i = 0; i < 20'000; ++i) {
        doubles.emplace_back(anyDouble(), anyDouble(), anyDouble());
        floats.emplace_back(anyFloat(), anyFloat(), anyFloat());
    }
    expectSameBytes(doubles, [](std::ostream&) {});
    expectSameBytes(floats, [](std::ostream&) {});
}

TEST(DataOutFormatStream, GivesTheBytesOfTheStreamForPointsOfUsualSize) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> exponent(-5, 8);
    std::vector<Vec3d<double>> doubles;
    std::vector<Vec3d<float>> floats;
    const auto number = [&] { return std::pow(10.0, exponent(random)) * (random() % 2 ? 1 : -1); };
    for (int i = 0; i < 60'000; ++i) {
        doubles.emplace_back(number(), number(), std::round(number() * 1e4) / 1e4);
        floats.emplace_back(static_cast<float>(number()), static_cast<float>(number()), 0.0f);
    }
    expectSameBytes(doubles, [](std::ostream&) {});
    expectSameBytes(floats, [](std::ostream&) {});
}

TEST(DataOutFormatStream, FormatsNumbersByTheFlagsOfTheStream) {
    expectSameBytes(somePoints, [](std::ostream& s) { s << std::fixed; });
    expectSameBytes(somePoints, [](std::ostream& s) { s << std::scientific; });
    expectSameBytes(somePoints, [](std::ostream& s) { s << std::hexfloat; });
    expectSameBytes(somePoints, [](std::ostream& s) { s << std::showpos; });
    expectSameBytes(somePoints, [](std::ostream& s) { s << std::showpoint; });
    expectSameBytes(somePoints, [](std::ostream& s) { s << std::uppercase; });
    expectSameBytes(somePoints, [](std::ostream& s) { s << std::setw(9) << std::setfill('*'); });
    expectSameBytes(somePoints, [](std::ostream& s) { s << std::left << std::setw(9); });
    expectSameBytes(somePoints, [](std::ostream& s) { s << std::unitbuf; });
}

TEST(DataOutFormatStream, FormatsNumbersByTheLocaleOfTheStream) {
    const std::locale commas(std::locale::classic(), new CommaNumbers);
    const std::locale shouting(std::locale::classic(), new ShoutingWriter);
    expectSameBytes(somePoints, [&](std::ostream& s) { s.imbue(commas); });
    expectSameBytes(somePoints, [&](std::ostream& s) { s.imbue(shouting); });
#if !defined(_WIN32)  // whose only locale with a name is "C"
    expectSameBytes(somePoints, [&](std::ostream& s) { s.imbue(std::locale("C.UTF-8")); });
#endif

    std::ostringstream stream;
    stream.imbue(commas);
    DataOutFormat<double>(stream, ModelFormat::Text).put(1234.5);
    stream << ';';
    DataOutFormat<int>(stream, ModelFormat::Text).put(1234);
    EXPECT_EQ(stream.str(), "1.234,5;1.234");
}

TEST(DataOutFormatStream, FormatsIntegersByTheFlagsOfTheStream) {
    std::ostringstream stream;
    stream << std::hex << std::showbase << std::uppercase;
    DataOutFormat<std::vector<int>>(stream, ModelFormat::Text).put({255, -1});
    EXPECT_EQ(stream.str(), "{ 0XFF 0XFFFFFFFF } ");
}

TEST(DataOutFormatStream, WritesUuidsAlikeWhateverTheFlagsAre) {
    std::ostringstream stream;
    stream << std::uppercase << std::setfill('x') << std::setw(50);
    const auto flags = stream.flags();
    DataOutFormat<uuids::uuid>(stream, ModelFormat::Text)
        .put(*uuids::uuid::parse("0123456789abcdef0123456789abcdef"));
    EXPECT_EQ(stream.str(), "01234567-89ab-cdef-0123-456789abcdef");
    EXPECT_EQ(stream.flags(), flags);
    EXPECT_EQ(stream.fill(), 'x');
    EXPECT_EQ(stream.width(), 0);
}

TEST(DataOutFormatStream, WritesNothingToAFailedStream) {
    std::ostringstream stream;
    stream.setstate(std::ios::failbit);
    DataOutFormat<std::vector<double>>(stream, ModelFormat::Text).put({1, 2});
    DataOutFormat<std::string>(stream, ModelFormat::XmlV2).put("a");
    EXPECT_EQ(stream.str(), "");
    EXPECT_EQ(stream.rdstate(), std::ios::failbit);
}

TEST(DataOutFormatStream, EndsWhereTheBufferTakesNoMore) {
    const std::vector<int> many(100'000, 7);
    std::string whole = "{";
    for (std::size_t i = 0; i < many.size(); ++i) whole += " 7";
    for (const std::size_t room : {0u, 1u, 6u, 8192u, 20'000u}) {
        NarrowBuffer buffer(room);
        std::ostream stream(&buffer);
        DataOutFormat<std::vector<int>>(stream, ModelFormat::Text).put(many);
        EXPECT_TRUE(stream.bad());
        EXPECT_EQ(buffer.taken, whole.substr(0, room));
    }
}

TEST(DataOutFormatStream, TakesAnExceptionOfTheBufferAsTheStreamDoes) {
    ThrowingBuffer buffer;
    std::ostream stream(&buffer);
    DataOutFormat<double> codec(stream, ModelFormat::Text);
    codec.put(1.5);
    EXPECT_TRUE(stream.bad());

    stream.clear();
    stream.exceptions(std::ios::badbit);
    EXPECT_THROW(codec.put(1.5), std::runtime_error);
    EXPECT_EQ(stream.precision(), 8);

    stream.clear();
    stream << std::fixed;  // the stream's own road
    EXPECT_THROW(codec.put(1.5), std::runtime_error);
    EXPECT_EQ(stream.precision(), 8);
}

TEST(DataOutFormatStream, FlushesTheStreamThatItIsTiedTo) {
    struct Flushed : std::stringbuf {
        bool flushed = false;
        int sync() override {
            flushed = true;
            return 0;
        }
    } buffer;
    std::ostream other(&buffer);
    std::ostringstream stream;
    stream.tie(&other);
    DataOutFormat<int>(stream, ModelFormat::Text).put(5);
    EXPECT_TRUE(buffer.flushed);
    EXPECT_EQ(stream.str(), "5");
}

#include "persistence/SourceBuffers.h"

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>
#include <QOR/Text.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

// That numbers are read alike from any stream, as its own operations would give them.

namespace {

// ---- the plain way to read ----------------------------------------------------------------------

void takeInfinity(std::istream& stream, double& number) {
    if (!stream.good() || stream.peek() != '#') return;
    std::string mark;
    while (mark.size() < 4 && stream.peek() != EOF) mark += static_cast<char>(stream.get());
    if (compareIgnoreCase(mark, "#INF") == 0) {
        number *= HUGE_VAL;
        return;
    }
    stream.clear();
    for (std::size_t i = 0; i < mark.size(); ++i) stream.unget();
}

bool plainGet(std::istream& stream, double& value) {
    if (!eatWS(stream).good()) return false;
    std::string token;
    while (stream.good()) {
        const int next = stream.peek();
        if (next == EOF || !isValidNumberChar(static_cast<char>(next))) break;
        token += static_cast<char>(stream.get());
    }
    if (token.empty()) return false;
    errno = 0;
    char* end = nullptr;
    const double number = std::strtod(token.c_str(), &end);
    if (errno == ERANGE) stream.clear();
    if (end != token.c_str() + token.size()) throw std::invalid_argument("Invalid number format");
    value = number;
    if (value == 1.0 || value == -1.0) takeInfinity(stream, value);
    return true;
}

bool plainGet(std::istream& stream, Vec3d<double>& value) {
    const bool x = plainGet(stream, value.x);
    const bool y = plainGet(stream, value.y);
    const bool z = plainGet(stream, value.z);
    return x || y || z;
}

bool plainGet(std::istream& stream, std::int64_t& value) {
    if (!eatWS(stream).good()) return false;
    std::string token;
    while (stream.good()) {
        const int next = stream.peek();
        if (next == EOF || !isValidNumberChar(static_cast<char>(next))) break;
        token += static_cast<char>(stream.get());
    }
    try {
        value = std::stoll(token);
    } catch (const std::exception&) {
        // the value stays
    }
    return !token.empty();
}

template <class Element> void plainGet(std::istream& stream, std::vector<Element>& list) {
    eatWS(stream);
    char character = 0;
    stream.get(character);
    list.clear();
    while (stream.good()) {
        eatWS(stream);
        if (!stream.get(character) || character == '}') break;
        stream.putback(character);
        Element element{};
        if (!plainGet(stream, element)) return stream.setstate(std::ios::failbit);
        list.push_back(element);
    }
}

// ---- comparison ---------------------------------------------------------------------------------

template <class T> struct Outcome {
    T value{};
    std::ios::iostate state{};
    bool threw = false;
    std::string rest;
};

template <class T, class Read> Outcome<T> outcomeOf(std::streambuf& buffer, Read read) {
    std::istream stream(&buffer);
    Outcome<T> outcome;
    try {
        read(stream, outcome.value);
    } catch (const std::invalid_argument&) {
        outcome.threw = true;
    }
    outcome.state = stream.rdstate();
    stream.clear();
    for (int next = buffer.sgetc(); next != EOF; next = buffer.snextc())
        outcome.rest += static_cast<char>(next);
    return outcome;
}

template <class T> void expectTheSameFromAnyBuffer(const std::string& text) {
    std::stringbuf plainBuffer(text);
    const auto expected =
        outcomeOf<T>(plainBuffer, [](auto& stream, T& value) { plainGet(stream, value); });

    std::vector<std::unique_ptr<std::streambuf>> buffers;
    buffers.push_back(std::make_unique<std::stringbuf>(text));
    for (const std::size_t step : {1, 2, 7, 50})
        buffers.push_back(std::make_unique<SmallAreas>(text, step));
    buffers.push_back(std::make_unique<NoArea>(text));
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        const auto actual = outcomeOf<T>(*buffers[i], [](auto& stream, T& value) {
            value = DataInFormat<T>(stream, ModelFormat::Text).get();
        });
        ASSERT_EQ(actual.state, expected.state) << i << ": " << text;
        ASSERT_EQ(actual.threw, expected.threw) << i << ": " << text;
        ASSERT_EQ(actual.rest, expected.rest) << i << ": " << text;
        if (expected.threw) continue;
        ASSERT_EQ(actual.value, expected.value) << i << ": " << text;
    }
}

std::string randomText(std::mt19937_64& random) {
    static const std::vector<std::string> pieces{
        " ",
        " ",
        " ",
        "{ ",
        " }",
        "}",
        "1",
        "-2.5",
        "0.125",
        "1e5",
        "1e",
        "1.#INF",
        "1#IN",
        "-1.#inf",
        "1e400",
        "1e-320",
        "x",
        "#",
        "\n",
        ".",
        "+",
        "-",
        "7",
        "1234567890123456789",
        "12345678901234567890123",
        "0.000001234567890123456",
        "00000000000000000000000000000000000000000000000000000001",
        "9007199254740993",
        "18446744073709551616",
        "-0",
        "1-",
        "1.0",
        "3.14159265358979"};
    std::string text;
    if (random() % 8 != 0) text += "{ ";
    for (auto size = random() % 30; size > 0; --size) {
        text += pieces[random() % (random() % 4 == 0 ? pieces.size() : 9)];
        if (random() % 4 != 0) text += ' ';
    }
    return text;
}

}  // namespace

TEST(DataInFormatStream, ReadsAlikeFromAnyBuffer) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 6'000; ++i) {
        const std::string text = randomText(random);
        const std::string single = text.starts_with("{") ? text.substr(1) : text;
        ASSERT_NO_FATAL_FAILURE(expectTheSameFromAnyBuffer<double>(single));
        ASSERT_NO_FATAL_FAILURE(expectTheSameFromAnyBuffer<std::int64_t>(single));
        ASSERT_NO_FATAL_FAILURE(expectTheSameFromAnyBuffer<Vec3d<double>>(single));
        ASSERT_NO_FATAL_FAILURE(expectTheSameFromAnyBuffer<std::vector<double>>(text));
        ASSERT_NO_FATAL_FAILURE(expectTheSameFromAnyBuffer<std::vector<std::int64_t>>(text));
        ASSERT_NO_FATAL_FAILURE(expectTheSameFromAnyBuffer<std::vector<Vec3d<double>>>(text));
    }
}

TEST(DataInFormatStream, ReadsAlikeWhereverALongListIsCut) {
    std::string text = "{";
    std::mt19937_64 random(2);
    for (int i = 0; i < 60; ++i) text += ' ' + std::to_string(static_cast<double>(random()) / 1e17);
    text += " } behind";
    for (std::size_t size = 0; size <= text.size(); ++size)
        ASSERT_NO_FATAL_FAILURE(
            expectTheSameFromAnyBuffer<std::vector<Vec3d<double>>>(text.substr(0, size)));
}

TEST(DataInFormatStream, ReadsRandomNumbersAsStrtodDoes) {
    std::mt19937_64 random(3);
    std::vector<double> expected;
    std::string text = "{";
    for (int i = 0; i < 200'000; ++i) {
        char number[64];
        std::uniform_real_distribution<double> exponent(-6, 12);
        std::snprintf(number, sizeof number, " %.*g", 1 + static_cast<int>(random() % 19),
                      std::pow(10.0, exponent(random)) * (random() % 2 ? 1 : -1));
        text += number;
        expected.push_back(std::strtod(number, nullptr));
    }
    text += " } ";
    std::istringstream stream(text);
    DataInFormat<std::vector<double>> codec(stream, ModelFormat::Text);
    const auto& numbers = codec.get();
    ASSERT_EQ(numbers.size(), expected.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) ASSERT_EQ(numbers[i], expected[i]);
}

TEST(DataInFormatStream, StandsBehindAListInAFile) {
    const std::string path = testing::TempDir() + "DataInFormatStream_test.txt";
    std::vector<Vec3d<double>> points;
    for (int i = 0; i < 3000; ++i) points.emplace_back(i / 8.0, -i, i / 1000.0);
    {
        std::ofstream file(path);
        DataOutFormat<std::vector<Vec3d<double>>> codec(file, ModelFormat::Text);
        codec.put(points);
        codec.put({});
        codec.put(points);
        file << "behind";
    }
    std::ifstream file(path);
    DataInFormat<std::vector<Vec3d<double>>> codec(file, ModelFormat::Text);
    EXPECT_EQ(codec.get(), points);
    EXPECT_EQ(codec.get().size(), 0u);
    EXPECT_EQ(codec.get(), points);
    std::string word;
    file >> word;
    EXPECT_EQ(word, "behind");
    file.close();
    std::remove(path.c_str());
}

TEST(DataInFormatStream, StandsBehindANumberThatThrows) {
    std::istringstream stream("{ 1 2 3e 4 5 } ");
    DataInFormat<std::vector<double>> codec(stream, ModelFormat::Text);
    EXPECT_THROW(codec.get(), std::invalid_argument);
    std::string rest;
    std::getline(stream, rest);
    EXPECT_EQ(rest, " 4 5 } ");
}

TEST(DataInFormatStream, ReadsANumberOfAMillionDigits) {
    const std::string digits(1'000'000, '3');
    std::istringstream stream("{ " + digits + " 0." + digits + " } ");
    DataInFormat<std::vector<double>> codec(stream, ModelFormat::Text);
    EXPECT_EQ(codec.get(), (std::vector<double>{HUGE_VAL, 1.0 / 3}));
    EXPECT_EQ(DataInFormat<int>(stream, ModelFormat::Text).get(), 0);
}

TEST(DataInFormatStream, TakesAnExceptionOfTheBufferAsTheStreamDoes) {
    for (const char* const text : {"", "12", "12.", "{ 1 2", "{ 1 "}) {
        BreakingBuffer buffer(text);
        std::istream stream(&buffer);
        EXPECT_NO_THROW(DataInFormat<std::vector<double>>(stream, ModelFormat::Text).get());
        EXPECT_TRUE(stream.bad()) << text;
    }
    BreakingBuffer buffer("12");
    std::istream stream(&buffer);
    EXPECT_EQ(DataInFormat<double>(stream, ModelFormat::Text).get(), 12.0);
    EXPECT_EQ(stream.rdstate(), std::ios::badbit);

    BreakingBuffer other("12");
    std::istream throwing(&other);
    throwing.exceptions(std::ios::badbit);
    EXPECT_THROW(DataInFormat<double>(throwing, ModelFormat::Text).get(), std::runtime_error);
}

TEST(DataInFormatStream, ThrowsForTheEndOfTheInputWhereTheStreamIsToThrow) {
    std::istringstream stream("1 2");
    stream.exceptions(std::ios::eofbit);
    DataInFormat<Vec3d<double>> codec(stream, ModelFormat::Text);
    EXPECT_THROW(codec.get(), std::ios::failure);
    EXPECT_EQ(stream.rdstate(), std::ios::eofbit);
}

TEST(DataInFormatStream, FlushesTheStreamThatItIsTiedTo) {
    struct Flushed : std::stringbuf {
        bool flushed = false;
        int sync() override {
            flushed = true;
            return 0;
        }
    } buffer;
    std::ostream other(&buffer);
    std::istringstream stream("5");
    stream.tie(&other);
    DataInFormat<double>(stream, ModelFormat::Text).get();
    EXPECT_TRUE(buffer.flushed);
}

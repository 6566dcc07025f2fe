// How fast lists of points become text and come back, held against bare loops of std::to_chars and
// std::from_chars over the same bytes.
#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/AllocationCount.h"
#include "support/RatioTable.h"

using QOR::Vec3d;
namespace ac = QOR::AttributeContainer;

namespace {

// ---- points -----------------------------------------------------------------------------------

constexpr std::size_t numPoints = 1'000'000;

class Random {  // splitmix64: the same numbers on every system
public:
    double unit() {
        std::uint64_t z = (state += 0x9e37'79b9'7f4a'7c15);
        z = (z ^ (z >> 30)) * 0xbf58'476d'1ce4'e5b9;
        z = (z ^ (z >> 27)) * 0x94d0'49bb'1331'11eb;
        return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
    }

private:
    std::uint64_t state = 12345;
};

double sixDigits(double number) {
    char text[40];
    std::snprintf(text, sizeof text, "%.6g", number);
    return std::strtod(text, nullptr);
}

// Points around a scanner, 1 to 60 m away, with six digits as scanners export them.
std::vector<Vec3d<double>> makeScan() {
    Random random;
    std::vector<Vec3d<double>> points;
    points.reserve(numPoints);
    for (std::size_t i = 0; i < numPoints; ++i) {
        const double azimuth = 6.283185307179586 * random.unit();
        const double elevation = -0.9 + 2.2 * random.unit();
        const double middle = random.unit() * random.unit();
        const double range = std::exp(0.2 + 3.6 * middle + 0.4 * random.unit());
        points.emplace_back(sixDigits(range * std::cos(elevation) * std::cos(azimuth)),
                            sixDigits(range * std::cos(elevation) * std::sin(azimuth)),
                            sixDigits(range * std::sin(elevation)));
    }
    return points;
}

template <class Number> const std::vector<Vec3d<Number>>& scan();

template <> const std::vector<Vec3d<double>>& scan() {
    static const auto points = makeScan();
    return points;
}
template <> const std::vector<Vec3d<float>>& scan() {
    static const auto points = [] {
        std::vector<Vec3d<float>> result;
        result.reserve(numPoints);
        for (const auto& p : scan<double>())
            result.emplace_back(static_cast<float>(p.x), static_cast<float>(p.y),
                                static_cast<float>(p.z));
        return result;
    }();
    return points;
}

// The scan turned about an axis, so that every number has all its binary digits.
const std::vector<Vec3d<double>>& turnedScan() {
    static const auto points = [] {
        std::vector<Vec3d<double>> result;
        result.reserve(numPoints);
        const double c = std::cos(0.7), s = std::sin(0.7);
        for (const auto& p : scan<double>())
            result.emplace_back(c * p.x - s * p.y + 0.123456789, s * p.x + c * p.y,
                                p.z * 1.0000123 + 1.7);
        return result;
    }();
    return points;
}

// ---- the bare loops ---------------------------------------------------------------------------

template <class Number> std::string bareWrite(const std::vector<Vec3d<Number>>& points) {
    constexpr std::array<double, 8> powers{1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7};
    std::string text = "{";
    char piece[200];
    for (const auto& p : points) {
        const double x = p.x, y = p.y, z = p.z;
        const double largest = std::max({std::fabs(x), std::fabs(y), std::fabs(z)});
        int precision = 9;
        for (std::size_t i = 0; largest > powers[i]; ++i) ++precision;
        if (largest < 1) precision = largest == 0 ? 1 : 8;

        char* end = piece;
        for (const double number : {x, y, z}) {
            *end++ = ' ';
            end = std::to_chars(end, piece + sizeof piece, number, std::chars_format::general,
                                precision)
                      .ptr;
        }
        text.append(piece, end);
    }
    return text += " } ";
}

template <class Number> std::vector<Vec3d<Number>> bareRead(std::string_view text) {
    std::vector<Vec3d<Number>> points;
    const char* at = text.data() + 1;
    const char* const end = text.data() + text.size();
    const auto skipBlanks = [&] {
        while (at < end && *at == ' ') ++at;
    };
    const auto readNumber = [&](Number& number) {
        skipBlanks();
        double read = 0;
        at = std::from_chars(at, end, read).ptr;
        if constexpr (std::is_same_v<Number, float>)  // as the model stream holds them
            read = std::clamp(read, double{std::numeric_limits<float>::min()},
                              double{std::numeric_limits<float>::max()});
        number = static_cast<Number>(read);
    };
    for (skipBlanks(); at < end && *at != '}'; skipBlanks()) {
        Vec3d<Number> point;
        readNumber(point.x);
        readNumber(point.y);
        readNumber(point.z);
        points.push_back(point);
    }
    return points;
}

// ---- the codecs -------------------------------------------------------------------------------

template <class Number> std::string codecWrite(const std::vector<Vec3d<Number>>& points) {
    std::ostringstream stream;
    ac::DataOutFormat<std::vector<Vec3d<Number>>>(stream, ac::ModelFormat::Text).put(points);
    return std::move(stream).str();
}

// ---- benchmarks -------------------------------------------------------------------------------

void finish(benchmark::State& state, std::size_t numBytes, std::uint64_t allocations) {
    const double elements = static_cast<double>(state.iterations()) * numPoints;
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * numBytes));
    state.counters["points"] = benchmark::Counter(elements, benchmark::Counter::kIsRate);
    state.counters["allocs/point"] = static_cast<double>(allocations) / elements;
}

template <class Number, class Write>
void writing(benchmark::State& state, const std::vector<Vec3d<Number>>& points, Write write) {
    std::size_t numBytes = 0;
    const auto before = bench::allocationCount();
    for (auto _ : state) {
        const std::string text = write(points);
        numBytes = text.size();
        benchmark::DoNotOptimize(text.data());
    }
    finish(state, numBytes, bench::allocationCount() - before);
}

template <class Number>
void readingByCodec(benchmark::State& state, const std::vector<Vec3d<Number>>& points) {
    const std::string text = bareWrite(points);
    std::istringstream stream(text);
    const auto before = bench::allocationCount();
    for (auto _ : state) {
        stream.clear();
        stream.seekg(0);
        ac::DataInFormat<std::vector<Vec3d<Number>>> codec(stream, ac::ModelFormat::Text);
        benchmark::DoNotOptimize(codec.get().data());
    }
    finish(state, text.size(), bench::allocationCount() - before);
}

template <class Number>
void readingByLoop(benchmark::State& state, const std::vector<Vec3d<Number>>& points) {
    const std::string text = bareWrite(points);
    const auto before = bench::allocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(bareRead<Number>(text).data());
    finish(state, text.size(), bench::allocationCount() - before);
}

template <class Number>
void addBenchmarks(const std::string& name, const std::vector<Vec3d<Number>>& points) {
    const auto add = [&](const std::string& suffix, auto run) {
        benchmark::RegisterBenchmark((name + suffix).c_str(), run)
            ->Unit(benchmark::kMillisecond)
            ->Repetitions(5);
    };
    add("/write/loop", [&points](auto& state) { writing(state, points, bareWrite<Number>); });
    add("/write/codec", [&points](auto& state) { writing(state, points, codecWrite<Number>); });
    add("/read/loop", [&points](auto& state) { readingByLoop(state, points); });
    add("/read/codec", [&points](auto& state) { readingByCodec(state, points); });
}

// A comparison counts only if both write the same bytes and read the same points.
template <class Number> bool agree(const char* name, const std::vector<Vec3d<Number>>& points) {
    const std::string text = bareWrite(points);
    std::istringstream stream(text);
    ac::DataInFormat<std::vector<Vec3d<Number>>> codec(stream, ac::ModelFormat::Text);
    const bool sameText = codecWrite(points) == text;
    const bool samePoints = codec.get() == bareRead<Number>(text);
    if (!sameText) std::fprintf(stderr, "%s: the codec writes other bytes than the loop\n", name);
    if (!samePoints) std::fprintf(stderr, "%s: the codec reads other points than the loop\n", name);
    return sameText && samePoints;
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    if (!agree("double", scan<double>()) || !agree("float", scan<float>()) ||
        !agree("turned", turnedScan()))
        return 1;

    addBenchmarks("double", scan<double>());
    addBenchmarks("float", scan<float>());
    addBenchmarks("turned", turnedScan());
    bench::BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);

    std::vector<bench::Ratio> ratios;
    bool allocatesNothing = true;
    for (const std::string name : {"double", "float", "turned"}) {
        const auto speed = [&](const std::string& job) {
            return times.seconds(name + job + "/loop") / times.seconds(name + job + "/codec");
        };
        ratios.push_back({"speed of writing points, " + name + ", codec : loop", speed("/write"),
                          bench::Ratio::AtLeast, 0.8});
        ratios.push_back({"speed of reading points, " + name + ", codec : loop", speed("/read"),
                          bench::Ratio::AtLeast, 0.6});
        for (const char* const job : {"/write/codec", "/read/codec"}) {
            const double allocations = times.counter(name + job, "allocs/point");
            // what the growth of one text or list takes for a million points
            allocatesNothing = allocatesNothing && allocations < 1e-4;
            std::printf("allocations a point, %s%s: %.6f\n", name.c_str(), job, allocations);
        }
    }
    return bench::printRatios(ratios) && allocatesNothing ? 0 : 1;
}

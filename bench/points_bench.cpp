// How fast lists of points become text and come back, held against bare loops of std::to_chars and
// std::from_chars over the same bytes.
#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

using QOR::Vec3d;
namespace ac = QOR::AttributeContainer;

// ---- allocations ------------------------------------------------------------------------------

static std::atomic<std::uint64_t> numAllocations{0};

// Where one of these is inlined, compilers take the free for one that does not fit its allocation.
[[gnu::noinline]] void* operator new(std::size_t size) {
    numAllocations.fetch_add(1, std::memory_order_relaxed);
    if (void* const memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

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
    const auto before = numAllocations.load();
    for (auto _ : state) {
        const std::string text = write(points);
        numBytes = text.size();
        benchmark::DoNotOptimize(text.data());
    }
    finish(state, numBytes, numAllocations.load() - before);
}

template <class Number>
void readingByCodec(benchmark::State& state, const std::vector<Vec3d<Number>>& points) {
    const std::string text = bareWrite(points);
    std::istringstream stream(text);
    const auto before = numAllocations.load();
    for (auto _ : state) {
        stream.clear();
        stream.seekg(0);
        ac::DataInFormat<std::vector<Vec3d<Number>>> codec(stream, ac::ModelFormat::Text);
        benchmark::DoNotOptimize(codec.get().data());
    }
    finish(state, text.size(), numAllocations.load() - before);
}

template <class Number>
void readingByLoop(benchmark::State& state, const std::vector<Vec3d<Number>>& points) {
    const std::string text = bareWrite(points);
    const auto before = numAllocations.load();
    for (auto _ : state) benchmark::DoNotOptimize(bareRead<Number>(text).data());
    finish(state, text.size(), numAllocations.load() - before);
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
template <class Number>
bool agree(const char* name, const std::vector<Vec3d<Number>>& points) {
    const std::string text = bareWrite(points);
    std::istringstream stream(text);
    ac::DataInFormat<std::vector<Vec3d<Number>>> codec(stream, ac::ModelFormat::Text);
    const bool sameText = codecWrite(points) == text;
    const bool samePoints = codec.get() == bareRead<Number>(text);
    if (!sameText) std::fprintf(stderr, "%s: the codec writes other bytes than the loop\n", name);
    if (!samePoints) std::fprintf(stderr, "%s: the codec reads other points than the loop\n", name);
    return sameText && samePoints;
}

// Keeps the best time of each benchmark for the table.
class BestTimes : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
            double& best = times.try_emplace(run.run_name.function_name, HUGE_VAL).first->second;
            best = std::min(best, run.GetAdjustedCPUTime());
            allocations[run.run_name.function_name] = run.counters.at("allocs/point");
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void printTable() const {
        std::printf("\n| points | loop ms | codec ms | codec speed / loop speed | allocations a point |\n");
        std::printf("|---|---|---|---|---|\n");
        for (const auto& [name, codec] : times) {
            const auto cut = name.find("/codec");
            if (cut == std::string::npos) continue;
            const auto loop = times.find(name.substr(0, cut) + "/loop");
            if (loop == times.end()) continue;
            std::printf("| %s | %.1f | %.1f | %.2f | %.6f |\n", name.substr(0, cut).c_str(),
                        loop->second, codec, loop->second / codec, allocations.at(name));
        }
    }

private:
    std::map<std::string, double> times;
    std::map<std::string, double> allocations;
};

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
    BestTimes reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printTable();
    return 0;
}

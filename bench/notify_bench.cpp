// What a change of a watched value costs, held against a value with plain vectors of callbacks and,
// where they are installed, against the signals of other libraries.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "notify/Contender.h"
#include "notify/WatchedAttribute.h"
#include "support/RatioTable.h"

using bench::notify::Contender;
using bench::notify::contenders;
using bench::notify::nameOf;
using bench::notify::Setting;
using bench::notify::settings;

namespace {

// The least code that does the work: callbacks before and after a store.
class PlainValue {
public:
    PlainValue(int numPost, bool hasVeto) : sums(static_cast<std::size_t>(numPost)) {
        for (double& sum : sums) post.push_back([&sum](double added) { sum += added; });
        if (hasVeto) pre.push_back([](double wanted) { return wanted >= 0; });
    }
    [[gnu::noinline]] void set(double wanted) {
        for (auto& ask : pre)
            if (!ask(wanted)) return;
        value = wanted;
        for (auto& tell : post) tell(value);
    }
    double sum() const {
        double total = 0;
        for (const double part : sums) total += part;
        return total;
    }

private:
    double value = 0;
    std::vector<std::function<bool(double)>> pre;
    std::vector<std::function<void(double)>> post;
    std::vector<double> sums;
};

using bench::notify::WatchedAttribute;

const bench::notify::Entry<PlainValue> plainEntry{"plain"};
const bench::notify::Entry<WatchedAttribute> attributeEntry{"attribute"};

// The greatest ratio to the plain value, for each setting.
constexpr double limits[] = {4, 6, 5, 4, 20, 17, 12};
static_assert(std::size(limits) == std::size(settings));

// All contenders in turn for each setting, so that a slow moment hits neighbours alike.
void addBenchmarks() {
    for (const Setting& setting : settings)
        for (const Contender& contender : contenders())
            benchmark::RegisterBenchmark(nameOf(contender.name, setting).c_str(),
                                         [=](auto& state) { contender.run(state, setting); })
                ->Repetitions(5)
                ->MinTime(0.05);
}

bool printSpeed(const bench::BestTimes& times) {
    std::vector<bench::Ratio> ratios;
    for (std::size_t i = 0; i < std::size(settings); ++i) {
        const std::string ours = nameOf("attribute", settings[i]);
        for (const Contender& other : contenders()) {
            if (other.name == "attribute") continue;
            const double limit = other.name == "plain" ? limits[i] : 1;
            ratios.push_back({"time of a set, " + ours + " : " + other.name,
                              times.seconds(ours) / times.seconds(nameOf(other.name, settings[i])),
                              bench::Ratio::AtMost, limit});
        }
    }
    return bench::printRatios(ratios);
}

// Everybody's time as a multiple of the plain value's.
void printTable(const bench::BestTimes& times) {
    std::printf("\n%-16s", "times the plain");
    for (const Setting& setting : settings) std::printf(" %14s", nameOf("", setting).c_str());
    for (const Contender& contender : contenders()) {
        std::printf("\n%-16s", contender.name.c_str());
        for (const Setting& setting : settings)
            std::printf(" %14.1f", times.seconds(nameOf(contender.name, setting)) /
                                       times.seconds(nameOf("plain", setting)));
    }
    std::printf("\n\n");
    if (contenders().size() < 4)
        std::printf(
            "Boost.Signals2 and GObject are in the table where libboost-dev and "
            "libglib2.0-dev are installed.\n");
}

bool printAllocations(const bench::BestTimes& times) {
    bool isHeld = true;
    for (const Setting& setting : settings) {
        const double allocations = times.counter(nameOf("attribute", setting), "allocs/set");
        const double allowed = setting.hasVeto ? 1 : 0;
        std::printf("allocations of a set, %s: %.3f, wanted at most %.0f%s\n",
                    nameOf("attribute", setting).c_str(), allocations, allowed,
                    allocations <= allowed ? "" : "   MISSED");
        isHeld = isHeld && allocations <= allowed;
    }
    return isHeld;
}

}  // namespace

int main(int argc, char** argv) {
    addBenchmarks();
    benchmark::Initialize(&argc, argv);
    bench::BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);

    const bool isFast = printSpeed(times);
    printTable(times);
    const bool allocatesLittle = printAllocations(times);
    return isFast && allocatesLittle ? 0 : 1;
}

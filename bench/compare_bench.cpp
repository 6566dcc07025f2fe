// How the cost of comparing, merging and marking grows: with the number of fields of ten
// attributes, and with the number of attributes that were added to one container, each held against
// its half.
#include <AttributeContainer/AttributeContainer.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "support/RatioTable.h"

namespace ac = QOR::AttributeContainer;

namespace {

constexpr double growthLimit = 2.3;  // twice the attributes, and what memory and caches add to it

using Tree = std::shared_ptr<ac::AttrContainer>;

// Every `everyNth` value is another one; with 0 none is.
void addNumbers(ac::AttrContainer& container, int numAttributes, int everyNth) {
    for (int i = 0; i < numAttributes; ++i) {
        const auto attribute = std::make_shared<ac::CustAttr<double>>(std::nullopt);
        attribute->set(everyNth != 0 && i % everyNth == 0 ? -1.0 : i);
        container.addAttribute(attribute, "value" + std::to_string(i));
    }
}

/// How many fields a tree has, and how many attributes each, the name among them.
struct Size {
    int numFields;
    int numAttributes;

    int total() const { return numFields * numAttributes; }
};

Tree build(const Size& size, int everyNth) {
    auto root = ac::AttrContainer::create();
    for (int i = 0; i < size.numFields; ++i) {
        const auto field = ac::AttrContainer::create();
        addNumbers(*field, size.numAttributes - 1, everyNth);
        root->addField(field, "field" + std::to_string(i), 0);
    }
    return root;
}

/// What grows. Where the containers do, there are the fewer of them: with as much memory in both
/// trees it is the growth alone that shows, and not which of the two a cache can hold.
struct Growth {
    const char* what;
    Size small;
    Size large;
    double factor;  // from the ratio of the times to that of what grows
};
constexpr Growth growths[] = {
    {"100,000 : 50,000 attributes", {5'000, 10}, {10'000, 10}, 1},
    {"containers of 10,000 : of 5,000", {16, 5'000}, {8, 10'000}, 2},
};

/// Two trees that differ in every `everyNth` attribute, or are equal.
struct Pair {
    Pair(const Size& size, int everyNth) : target(build(size, 0)), source(build(size, everyNth)) {}

    Tree target;
    Tree source;
};

std::uint64_t numDifferences(const Pair& pair) {
    return ac::AttrContComparer(-1, 0).compare(*pair.target, *pair.source);
}

void require(benchmark::State& state, bool isRight) {
    if (!isRight) state.SkipWithError("the outcome is wrong");
}

void compareEqual(benchmark::State& state, const Size& size) {
    const Pair pair(size, 0);
    for (auto _ : state) require(state, numDifferences(pair) == 0);
}

void keepAllDiffs(benchmark::State& state, const Size& size) {
    const Pair pair(size, 1);
    const ac::AttrContComparerKeepDiffs comparer;
    comparer.compare(*pair.target, *pair.source);  // so that the list has its room
    for (auto _ : state) {
        comparer.compare(*pair.target, *pair.source);
        require(state, comparer.getNumMismatches() > static_cast<unsigned>(size.total()) * 8 / 10);
    }
}

void mergeUnchanged(benchmark::State& state, const Size& size) {
    const Pair pair(size, 0);
    for (auto _ : state) {
        ac::AttrContMerger::Result result;
        ac::AttrContMerger::merge(*pair.target, *pair.source,
                                  ac::AttrContMerger::ASSIGN_ONLY_CHANGED_VALUES, &result);
        require(state, result.numChanged == 0 && result.numUnchanged > 0);
    }
}

void mergeTenth(benchmark::State& state, const Size& size) {
    for (auto _ : state) {
        state.PauseTiming();
        auto pair = std::make_unique<Pair>(size, 10);
        state.ResumeTiming();
        ac::AttrContMerger::Result result;
        ac::AttrContMerger::merge(*pair->target, *pair->source, 0, &result);
        state.PauseTiming();
        require(state, result.numChanged > 0 && numDifferences(*pair) == 0);
        pair.reset();
        state.ResumeTiming();
    }
}

// Everything comes to an empty container, and goes from it again.
void addAndRemove(benchmark::State& state, const Size& size) {
    const Tree full = build(size, 0);
    const Tree empty = ac::AttrContainer::create();
    for (auto _ : state) {
        const Tree target = ac::AttrContainer::create();
        ac::AttrContMerger::Result result;
        ac::AttrContMerger::merge(*target, *full, 0, &result);
        ac::AttrContMerger::merge(*target, *empty, 0, &result);
        require(state, target->getNumAttributes() + target->getNumFields() == 1 &&
                           result.numAttributesAdded + result.numFieldsAdded ==
                               result.numAttributesRemoved + result.numFieldsRemoved);
    }
}

constexpr unsigned allLevels = std::numeric_limits<unsigned>::max();

void countMarks(benchmark::State& state, const Size& size) {
    const Tree tree = build(size, 0);
    ac::SetAttrMarksVisitor mark(true, allLevels);
    tree->attributeVisitor(mark, true);
    for (auto _ : state) {
        ac::AttrCountMarkedVisitor count(allLevels);
        tree->attributeVisitor(count, true);
        require(state, count.getNumMarkedAttributes() > static_cast<unsigned>(size.total()));
    }
}

void copyMarked(benchmark::State& state, const Size& size) {
    const Pair pair(size, 10);
    ac::AttrContComparerMarkDiffs(ac::AttrContComparerMarkDiffs::markSecond)
        .compare(*pair.target, *pair.source);
    for (auto _ : state) {
        ac::AttrCopyVisitor copy(*pair.target, allLevels);
        copy.setConsiderAuxiliaryOnly(true);
        pair.source->attributeVisitor(copy, true);
    }
    require(state, numDifferences(pair) == 0);
}

struct Job {
    const char* name;
    void (*run)(benchmark::State&, const Size&);
};
constexpr Job jobs[] = {
    {"compare equal", compareEqual},      {"keep all differences", keepAllDiffs},
    {"merge unchanged", mergeUnchanged},  {"merge a tenth", mergeTenth},
    {"add and remove all", addAndRemove}, {"count marks", countMarks},
    {"copy marked", copyMarked}};

std::string nameOf(const Job& job, const Size& size) {
    return std::string(job.name) + "/" + std::to_string(size.numFields) + "x" +
           std::to_string(size.numAttributes);
}

bench::Ratio growthOf(const Job& job, const Growth& growth, const bench::BestTimes& times) {
    const double large = times.seconds(nameOf(job, growth.large));
    const double small = times.seconds(nameOf(job, growth.small));
    return {std::string(job.name) + ", " + growth.what,
            small > 0 ? growth.factor * large / small : 0, bench::Ratio::AtMost, growthLimit};
}

}  // namespace

int main(int argc, char** argv) {
    for (const Growth& growth : growths)
        for (const Job& job : jobs)
            for (const Size& size : {growth.small, growth.large})
                benchmark::RegisterBenchmark(nameOf(job, size).c_str(),
                                             [=](auto& state) { job.run(state, size); })
                    ->Unit(benchmark::kMillisecond)
                    ->Iterations(1)
                    ->Repetitions(9);
    // In turn, so that both sizes meet the same load of a shared machine.
    char interleave[] = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, interleave);
    argc = static_cast<int>(arguments.size());
    benchmark::Initialize(&argc, arguments.data());
    bench::BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);

    std::vector<bench::Ratio> ratios;
    for (const Growth& growth : growths)
        for (const Job& job : jobs) ratios.push_back(growthOf(job, growth, times));
    return bench::printRatios(ratios) ? 0 : 1;
}

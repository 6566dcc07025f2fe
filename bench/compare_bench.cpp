// How the cost of comparing, merging and marking grows with the number of attributes: trees of many
// small fields, and one flat container of custom attributes, each size held against its half.
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

// Ten attributes in each field, the name among them.
Tree buildFields(int numAttributes, int everyNth) {
    auto root = ac::AttrContainer::create();
    for (int i = 0; i < numAttributes / 10; ++i) {
        const auto field = ac::AttrContainer::create();
        addNumbers(*field, 9, everyNth);
        root->addField(field, "field" + std::to_string(i), 0);
    }
    return root;
}

Tree buildFlat(int numAttributes, int everyNth) {
    auto root = ac::AttrContainer::create();
    addNumbers(*root, numAttributes, everyNth);
    return root;
}

struct Shape {
    const char* name;
    Tree (*build)(int, int);
    int largeSize;
};
constexpr Shape shapes[] = {{"fields", buildFields, 100'000}, {"flat", buildFlat, 10'000}};

/// Two trees that differ in every `everyNth` attribute, or are equal.
struct Pair {
    Pair(const Shape& shape, int numAttributes, int everyNth)
        : target(shape.build(numAttributes, 0)), source(shape.build(numAttributes, everyNth)) {}

    Tree target;
    Tree source;
};

std::uint64_t numDifferences(const Pair& pair) {
    return ac::AttrContComparer(-1, 0).compare(*pair.target, *pair.source);
}

void require(benchmark::State& state, bool isRight) {
    if (!isRight) state.SkipWithError("the outcome is wrong");
}

void compareEqual(benchmark::State& state, const Shape& shape, int numAttributes) {
    const Pair pair(shape, numAttributes, 0);
    for (auto _ : state) require(state, numDifferences(pair) == 0);
}

void keepAllDiffs(benchmark::State& state, const Shape& shape, int numAttributes) {
    const Pair pair(shape, numAttributes, 1);
    const ac::AttrContComparerKeepDiffs comparer;
    for (auto _ : state) {
        comparer.compare(*pair.target, *pair.source);
        require(state, comparer.getNumMismatches() > static_cast<unsigned>(numAttributes) * 8 / 10);
    }
}

void mergeUnchanged(benchmark::State& state, const Shape& shape, int numAttributes) {
    const Pair pair(shape, numAttributes, 0);
    for (auto _ : state) {
        ac::AttrContMerger::Result result;
        ac::AttrContMerger::merge(*pair.target, *pair.source,
                                  ac::AttrContMerger::ASSIGN_ONLY_CHANGED_VALUES, &result);
        require(state, result.numChanged == 0 && result.numUnchanged > 0);
    }
}

void mergeTenth(benchmark::State& state, const Shape& shape, int numAttributes) {
    for (auto _ : state) {
        state.PauseTiming();
        auto pair = std::make_unique<Pair>(shape, numAttributes, 10);
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
void addAndRemove(benchmark::State& state, const Shape& shape, int numAttributes) {
    const Tree full = shape.build(numAttributes, 0);
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

void countMarks(benchmark::State& state, const Shape& shape, int numAttributes) {
    const Tree tree = shape.build(numAttributes, 0);
    ac::SetAttrMarksVisitor mark(true, allLevels);
    tree->attributeVisitor(mark, true);
    for (auto _ : state) {
        ac::AttrCountMarkedVisitor count(allLevels);
        tree->attributeVisitor(count, true);
        require(state, count.getNumMarkedAttributes() > static_cast<unsigned>(numAttributes));
    }
}

void copyMarked(benchmark::State& state, const Shape& shape, int numAttributes) {
    const Pair pair(shape, numAttributes, 10);
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
    void (*run)(benchmark::State&, const Shape&, int);
};
constexpr Job jobs[] = {
    {"compare equal", compareEqual},     {"keep all differences", keepAllDiffs},
    {"merge unchanged", mergeUnchanged}, {"merge a tenth", mergeTenth},
    {"add and remove all", addAndRemove}, {"count marks", countMarks},
    {"copy marked", copyMarked}};

std::string nameOf(const Job& job, const Shape& shape, int numAttributes) {
    return std::string(job.name) + "/" + shape.name + "/" + std::to_string(numAttributes);
}

bench::Ratio growthOf(const Job& job, const Shape& shape, const bench::BestTimes& times) {
    const int size = shape.largeSize;
    const double large = times.seconds(nameOf(job, shape, size));
    const double small = times.seconds(nameOf(job, shape, size / 2));
    return {std::string(job.name) + " " + std::to_string(size) + " attributes : half, " + shape.name,
            small > 0 ? large / small : 0, bench::Ratio::AtMost, growthLimit};
}

}  // namespace

int main(int argc, char** argv) {
    for (const Shape& shape : shapes)
        for (const Job& job : jobs)
            for (const int numAttributes : {shape.largeSize / 2, shape.largeSize})
                benchmark::RegisterBenchmark(
                    nameOf(job, shape, numAttributes).c_str(),
                    [=](auto& state) { job.run(state, shape, numAttributes); })
                    ->Unit(benchmark::kMillisecond)
                    ->Iterations(1)
                    ->Repetitions(9);
    benchmark::Initialize(&argc, argv);
    bench::BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);

    std::vector<bench::Ratio> ratios;
    for (const Shape& shape : shapes)
        for (const Job& job : jobs) ratios.push_back(growthOf(job, shape, times));
    return bench::printRatios(ratios) ? 0 : 1;
}

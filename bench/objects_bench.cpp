// How the cost of a tree grows with its size: building, writing and reading objects under one flat
// parent and in a tree of fan-out ten, each size held against its half.
#include <AttributeContainer/AttributeContainer.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/RatioTable.h"

namespace ac = QOR::AttributeContainer;

namespace {

constexpr int smallSize = 50'000;
constexpr int largeSize = 100'000;
constexpr double growthLimit = 2.3;  // twice the objects, and what memory and caches add to it

using Tree = std::shared_ptr<ac::Object>;

Tree makeNumbered(int number) {
    auto object = ac::Object::create();
    object->name("scan" + std::to_string(number));
    object->Event("measured");
    return object;
}

Tree buildFlat(int numObjects) {
    auto root = ac::Object::create();
    for (int i = 1; i < numObjects; ++i) root->addChild(makeNumbered(i), 0);
    return root;
}

Tree buildFanOut(int numObjects) {
    constexpr int fanOut = 10;
    auto root = ac::Object::create();
    std::deque<Tree> parents{root};
    for (int i = 1; i < numObjects; ++i) {
        auto object = makeNumbered(i);
        parents.front()->addChild(object, 0);
        parents.push_back(std::move(object));
        if (parents.front()->getNumChildren() == fanOut) parents.pop_front();
    }
    return root;
}

std::string write(ac::Object& root) {
    std::ostringstream stream;
    const auto error = root.writeTo(stream, std::make_shared<ac::WriteContextBase>());
    return error ? std::string{} : std::move(stream).str();
}

Tree read(const std::string& text) {
    std::istringstream stream(text);
    auto root = ac::Object::create();
    const auto error = root->readFrom(stream, std::make_shared<ac::ReadContextBase>());
    return error ? nullptr : root;
}

struct Shape {
    const char* name;
    Tree (*build)(int);
};
constexpr Shape shapes[] = {{"flat", buildFlat}, {"fanout10", buildFanOut}};
constexpr const char* jobs[] = {"build", "write", "read", "destroy"};

std::string nameOf(const char* job, const Shape& shape, int numObjects) {
    return std::string(job) + "/" + shape.name + "/" + std::to_string(numObjects);
}

void build(benchmark::State& state, const Shape& shape, int numObjects) {
    for (auto _ : state) {
        Tree root = shape.build(numObjects);
        state.PauseTiming();
        root.reset();
        state.ResumeTiming();
    }
}

void writeTree(benchmark::State& state, const Shape& shape, int numObjects) {
    const Tree root = shape.build(numObjects);
    for (auto _ : state)
        if (write(*root).empty()) state.SkipWithError("the tree could not be written");
}

void readTree(benchmark::State& state, const Shape& shape, int numObjects) {
    const std::string text = write(*shape.build(numObjects));
    for (auto _ : state) {
        Tree root = read(text);
        state.PauseTiming();
        if (!root || write(*root) != text) state.SkipWithError("the tree did not come back");
        root.reset();
        state.ResumeTiming();
    }
}

void destroy(benchmark::State& state, const Shape& shape, int numObjects) {
    for (auto _ : state) {
        state.PauseTiming();
        Tree root = shape.build(numObjects);
        state.ResumeTiming();
        root.reset();
    }
}

using Run = void (*)(benchmark::State&, const Shape&, int);
constexpr Run runs[] = {build, writeTree, readTree, destroy};

}  // namespace

int main(int argc, char** argv) {
    for (const Shape& shape : shapes)
        for (std::size_t job = 0; job < std::size(jobs); ++job)
            for (const int numObjects : {smallSize, largeSize})
                benchmark::RegisterBenchmark(
                    nameOf(jobs[job], shape, numObjects).c_str(),
                    [=](auto& state) { runs[job](state, shape, numObjects); })
                    ->Unit(benchmark::kMillisecond)
                    ->Iterations(1)
                    ->Repetitions(5);
    benchmark::Initialize(&argc, argv);
    bench::BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);

    std::vector<bench::Ratio> ratios;
    for (const Shape& shape : shapes)
        for (const char* const job : jobs)
            ratios.push_back({std::string(job) + " 100,000 : 50,000 objects, " + shape.name,
                              times.seconds(nameOf(job, shape, largeSize)) /
                                  times.seconds(nameOf(job, shape, smallSize)),
                              bench::Ratio::AtMost, growthLimit});
    return bench::printRatios(ratios) ? 0 : 1;
}

// One way to watch a double, and the workload that all of them are held against.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/AllocationCount.h"

namespace bench::notify {

/// Who watches the value: an observer that may refuse negative ones, and some that add it up.
struct Setting {
    bool hasVeto;
    int numPost;
};
inline constexpr Setting settings[] = {{false, 0}, {false, 1}, {false, 4}, {false, 16},
                                       {true, 0},  {true, 1},  {true, 4}};
inline constexpr int setsPerIteration = 1024;

inline std::string nameOf(const std::string& contender, const Setting& setting) {
    return contender + (setting.hasVeto ? "/veto" : "") +
           "/post:" + std::to_string(setting.numPost);
}

/// Something that takes part, by name.
struct Contender {
    std::string name;
    void (*run)(benchmark::State&, const Setting&);
};

/// Everybody who takes part, in no particular order; filled while the program loads.
inline std::vector<Contender>& contenders() {
    static std::vector<Contender> all;
    return all;
}

/// Runs the workload on a `Value`: made from the number of post-observers and whether there is a
/// veto, with `set(double)` and `sum()`, what all post-observers have added up.
template <class Value> void change(benchmark::State& state, const Setting& setting) {
    Value value(setting.numPost, setting.hasVeto);
    value.set(3);
    if (setting.hasVeto) value.set(-5);
    value.set(3);
    if (value.sum() != 6.0 * setting.numPost) state.SkipWithError("an observer heard otherwise");
    const auto before = allocationCount();
    for (auto _ : state)
        for (int i = 0; i < setsPerIteration; ++i) value.set(static_cast<double>(i));
    const auto allocations = static_cast<double>(allocationCount() - before);
    const double sets = static_cast<double>(state.iterations()) * setsPerIteration;
    state.counters["allocs/set"] = allocations / sets;
    state.SetItemsProcessed(static_cast<std::int64_t>(sets));
}

/// Enters a contender when the program loads.
template <class Value> struct Entry {
    explicit Entry(const char* name) { contenders().push_back({name, change<Value>}); }
};

}  // namespace bench::notify

// The workload W1: a double is set a million times while observers read it.
#pragma once

#include "support/Harness.h"

#include <string>

namespace bench::notify {

inline constexpr int numSets = 1'000'000;

struct Setting {
    bool hasVeto;  // one observer ahead of the change, which refuses every negative value
    int numPost;   // observers behind it; each adds the value that it reads to a sum of its own
    std::string name() const {
        return std::string(hasVeto ? "pre1" : "pre0") + "_k" + std::to_string(numPost);
    }
};
inline constexpr Setting settings[] = {{false, 0}, {false, 1}, {false, 4}, {false, 16},
                                       {true, 0},  {true, 1},  {true, 4}};

/// Runs all settings. `Value` is made of the number of post-observers and whether there is a veto:
///     void set(double);
///     double get() const;
///     double sum() const;  // of all post-observers together
/// \param part how many of the sets a slow peer does.
template <class Value> void runAll(Run& run, bool canVeto = true, double part = 1) {
    for (const Setting& setting : settings) {
        if (setting.hasVeto && !canVeto) continue;
        Value value(setting.numPost, setting.hasVeto);
        value.set(3);
        if (setting.hasVeto) value.set(-5);
        run.verify(value.get() == 3, setting.hasVeto ? "veto keeps the value" : "value stored");
        value.set(3);
        run.verify(value.sum() == 6.0 * setting.numPost,
                   "every post-observer heard each accepted set, equal values too");

        const int count = static_cast<int>(numSets * part);
        const double sumBefore = value.sum();
        const auto allocationsBefore = allocationCount();
        const double seconds = run.time([&] {
            for (int i = 0; i < count; ++i) value.set(static_cast<double>(i & 1023));
        });
        const auto numAllocations = allocationCount() - allocationsBefore;
        double expected = 0;
        for (int i = 0; i < count; ++i) expected += i & 1023;
        run.verify(value.sum() - sumBefore == expected * setting.numPost,
                   "sum of all notifications");
        run.record("set_" + setting.name(), seconds / count * 1e9, "ns/set");
        run.record("allocs_" + setting.name(), static_cast<double>(numAllocations) / count,
                   "allocs/set");
    }
    if (!canVeto) run.note("no veto: the pre variants are n/a");
}

}  // namespace bench::notify

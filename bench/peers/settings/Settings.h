// The workload W4: 2,000 groups of five texts are stored and taken out one by one.
#pragma once

#include "support/Data.h"
#include "support/Harness.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>

namespace bench::settings {

/// Runs everything on the wall's clock, in a directory on disk. `Store` is made of an empty
/// directory and has
///     void set(const std::string& group, const char* name, const std::string& value);
///     void commit();  // all is durable, as far as this variant promises
///     void reopen();  // forgets what is in memory, where the store can
///     std::string get(const std::string& group, const char* name);
/// \param numGroups slow variants take a part of the groups.
template <class Store> void runAll(Run& run, std::size_t numGroups = 2000) {
    run.useWallClock();
    const auto& groups = settingGroups();
    const std::string directory = scratchDir() + "/W4";
    std::filesystem::create_directories(directory);
    {
        Store store(directory);
        const double numValues = static_cast<double>(numGroups * 5);
        const double writing = run.time([&] {
            for (std::size_t g = 0; g < numGroups; ++g)
                for (std::size_t i = 0; i < 5; ++i)
                    store.set(groups[g].group, settingNames[i], groups[g].values[i]);
            store.commit();
        });
        run.record("write", numValues / writing, "ops/s");

        bool isRight = true;
        const double reading = run.time([&] {
            store.reopen();
            for (std::size_t g = 0; g < numGroups; ++g)
                for (std::size_t i = 0; i < 5; ++i)
                    isRight &= store.get(groups[g].group, settingNames[i]) == groups[g].values[i];
        });
        run.record("read", numValues / reading, "ops/s");
        run.verify(isRight, "all values come back");

        // One changed value, made durable: what a settings dialog does.
        const std::size_t numChanges = numGroups < groups.size() ? 20 : 50;
        const double changing = run.time([&] {
            for (std::size_t g = 0; g < numChanges; ++g) {
                store.set(groups[g].group, "Gain", "3.25");
                store.commit();
            }
        });
        run.record("change_one_and_commit", static_cast<double>(numChanges) / changing, "ops/s");
        if (numGroups < groups.size())
            run.note("measured with " + std::to_string(numGroups) + " of the 2,000 groups");
    }
    std::filesystem::remove_all(directory);
}

}  // namespace bench::settings

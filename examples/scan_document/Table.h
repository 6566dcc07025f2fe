// The short table at the end of the example.
#pragma once

#include "Compare.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace example {

using Seconds = std::chrono::duration<double>;

/// What a run did, and how long it took.
struct Summary {
    Comparison comparison;
    std::uint64_t numPoints = 0;
    std::uint64_t numPoses = 0;
    std::uint64_t numBytes = 0;
    bool isSameText = false;  // the second tree gave the same bytes as the first
    Seconds build{};
    Seconds write{};
    Seconds read{};
    Seconds compare{};

    bool isEqual() const { return comparison.isEqual() && isSameText; }
};

/// Prints the table, and in its last line "equal" or what differs.
void printTable(const Summary& summary);

}  // namespace example

// Counts the allocations of the program.
#pragma once

#include <cstdint>

namespace bench {

/// How often operator new has run so far, in a program of one thread.
std::uint64_t allocationCount();
/// How many of them have not been freed yet.
std::uint64_t liveAllocationCount();

}  // namespace bench

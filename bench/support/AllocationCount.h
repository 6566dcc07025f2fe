// Counts the allocations of the program.
#pragma once

#include <cstdint>

namespace bench {

/// How often operator new has run so far, on all threads.
std::uint64_t allocationCount();

}  // namespace bench

#include "AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::uint64_t> numAllocations{0};
}

std::uint64_t bench::allocationCount() {
    return numAllocations.load(std::memory_order_relaxed);
}

// Both forms, since what either gives is freed by the same operators below.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    // Exact on one thread, and without the price of a lock in what is measured.
    numAllocations.store(numAllocations.load(std::memory_order_relaxed) + 1,
                         std::memory_order_relaxed);
    return std::malloc(size);
}
void* operator new(std::size_t size) {
    if (void* const memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}
// Where these are inlined, compilers take the free for one that does not fit its allocation.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

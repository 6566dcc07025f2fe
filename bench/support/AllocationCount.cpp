#include "AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::uint64_t> numAllocations{0};
std::atomic<std::uint64_t> numFreed{0};

// Exact on one thread, and without the price of a lock in what is measured.
void countUp(std::atomic<std::uint64_t>& count) {
    count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}
}  // namespace

std::uint64_t bench::allocationCount() { return numAllocations.load(std::memory_order_relaxed); }
std::uint64_t bench::liveAllocationCount() {
    return allocationCount() - numFreed.load(std::memory_order_relaxed);
}

// Both forms, since what either gives is freed by the same operators below.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    void* const memory = std::malloc(size);
    if (memory) countUp(numAllocations);
    return memory;
}
void* operator new(std::size_t size) {
    if (void* const memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}
// Where these are inlined, compilers take the free for one that does not fit its allocation.
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    if (memory) countUp(numFreed);
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

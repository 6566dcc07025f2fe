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

void* operator new(std::size_t size) {
    numAllocations.fetch_add(1, std::memory_order_relaxed);
    if (void* const memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
// Where these are inlined, compilers take the free for one that does not fit its allocation.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

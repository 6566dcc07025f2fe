// Memory for what nearly every change makes and drops again.
#pragma once

#include "observation/NotifyInfoTable.h"

#include <cstddef>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#endif

namespace QOR::AttributeContainer {

/// Gives small things the block that the thread's table keeps in hand, where it does, and gives
/// that back to the table. The thread that gives it back may be another one.
template <class T> struct SpareAllocator {
    using value_type = T;

    SpareAllocator() = default;
    template <class U> SpareAllocator(const SpareAllocator<U>&) {}

    T* allocate(std::size_t count) {
        if (!isSpare(count)) return static_cast<T*>(::operator new(count * sizeof(T)));
        void* const block = NotifyInfoTable::takeSpare();
#if defined(__SANITIZE_ADDRESS__)
        __asan_unpoison_memory_region(block, NotifyInfoTable::spareSize);
#endif
        return static_cast<T*>(block);
    }
    void deallocate(T* memory, std::size_t count) {
        if (!isSpare(count)) return ::operator delete(memory);
#if defined(__SANITIZE_ADDRESS__)
        // So that a use behind the end is told.
        __asan_poison_memory_region(memory, NotifyInfoTable::spareSize);
#endif
        NotifyInfoTable::giveSpare(memory);
    }
    bool operator==(const SpareAllocator&) const { return true; }

private:
    static bool isSpare(std::size_t count) {
        return count == 1 && sizeof(T) <= NotifyInfoTable::spareSize &&
               alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__;
    }
};

}  // namespace QOR::AttributeContainer

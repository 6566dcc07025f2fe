#include "attributes/AttributeBlock.h"

#include <functional>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(BEGIN, SIZE) static_cast<void>(0)
#define ASAN_UNPOISON_MEMORY_REGION(BEGIN, SIZE) static_cast<void>(0)
#endif

namespace QOR::AttributeContainer {

AttributeBlock::AttributeBlock(const AttrContainer& container, std::size_t room)
    : container(container),
      piece(new (::operator new(inUnits(sizeof(Piece)) + room)) Piece(container, room)) {}

AttributeBlock::~AttributeBlock() { piece->close(); }

std::byte* AttributeBlock::Piece::begin() {
    return reinterpret_cast<std::byte*>(this) + inUnits(sizeof(Piece));
}

void* AttributeBlock::Piece::take(std::size_t size) {
    const auto taken = static_cast<std::uint32_t>(inUnits(size));
    void* const memory = begin() + roomTaken;
    roomTaken += taken;
    roomLeft -= taken;
    return memory;
}

void* AttributeBlock::Piece::takeCounted(std::size_t size) {
    // Another library's counts may be larger than the room that was reckoned for them.
    void* const memory = hasRoom(inUnits(size)) ? take(size) : ::operator new(size);
    ++numTaken;
    return memory;
}

void AttributeBlock::Piece::giveBack(void* memory, [[maybe_unused]] std::size_t size) {
    const std::less<const void*> before;  // an order over all addresses, also of other pieces
    if (before(memory, begin()) || !before(memory, begin() + roomTaken)) {
        ::operator delete(memory);
    } else {
        ASAN_POISON_MEMORY_REGION(memory, size);  // so that a use after the end is told
    }
    drop(1);
}

void AttributeBlock::Piece::drop(std::int32_t numLeaving) {
    if (numUsers.fetch_sub(numLeaving, std::memory_order_acq_rel) != numLeaving) return;
    ASAN_UNPOISON_MEMORY_REGION(begin(), roomTaken);
    this->~Piece();
    ::operator delete(this);
}

}  // namespace QOR::AttributeContainer

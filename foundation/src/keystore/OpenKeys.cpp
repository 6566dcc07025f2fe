#include "keystore/OpenKeys.h"

#include <utility>

namespace QOR::keystore {

namespace {

// A handle is the slot's index, how often it was filled, and a tag in the two lowest bits.
constexpr std::uintptr_t ownTag = 3;
constexpr unsigned tagBits = 2;
constexpr unsigned indexBits = sizeof(std::uintptr_t) == 8 ? 32 : 18;
constexpr std::uintptr_t indexMask = (std::uintptr_t{1} << indexBits) - 1;
constexpr std::uintptr_t useMask = ~std::uintptr_t{0} >> (indexBits + tagBits);

std::uintptr_t numberOf(HKEY key) { return reinterpret_cast<std::uintptr_t>(key); }

}  // namespace

OpenKeys& OpenKeys::the() {
    static OpenKeys& table = *new OpenKeys;
    return table;
}

bool OpenKeys::isOurs(HKEY key) { return (numberOf(key) & ownTag) == ownTag; }

HKEY OpenKeys::open(std::weak_ptr<KeyTreeStore> store, KeyTreeStore::Node node,
                    unsigned long access, bool isRoot) {
    const std::lock_guard lock(mutex);
    std::size_t index = slots.size();
    if (freeSlots.empty()) {
        slots.emplace_back();
    } else {
        index = freeSlots.back();
        freeSlots.pop_back();
    }
    Slot& slot = slots[index];
    slot.store = std::move(store);
    slot.node = node;
    slot.access = access;
    slot.isRoot = isRoot;
    ++slot.use;
    return reinterpret_cast<HKEY>(((slot.use & useMask) << indexBits | index) << tagBits | ownTag);
}

OpenKeys::Slot* OpenKeys::slotOf(HKEY key) {
    const std::uintptr_t number = numberOf(key) >> tagBits;
    const std::size_t index = number & indexMask;
    if (!isOurs(key) || index >= slots.size()) return nullptr;
    Slot& slot = slots[index];
    const bool isFilled = slot.use % 2 == 1;
    return isFilled && (slot.use & useMask) == number >> indexBits ? &slot : nullptr;
}

void OpenKeys::release(Slot& slot, std::size_t index) {
    slot.store.reset();
    ++slot.use;
    freeSlots.push_back(index);
}

Status OpenKeys::close(HKEY key) {
    const std::lock_guard lock(mutex);
    Slot* const slot = slotOf(key);
    if (!slot) return InvalidHandle;
    if (!slot->isRoot) release(*slot, numberOf(key) >> tagBits & indexMask);
    return Success;
}

void OpenKeys::dropRoot(HKEY key) {
    const std::lock_guard lock(mutex);
    if (Slot* const slot = slotOf(key)) release(*slot, numberOf(key) >> tagBits & indexMask);
}

Status OpenKeys::inq(HKEY key, OpenKey& open) {
    const std::lock_guard lock(mutex);
    const Slot* const slot = slotOf(key);
    if (!slot) return InvalidHandle;
    open.store = slot->store.lock();
    if (!open.store) return InvalidHandle;
    open.node = slot->node;
    open.access = slot->access;
    open.isRoot = slot->isRoot;
    return Success;
}

KeyUse::KeyUse(HKEY key, unsigned long needed) : state(OpenKeys::the().inq(key, open)) {
    if (state != Success) return;
    if ((open.access & needed) != needed) {
        state = AccessDenied;
        return;
    }
    lock = std::unique_lock(open.store->mutex);
}

HKEY KeyUse::openNode(KeyTreeStore::Node node, unsigned long access) const {
    return OpenKeys::the().open(open.store, node, grantedAccess(access), false);
}

unsigned long grantedAccess(unsigned long asked) {
    constexpr std::pair<unsigned long, unsigned long> general[] = {
        {0x80000000, KeyRead},      {0x40000000, KeyWrite},     {0x20000000, KeyRead},
        {0x10000000, KeyAllAccess}, {0x02000000, KeyAllAccess},  // as much as can be had
    };
    unsigned long granted = asked;
    for (const auto& [bit, rights] : general)
        if ((asked & bit) != 0) granted |= rights;
    return granted;
}

}  // namespace QOR::keystore

// The handles of the stores of ours: what each of them leads to.
#pragma once

#include <QOR/KeyTreeStore.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace QOR::keystore {

/// What a handle leads to.
struct OpenKey {
    std::shared_ptr<KeyTreeStore> store;
    KeyTreeStore::Node node = 0;
    unsigned long access = 0;
    bool isRoot = false;
};

/// The table of all handles. A handle is a number, so that one of the past is told from those of
/// today and nothing is ever looked up through it in memory.
class OpenKeys {
public:
    /// Never destroyed: stores in static variables close their root at the very end.
    static OpenKeys& the();

    /// Whether a handle is one of ours, open or not. The system's own have their lowest bits clear.
    static bool isOurs(HKEY key);

    HKEY open(std::weak_ptr<KeyTreeStore> store, KeyTreeStore::Node node, unsigned long access,
              bool isRoot);
    /// Success for the root of a store too, which stays open.
    Status close(HKEY key);
    /// Takes the root handle of a store out, which goes.
    void dropRoot(HKEY key);
    /// \return InvalidHandle if it is closed, or its store gone.
    Status inq(HKEY key, OpenKey& open);

private:
    struct Slot {
        std::weak_ptr<KeyTreeStore> store;
        KeyTreeStore::Node node = 0;
        unsigned long access = 0;
        std::uint32_t use = 0;  // how often the slot was filled; odd while it is
        bool isRoot = false;
    };

    Slot* slotOf(HKEY key);
    void release(Slot& slot, std::size_t index);

    std::mutex mutex;
    std::deque<Slot> slots;
    std::vector<std::size_t> freeSlots;
};

/// One operation on a handle of ours: keeps its store and locks it.
class KeyUse {
public:
    /// \param needed the access that the handle must have, all of its bits.
    KeyUse(HKEY key, unsigned long needed);

    /// Whether the operation may go on. The key itself may be deleted all the same.
    Status status() const { return state; }
    KeyTreeStore& store() const { return *open.store; }
    KeyTreeStore::Node node() const { return open.node; }
    bool isRoot() const { return open.isRoot; }

    /// A handle on a key of the same store.
    HKEY openNode(KeyTreeStore::Node node, unsigned long access) const;

private:
    OpenKey open;
    Status state;
    std::unique_lock<std::recursive_mutex> lock;
};

/// Follows a path down from a key.
/// \return BadPathname, InvalidParameter for a name that is too long, FileNotFound.
Status inqPath(KeyTreeStore& store, KeyTreeStore::Node from, const wchar_t* path,
               KeyTreeStore::Node& found);
/// The same, making what is missing.
Status makePath(KeyTreeStore& store, KeyTreeStore::Node from, const wchar_t* path,
                KeyTreeStore::Node& made, bool& isNew);

/// The rights that an access mask asks for, the general ones spelt out.
unsigned long grantedAccess(unsigned long asked);

constexpr std::size_t maxKeyName = 255;
constexpr std::size_t maxValueName = 16383;

}  // namespace QOR::keystore

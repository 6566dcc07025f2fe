// The memory of the attributes that one container makes from one table.
#pragma once

#include <AttributeContainer/Attr.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace QOR::AttributeContainer {

/// Makes attributes in one piece of memory, their values with them, beside what they share: their
/// place.
///
/// Each attribute is owned by shared pointers of its own and ends by itself; the piece goes back
/// when the last of them has, and this is gone. What does not fit in gets memory of its own.
class QOR_API AttributeBlock {
public:
    /// What an attribute of `T` takes: its value, itself and the counts of its owners.
    template <class T> static constexpr std::size_t roomFor() {
        return inUnits(sizeof(AttrVal<T>)) + inUnits(sizeof(HardCodedAttr<T>) + 3 * sizeof(void*));
    }

    AttributeBlock(const AttrContainer& container, std::size_t room);
    AttributeBlock(const AttributeBlock&) = delete;
    AttributeBlock& operator=(const AttributeBlock&) = delete;
    ~AttributeBlock();

    /// A new attribute with the value and the relations of `source`, if there is one.
    template <class T, class Source>
    std::shared_ptr<HardCodedAttr<T>> create(const Source& source) {
        using Made = HardCodedAttr<T>;
        static_assert(alignof(AttrVal<T>) <= unit && alignof(Made) <= unit);
        if (!piece->hasRoom(roomFor<T>())) return std::make_shared<Made>(container, source);
        auto* const holder = new (piece->take(sizeof(AttrVal<T>))) AttrVal<T>;
        return std::allocate_shared<Made>(Allocator<Made>(*piece), piece->place, *holder, source);
    }

private:
    class QOR_API Piece {
    public:
        Piece(const AttrContainer& container, std::size_t room)
            : place{ContainerLink(container), true}, roomLeft(static_cast<std::uint32_t>(room)) {}

        bool hasRoom(std::size_t size) const { return size <= roomLeft; }
        void* take(std::size_t size);
        /// Room that is given back, for an attribute and its counts.
        void* takeCounted(std::size_t size);
        void giveBack(void* memory, std::size_t size);
        /// Nothing more is taken.
        void close() { drop(open - numTaken); }

        const HardCodedAttribute::Place place;

    private:
        // More than a table has rows: what is open has not ended, whatever was given back.
        static constexpr std::int32_t open = 1 << 30;

        std::byte* begin();
        void drop(std::int32_t numLeaving);

        std::uint32_t roomLeft;
        std::uint32_t roomTaken = 0;
        std::int32_t numTaken = 0;
        std::atomic<std::int32_t> numUsers{open};
    };

    template <class T> struct Allocator {
        using value_type = T;

        explicit Allocator(Piece& piece) : piece(&piece) {}
        template <class U> Allocator(const Allocator<U>& other) : piece(other.piece) {}

        T* allocate(std::size_t n) { return static_cast<T*>(piece->takeCounted(n * sizeof(T))); }
        void deallocate(T* memory, std::size_t n) { piece->giveBack(memory, n * sizeof(T)); }
        template <class U> bool operator==(const Allocator<U>& other) const {
            return piece == other.piece;
        }

        Piece* piece;
    };

    // No value of an attribute needs more.
    static constexpr std::size_t unit = alignof(std::uint64_t);

    static constexpr std::size_t inUnits(std::size_t size) {
        return (size + unit - 1) / unit * unit;
    }

    const AttrContainer& container;
    Piece* piece;
};

}  // namespace QOR::AttributeContainer

#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "driver/range_tree.h"

namespace kq_drv {

/// What leaves and inner nodes have in common: a number of slots and, for each, the highest last number in it. Almost
/// always these numbers ascend, since ranges seldom overlap; a node in which they don't says so and is searched slot by
/// slot.
struct CRangeTree::TNode {
    static constexpr std::uint32_t kSlots = 64;

    explicit TNode(bool leaf) : is_leaf(leaf) {}

    std::uint32_t count = 0;
    const bool is_leaf;
    bool ascending = true;
    std::array<std::uint32_t, kSlots> last;   // of the slot's ranges the highest
    std::array<std::uint32_t, kSlots> first;  // not above the slot's ranges and not below those of the slots ahead

    bool IsFull() const { return count == kSlots; }
    /// The lowest slot whose last isn't below a number, or count.
    std::uint32_t FirstEndingFrom(std::uint32_t number) const;
    /// The number of slots ahead of the first one whose first isn't below a number.
    std::uint32_t SlotsBelow(std::uint32_t number) const;
    /// The number of slots whose first isn't above a number.
    std::uint32_t SlotsUpTo(std::uint32_t number) const;
    std::uint32_t HighestLast() const;
    /// Looks whether the slot still fits between its neighbours' last numbers.
    void CheckAscending(std::uint32_t slot);

protected:
    /// Makes room for one slot; the caller fills it.
    void OpenSlot(std::uint32_t slot);
    void CloseSlot(std::uint32_t slot);
    /// Moves the slots from one on to an empty node.
    void MoveTail(TNode &target, std::uint32_t from);
};

struct CRangeTree::TLeaf : TNode {
    struct TRest {
        std::uint32_t type;
        std::uint32_t direction;
        std::uint32_t note;
    };

    std::array<TRest, kSlots> rest;

    TLeaf() : TNode(true) {}
    void Insert(std::uint32_t slot, const TRangeRecord &record);
    void Erase(std::uint32_t slot);
    TNodePointer SplitOff(std::uint32_t from);
};

struct CRangeTree::TInner : TNode {
    std::array<std::uint32_t, kSlots> size;  // ranges below the slot
    std::array<TNodePointer, kSlots> child;

    TInner() : TNode(false) {}
    void Insert(std::uint32_t slot, TNodePointer node);
    void Erase(std::uint32_t slot);
    TNodePointer SplitOff(std::uint32_t from);
    /// Takes over what the slot's child says of itself.
    void Describe(std::uint32_t slot);
};

}  // namespace kq_drv

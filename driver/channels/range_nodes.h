#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

/// The nodes of CRangeTree, for its own use.
namespace kq_drv {

/// A range of channel numbers as the tree keeps it. What type, direction and note mean its user decides.
struct TRangeRecord {
    std::uint32_t first = 0;
    std::uint32_t last = 0;  ///< inclusive; a range whose last is below its first holds no channel
    std::uint32_t type = 0;
    std::uint32_t direction = 0;
    std::uint32_t note = 0;
};

/// What leaves and inner nodes have in common: a number of slots and, for each, the highest last number in it. Almost
/// always these numbers ascend, since ranges seldom overlap; a node in which they don't says so and is searched slot by
/// slot.
struct TRangeNode {
    static constexpr std::uint32_t kSlots = 64;
    /// Stands in the slots that aren't used, so that a search may look at them.
    static constexpr std::uint32_t kUnused = 0xFFFFFFFF;
    using TNumbers = std::array<std::uint32_t, kSlots>;

    struct TDeleter {
        void operator()(TRangeNode *node) const;
    };
    using TPointer = std::unique_ptr<TRangeNode, TDeleter>;

    const bool is_leaf;
    bool ascending = true;
    std::uint32_t count = 0;
    TNumbers last;   ///< of the slot's ranges the highest
    TNumbers first;  ///< not above the slot's ranges and not below those of the slots before

    explicit TRangeNode(bool leaf) : is_leaf(leaf) {
        last.fill(kUnused);
        first.fill(kUnused);
    }

    bool IsFull() const { return count == kSlots; }

    /// The lowest slot whose last isn't below a number, or count.
    std::uint32_t FirstEndingFrom(std::uint32_t number) const {
        if (ascending) {
            return CountBelow(last, number);
        }
        const auto *end = last.begin() + count;
        return static_cast<std::uint32_t>(
            std::find_if(last.begin(), end, [number](std::uint32_t value) { return value >= number; }) - last.begin());
    }
    /// How many slots have a first below a number.
    std::uint32_t SlotsBelow(std::uint32_t number) const { return CountBelow(first, number); }
    /// How many slots have a first that isn't above a number.
    std::uint32_t SlotsUpTo(std::uint32_t number) const {
        return number == kUnused ? count : CountBelow(first, number + 1);
    }
    std::uint32_t HighestLast() const {
        return ascending ? last[count - 1] : *std::max_element(last.begin(), last.begin() + count);
    }
    /// Looks whether a slot's last still fits between its neighbours'.
    void CheckAscending(std::uint32_t slot) {
        const bool above_left = slot == 0 || last[slot - 1] <= last[slot];
        const bool below_right = slot + 1 >= count || last[slot] <= last[slot + 1];
        ascending = ascending && above_left && below_right;
    }

protected:
    /// How many of the ascending numbers are below a number. The results are as good as random, so it does without a
    /// branch that depends on the numbers: three of them name a quarter, in which all are compared.
    static std::uint32_t CountBelow(const TNumbers &numbers, std::uint32_t number) {
        constexpr std::uint32_t kPart = kSlots / 4;
        std::uint32_t below = 0;
        for (std::uint32_t end = kPart; end < kSlots; end += kPart) {
            below += numbers[end - 1] < number ? kPart : 0;
        }
        const std::uint32_t *part = numbers.data() + below;
        for (std::uint32_t at = 0; at < kPart; ++at) {
            below += part[at] < number ? 1 : 0;
        }
        return below;
    }

    void OpenSlot(std::uint32_t slot, std::uint32_t first_number, std::uint32_t last_number);
    void CloseSlot(std::uint32_t slot);
    /// Moves the slots from one on to an empty node.
    void MoveTail(TRangeNode &target, std::uint32_t from);
};

struct TRangeLeaf : TRangeNode {
    struct TRest {
        std::uint32_t type;
        std::uint32_t direction;
        std::uint32_t note;
    };

    std::array<TRest, kSlots> rest;

    TRangeLeaf() : TRangeNode(true) {}

    TRangeRecord At(std::uint32_t slot) const {
        return {first[slot], last[slot], rest[slot].type, rest[slot].direction, rest[slot].note};
    }
    void Insert(std::uint32_t slot, const TRangeRecord &record);
    void Erase(std::uint32_t slot);
    TPointer SplitOff(std::uint32_t from);
};

struct TRangeInner : TRangeNode {
    TNumbers size;  ///< ranges below the slot
    std::array<TPointer, kSlots> child;

    TRangeInner() : TRangeNode(false) {}

    void Insert(std::uint32_t slot, TPointer node);
    void Erase(std::uint32_t slot);
    TPointer SplitOff(std::uint32_t from);
    /// Takes over what the slot's child says of itself.
    void Describe(std::uint32_t slot);
};

}  // namespace kq_drv

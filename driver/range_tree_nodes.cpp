#include "driver/range_tree_nodes.h"

namespace kq_drv {
namespace {

using TNumbers = std::array<std::uint32_t, 64>;

// Ahead of how many of the leading count numbers, which ascend, does the test hold? Without a branch that depends on
// the numbers: the places are as good as random.
template <class TTest>
std::uint32_t CountLeading(const std::uint32_t *numbers, std::uint32_t count, TTest test) {
    const std::uint32_t *base = numbers;
    std::uint32_t left = count;
    while (left > 1) {
        const std::uint32_t half = left / 2;
        base += test(base[half - 1]) ? half : 0;
        left -= half;
    }
    return static_cast<std::uint32_t>(base - numbers) + (left == 1 && test(*base) ? 1 : 0);
}

template <class TItem>
void ShiftUp(TItem &items, std::uint32_t slot, std::uint32_t count) {
    std::move_backward(items.begin() + slot, items.begin() + count, items.begin() + count + 1);
}

template <class TItem>
void ShiftDown(TItem &items, std::uint32_t slot, std::uint32_t count) {
    std::move(items.begin() + slot + 1, items.begin() + count, items.begin() + slot);
}

template <class TItem>
void MoveItems(TItem &source, TItem &target, std::uint32_t from, std::uint32_t count) {
    std::move(source.begin() + from, source.begin() + count, target.begin());
}

}  // namespace

std::uint32_t CRangeTree::TNode::FirstEndingFrom(std::uint32_t number) const {
    const auto below = [number](std::uint32_t value) { return value < number; };
    if (ascending) {
        return CountLeading(last.data(), count, below);
    }
    return static_cast<std::uint32_t>(std::find_if_not(last.begin(), last.begin() + count, below) - last.begin());
}

std::uint32_t CRangeTree::TNode::SlotsBelow(std::uint32_t number) const {
    return CountLeading(first.data(), count, [number](std::uint32_t value) { return value < number; });
}

std::uint32_t CRangeTree::TNode::SlotsUpTo(std::uint32_t number) const {
    return CountLeading(first.data(), count, [number](std::uint32_t value) { return value <= number; });
}

std::uint32_t CRangeTree::TNode::HighestLast() const {
    return ascending ? last[count - 1] : *std::max_element(last.begin(), last.begin() + count);
}

void CRangeTree::TNode::CheckAscending(std::uint32_t slot) {
    const bool above_left = slot == 0 || last[slot - 1] <= last[slot];
    const bool below_right = slot + 1 >= count || last[slot] <= last[slot + 1];
    ascending = ascending && above_left && below_right;
}

void CRangeTree::TNode::OpenSlot(std::uint32_t slot) {
    ShiftUp(last, slot, count);
    ShiftUp(first, slot, count);
}

void CRangeTree::TNode::CloseSlot(std::uint32_t slot) {
    ShiftDown(last, slot, count);
    ShiftDown(first, slot, count);
}

void CRangeTree::TNode::MoveTail(TNode &target, std::uint32_t from) {
    MoveItems(last, target.last, from, count);
    MoveItems(first, target.first, from, count);
    target.count = count - from;
    count = from;
    if (!ascending) {
        target.ascending = std::is_sorted(target.last.begin(), target.last.begin() + target.count);
        ascending = std::is_sorted(last.begin(), last.begin() + count);
    }
}

void CRangeTree::TLeaf::Insert(std::uint32_t slot, const TRangeRecord &record) {
    OpenSlot(slot);
    ShiftUp(rest, slot, count);
    ++count;
    last[slot] = record.last;
    first[slot] = record.first;
    rest[slot] = {record.type, record.direction, record.note};
    CheckAscending(slot);
}

void CRangeTree::TLeaf::Erase(std::uint32_t slot) {
    CloseSlot(slot);
    ShiftDown(rest, slot, count);
    --count;
}

CRangeTree::TNodePointer CRangeTree::TLeaf::SplitOff(std::uint32_t from) {
    auto *right = new TLeaf;
    TNodePointer owner(right);
    MoveItems(rest, right->rest, from, count);
    MoveTail(*right, from);
    return owner;
}

void CRangeTree::TInner::Insert(std::uint32_t slot, TNodePointer node) {
    OpenSlot(slot);
    ShiftUp(size, slot, count);
    ShiftUp(child, slot, count);
    ++count;
    child[slot] = std::move(node);
    Describe(slot);
}

void CRangeTree::TInner::Erase(std::uint32_t slot) {
    CloseSlot(slot);
    ShiftDown(size, slot, count);
    ShiftDown(child, slot, count);
    --count;
    child[count].reset();
}

CRangeTree::TNodePointer CRangeTree::TInner::SplitOff(std::uint32_t from) {
    auto *right = new TInner;
    TNodePointer owner(right);
    MoveItems(size, right->size, from, count);
    MoveItems(child, right->child, from, count);
    MoveTail(*right, from);
    return owner;
}

void CRangeTree::TInner::Describe(std::uint32_t slot) {
    const TNode &node = *child[slot];
    last[slot] = node.HighestLast();
    first[slot] = node.first[0];
    size[slot] = node.count;
    if (!node.is_leaf) {
        const auto &sizes = static_cast<const TInner &>(node).size;
        size[slot] = 0;
        for (std::uint32_t at = 0; at < node.count; ++at) {
            size[slot] += sizes[at];
        }
    }
    CheckAscending(slot);
}

}  // namespace kq_drv

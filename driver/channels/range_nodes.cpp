#include "driver/channels/range_nodes.h"

#include <numeric>
#include <utility>

namespace kq_drv {
namespace {

template <class TItems>
void ShiftUp(TItems &items, std::uint32_t slot, std::uint32_t count) {
    std::move_backward(items.begin() + slot, items.begin() + count, items.begin() + count + 1);
}

template <class TItems>
void ShiftDown(TItems &items, std::uint32_t slot, std::uint32_t count) {
    std::move(items.begin() + slot + 1, items.begin() + count, items.begin() + slot);
}

template <class TItems>
void MoveItems(TItems &source, TItems &target, std::uint32_t from, std::uint32_t count) {
    std::move(source.begin() + from, source.begin() + count, target.begin());
}

}  // namespace

void TRangeNode::TDeleter::operator()(TRangeNode *node) const {
    if (node->is_leaf) {
        delete static_cast<TRangeLeaf *>(node);
    } else {
        delete static_cast<TRangeInner *>(node);
    }
}

void TRangeNode::OpenSlot(std::uint32_t slot, std::uint32_t first_number, std::uint32_t last_number) {
    ShiftUp(last, slot, count);
    ShiftUp(first, slot, count);
    ++count;
    last[slot] = last_number;
    first[slot] = first_number;
    CheckAscending(slot);
}

void TRangeNode::CloseSlot(std::uint32_t slot) {
    ShiftDown(last, slot, count);
    ShiftDown(first, slot, count);
    --count;
    last[count] = kUnused;
    first[count] = kUnused;
}

void TRangeNode::MoveTail(TRangeNode &target, std::uint32_t from) {
    MoveItems(last, target.last, from, count);
    MoveItems(first, target.first, from, count);
    std::fill(last.begin() + from, last.begin() + count, kUnused);
    std::fill(first.begin() + from, first.begin() + count, kUnused);
    target.count = count - from;
    count = from;
    if (!ascending) {
        target.ascending = std::is_sorted(target.last.begin(), target.last.begin() + target.count);
        ascending = std::is_sorted(last.begin(), last.begin() + count);
    }
}

void TRangeLeaf::Insert(std::uint32_t slot, const TRangeRecord &record) {
    ShiftUp(rest, slot, count);
    rest[slot] = {record.type, record.direction, record.note};
    OpenSlot(slot, record.first, record.last);
}

void TRangeLeaf::Erase(std::uint32_t slot) {
    ShiftDown(rest, slot, count);
    CloseSlot(slot);
}

TRangeNode::TPointer TRangeLeaf::SplitOff(std::uint32_t from) {
    auto *right = new TRangeLeaf;
    TPointer owner(right);
    MoveItems(rest, right->rest, from, count);
    MoveTail(*right, from);
    return owner;
}

void TRangeInner::Insert(std::uint32_t slot, TPointer node) {
    ShiftUp(size, slot, count);
    ShiftUp(child, slot, count);
    child[slot] = std::move(node);
    OpenSlot(slot, child[slot]->first[0], child[slot]->HighestLast());
    Describe(slot);
}

void TRangeInner::Erase(std::uint32_t slot) {
    ShiftDown(size, slot, count);
    ShiftDown(child, slot, count);
    child[count - 1].reset();
    CloseSlot(slot);
}

TRangeNode::TPointer TRangeInner::SplitOff(std::uint32_t from) {
    auto *right = new TRangeInner;
    TPointer owner(right);
    MoveItems(size, right->size, from, count);
    MoveItems(child, right->child, from, count);
    MoveTail(*right, from);
    return owner;
}

void TRangeInner::Describe(std::uint32_t slot) {
    const TRangeNode &node = *child[slot];
    last[slot] = node.HighestLast();
    first[slot] = node.first[0];
    if (node.is_leaf) {
        size[slot] = node.count;
    } else {
        const auto &sizes = static_cast<const TRangeInner &>(node).size;
        size[slot] = std::accumulate(sizes.begin(), sizes.begin() + node.count, 0U);
    }
    CheckAscending(slot);
}

}  // namespace kq_drv

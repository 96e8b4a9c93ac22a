#include "driver/channels/range_tree.h"

#include <algorithm>
#include <cassert>
#include <utility>

// A tree of nodes with up to 64 slots each, the ranges in its leaves. Nodes split when they are full and vanish when
// they are empty; they are never merged. Whoever changes a leaf carries what changed (sizes, highest last numbers) up
// the way from the leaf to the root.
namespace kq_drv {

namespace {

/// Chooses the way to the lowest range whose last number isn't below this one.
struct TEndingFrom {
    std::uint32_t number;

    std::uint32_t operator()(const TRangeNode &node) const {
        const std::uint32_t slot = node.FirstEndingFrom(number);
        return node.is_leaf || slot < node.count ? slot : node.count - 1;
    }
};

}  // namespace

CRangeTree::CRangeTree() = default;
CRangeTree::~CRangeTree() = default;

CRangeTree::CRangeTree(CRangeTree &&other) noexcept
    : root_(std::move(other.root_)), height_(std::exchange(other.height_, 0)), size_(std::exchange(other.size_, 0)) {}

CRangeTree &CRangeTree::operator=(CRangeTree &&other) noexcept {
    root_ = std::move(other.root_);
    height_ = std::exchange(other.height_, 0);
    size_ = std::exchange(other.size_, 0);
    return *this;
}

void CRangeTree::Clear() { *this = CRangeTree(); }

/// Goes from the root to a leaf; choose(node) gives the slot to take, which at the leaf may be its count. Positions are
/// filled where they are: a copy has to wait for what was just written. Inlined always, since GCC 12 takes a call out
/// that does nothing but fill the position that its caller returns.
template <class TChoose>
[[gnu::always_inline]] inline void CRangeTree::Descend(CPosition &position, TChoose choose) const {
    TRangeNode *node = root_.get();
    for (std::uint32_t level = height_; level-- > 0;) {
        const std::uint32_t slot = choose(*node);
        position.nodes_[level] = node;
        position.slots_[level] = slot;
        if (level > 0) {
            node = static_cast<TRangeInner *>(node)->child[slot].get();
        }
    }
}

CRangeTree::CPosition CRangeTree::Begin() const {
    CPosition position;
    Descend(position, [](const TRangeNode &) { return 0U; });
    return position;
}

CRangeTree::CPosition CRangeTree::FirstEndingFrom(std::uint32_t number) const {
    CPosition position;
    Descend(position, TEndingFrom{number});
    return position;
}

bool CRangeTree::FindContaining(std::uint32_t number, CPosition &position) const {
    // Whatever comes before this range ends too early, and whatever comes after it starts no earlier.
    Descend(position, TEndingFrom{number});
    return !IsEnd(position) && FirstAt(position) <= number;
}

bool CRangeTree::FindContaining(std::uint32_t number, TRangeRecord &record) const {
    const TRangeNode *node = root_.get();
    if (node == nullptr) {
        return false;
    }
    while (!node->is_leaf) {
        const std::uint32_t slot = node->FirstEndingFrom(number);
        if (slot == node->count) {
            return false;
        }
        node = static_cast<const TRangeInner *>(node)->child[slot].get();
    }
    const std::uint32_t slot = node->FirstEndingFrom(number);
    if (slot == node->count || node->first[slot] > number) {
        return false;
    }
    record = static_cast<const TRangeLeaf *>(node)->At(slot);
    return true;
}

bool CRangeTree::FindByFirst(std::uint32_t first, CPosition &position) const {
    Descend(position, [first](const TRangeNode &node) {
        const std::uint32_t slots = node.SlotsBelow(first);
        return node.is_leaf || slots == 0 ? slots : slots - 1;
    });
    if (height_ > 0 && position.slots_[0] == position.nodes_[0]->count) {
        --position.slots_[0];
        Next(position);
    }
    return !IsEnd(position) && FirstAt(position) == first;
}

CRangeTree::CPosition CRangeTree::AtRow(std::uint32_t row) const {
    CPosition position;
    Descend(position, [&row](const TRangeNode &node) {
        if (node.is_leaf) {
            return row < node.count ? row : node.count;
        }
        const auto &sizes = static_cast<const TRangeInner &>(node).size;
        std::uint32_t slot = 0;
        while (slot + 1 < node.count && row >= sizes[slot]) {
            row -= sizes[slot++];
        }
        return slot;
    });
    return position;
}

/// The position has just left its leaf.
void CRangeTree::NextLeaf(CPosition &position) const {
    std::uint32_t level = 1;
    while (level < height_ && position.slots_[level] + 1 >= position.nodes_[level]->count) {
        ++level;
    }
    if (level >= height_) {
        return;
    }
    ++position.slots_[level];
    for (; level > 0; --level) {
        const auto *inner = static_cast<const TRangeInner *>(position.nodes_[level]);
        position.nodes_[level - 1] = inner->child[position.slots_[level]].get();
        position.slots_[level - 1] = 0;
    }
}

std::uint32_t CRangeTree::RowOf(const CPosition &position) const {
    std::uint32_t row = height_ > 0 ? position.slots_[0] : 0;
    for (std::uint32_t level = 1; level < height_; ++level) {
        const auto *inner = static_cast<const TRangeInner *>(position.nodes_[level]);
        for (std::uint32_t slot = 0; slot < position.slots_[level]; ++slot) {
            row += inner->size[slot];
        }
    }
    return row;
}

void CRangeTree::SetLast(const CPosition &position, std::uint32_t last) {
    position.nodes_[0]->last[position.slots_[0]] = last;
    position.nodes_[0]->CheckAscending(position.slots_[0]);
    RefreshMaxima(position, 0);
}

void CRangeTree::SetRest(const CPosition &position, const TRangeRecord &record) {
    static_cast<TRangeLeaf *>(position.nodes_[0])->rest[position.slots_[0]] = {record.type, record.direction,
                                                                               record.note};
}

/// Goes to where a range that starts at a number goes in.
void CRangeTree::GoToPlace(std::uint32_t first, CPosition &position) const {
    Descend(position, [first](const TRangeNode &node) {
        const std::uint32_t slots = node.SlotsUpTo(first);
        return node.is_leaf || slots == 0 ? slots : slots - 1;
    });
}

void CRangeTree::Insert(const TRangeRecord &record) {
    CPosition position;
    GoToPlace(record.first, position);
    InsertAt(position, record);
}

void CRangeTree::Insert(CPosition &near, const TRangeRecord &record) {
    const TRangeNode *leaf = height_ > 0 ? near.nodes_[0] : nullptr;
    const auto starts_above = [&](std::uint32_t slot) {
        return slot < leaf->count && leaf->first[slot] > record.first;
    };
    const std::uint32_t slot = near.slots_[0];
    // The ranges on both sides must be in the same leaf: beyond its bounds only a search knows.
    const bool after_left = leaf != nullptr && slot > 0 && leaf->first[slot - 1] <= record.first;
    if (after_left && starts_above(slot)) {
        InsertAt(near, record);
    } else if (leaf != nullptr && starts_above(slot + 1) && leaf->first[slot] <= record.first) {
        ++near.slots_[0];
        InsertAt(near, record);
    } else {
        GoToPlace(record.first, near);
        InsertAt(near, record);
    }
}

void CRangeTree::InsertAtRow(std::uint32_t row, const TRangeRecord &record) {
    CPosition position = AtRow(row);
    InsertAt(position, record);
}

void CRangeTree::InsertAt(CPosition &position, const TRangeRecord &record) {
    if (height_ == 0) {
        root_.reset(new TRangeLeaf);
        position.nodes_[0] = root_.get();
        position.slots_[0] = 0;
        height_ = 1;
    }
    if (position.nodes_[0]->IsFull()) {
        Split(position, 0);
    }
    static_cast<TRangeLeaf *>(position.nodes_[0])->Insert(position.slots_[0], record);
    ++size_;
    for (std::uint32_t level = 1; level < height_; ++level) {
        auto *inner = static_cast<TRangeInner *>(position.nodes_[level]);
        const std::uint32_t slot = position.slots_[level];
        ++inner->size[slot];
        // What stays isn't written: the next search would wait for it.
        if (record.first < inner->first[slot]) {
            inner->first[slot] = record.first;
        }
        if (record.last > inner->last[slot]) {
            inner->last[slot] = record.last;
            inner->CheckAscending(slot);
        }
    }
}

/// Splits the position's full node at a level in two and keeps the position on its slot.
void CRangeTree::Split(CPosition &position, std::uint32_t level) {
    if (level + 1 == height_) {
        GrowRoot(position);
    } else if (position.nodes_[level + 1]->IsFull()) {
        Split(position, level + 1);
    }
    TRangeNode *node = position.nodes_[level];
    auto *parent = static_cast<TRangeInner *>(position.nodes_[level + 1]);
    std::uint32_t &slot = position.slots_[level];
    std::uint32_t &parent_slot = position.slots_[level + 1];

    // Ranges that come in ascending order leave full nodes, not half empty ones.
    const bool at_end = slot + 1 >= node->count;
    const std::uint32_t kept = at_end ? node->count - 1 : node->count / 2;
    parent->Insert(parent_slot + 1, node->is_leaf ? static_cast<TRangeLeaf *>(node)->SplitOff(kept)
                                                  : static_cast<TRangeInner *>(node)->SplitOff(kept));
    parent->Describe(parent_slot);
    if (slot > kept || (slot == kept && !node->is_leaf)) {
        slot -= kept;
        ++parent_slot;
        position.nodes_[level] = parent->child[parent_slot].get();
    }
}

void CRangeTree::GrowRoot(CPosition &position) {
    assert(height_ < CPosition::kMaxHeight);
    auto *root = new TRangeInner;
    TRangeNode::TPointer owner(root);
    root->Insert(0, std::move(root_));
    root_ = std::move(owner);
    position.nodes_[height_] = root;
    position.slots_[height_] = 0;
    ++height_;
}

void CRangeTree::Erase(const CPosition &position) {
    static_cast<TRangeLeaf *>(position.nodes_[0])->Erase(position.slots_[0]);
    --size_;
    for (std::uint32_t level = 1; level < height_; ++level) {
        --static_cast<TRangeInner *>(position.nodes_[level])->size[position.slots_[level]];
    }
    DropEmptyNodes(position);
}

/// Takes the nodes out that have become empty at a position, and roots with a single child.
void CRangeTree::DropEmptyNodes(const CPosition &position) {
    if (size_ == 0) {
        Clear();
        return;
    }
    std::uint32_t level = 0;
    while (position.nodes_[level]->count == 0) {
        ++level;
        static_cast<TRangeInner *>(position.nodes_[level])->Erase(position.slots_[level]);
    }
    RefreshMaxima(position, level);
    while (!root_->is_leaf && root_->count == 1) {
        root_ = std::move(static_cast<TRangeInner *>(root_.get())->child[0]);
        --height_;
    }
}

/// Carries the highest last number of a position's node at a level up to the root.
void CRangeTree::RefreshMaxima(const CPosition &position, std::uint32_t level) {
    for (; level + 1 < height_; ++level) {
        auto *parent = position.nodes_[level + 1];
        const std::uint32_t slot = position.slots_[level + 1];
        const std::uint32_t last = position.nodes_[level]->HighestLast();
        if (parent->last[slot] == last) {
            return;
        }
        parent->last[slot] = last;
        parent->CheckAscending(slot);
    }
}

}  // namespace kq_drv

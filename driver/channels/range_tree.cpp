#include "driver/channels/range_tree.h"

#include <algorithm>
#include <cassert>
#include <utility>

// A tree of nodes with up to 64 slots each, the ranges in its leaves. Nodes split when they are full and vanish when
// they are empty; they are never merged. Whoever changes a leaf carries what changed (sizes, highest last numbers) up
// the place's way to the root.
namespace kq_drv {

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

/// Goes from the root to a leaf; choose(node) gives the slot to take, which at the leaf may be its count.
template <class TChoose>
CRangeTree::CPlace CRangeTree::Descend(TChoose choose) const {
    CPlace place;
    TRangeNode *node = root_.get();
    for (std::uint32_t level = height_; level-- > 0;) {
        const std::uint32_t slot = choose(*node);
        place.nodes_[level] = node;
        place.slots_[level] = slot;
        if (level > 0) {
            node = static_cast<TRangeInner *>(node)->child[slot].get();
        }
    }
    return place;
}

CRangeTree::CPlace CRangeTree::Begin() const {
    return Descend([](const TRangeNode &) { return 0U; });
}

CRangeTree::CPlace CRangeTree::FirstEndingFrom(std::uint32_t number) const {
    return Descend([number](const TRangeNode &node) {
        const std::uint32_t slot = node.FirstEndingFrom(number);
        return node.is_leaf || slot < node.count ? slot : node.count - 1;
    });
}

bool CRangeTree::FindContaining(std::uint32_t number, CPlace &place) const {
    // Whatever stands ahead of this range ends too early, and whatever stands behind it starts no earlier.
    place = FirstEndingFrom(number);
    return !IsEnd(place) && FirstAt(place) <= number;
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

bool CRangeTree::FindByFirst(std::uint32_t first, CPlace &place) const {
    place = Descend([first](const TRangeNode &node) {
        const std::uint32_t slots = node.SlotsBelow(first);
        return node.is_leaf || slots == 0 ? slots : slots - 1;
    });
    if (height_ > 0 && place.slots_[0] == place.nodes_[0]->count) {
        --place.slots_[0];
        Next(place);
    }
    return !IsEnd(place) && FirstAt(place) == first;
}

CRangeTree::CPlace CRangeTree::AtRow(std::uint32_t row) const {
    return Descend([&row](const TRangeNode &node) {
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
}

/// The place has just left its leaf.
void CRangeTree::NextLeaf(CPlace &place) const {
    std::uint32_t level = 1;
    while (level < height_ && place.slots_[level] + 1 >= place.nodes_[level]->count) {
        ++level;
    }
    if (level >= height_) {
        return;
    }
    ++place.slots_[level];
    for (; level > 0; --level) {
        const auto *inner = static_cast<const TRangeInner *>(place.nodes_[level]);
        place.nodes_[level - 1] = inner->child[place.slots_[level]].get();
        place.slots_[level - 1] = 0;
    }
}

std::uint32_t CRangeTree::RowOf(const CPlace &place) const {
    std::uint32_t row = height_ > 0 ? place.slots_[0] : 0;
    for (std::uint32_t level = 1; level < height_; ++level) {
        const auto *inner = static_cast<const TRangeInner *>(place.nodes_[level]);
        for (std::uint32_t slot = 0; slot < place.slots_[level]; ++slot) {
            row += inner->size[slot];
        }
    }
    return row;
}

void CRangeTree::SetLast(const CPlace &place, std::uint32_t last) {
    place.nodes_[0]->last[place.slots_[0]] = last;
    place.nodes_[0]->CheckAscending(place.slots_[0]);
    RefreshMaxima(place, 0);
}

void CRangeTree::SetRest(const CPlace &place, const TRangeRecord &record) {
    static_cast<TRangeLeaf *>(place.nodes_[0])->rest[place.slots_[0]] = {record.type, record.direction, record.note};
}

/// Where a range that starts at a number goes in.
CRangeTree::CPlace CRangeTree::PlaceFor(std::uint32_t first) const {
    return Descend([first](const TRangeNode &node) {
        const std::uint32_t slots = node.SlotsUpTo(first);
        return node.is_leaf || slots == 0 ? slots : slots - 1;
    });
}

void CRangeTree::Insert(const TRangeRecord &record) {
    CPlace place = PlaceFor(record.first);
    InsertAt(place, record);
}

void CRangeTree::Insert(CPlace &near, const TRangeRecord &record) {
    const TRangeNode *leaf = height_ > 0 ? near.nodes_[0] : nullptr;
    const auto starts_above = [&](std::uint32_t slot) {
        return slot < leaf->count && leaf->first[slot] > record.first;
    };
    const std::uint32_t slot = near.slots_[0];
    // The ranges on both sides must stand in the same leaf: beyond its bounds only a search knows.
    const bool behind_left = leaf != nullptr && slot > 0 && leaf->first[slot - 1] <= record.first;
    if (behind_left && starts_above(slot)) {
        InsertAt(near, record);
    } else if (leaf != nullptr && starts_above(slot + 1) && leaf->first[slot] <= record.first) {
        ++near.slots_[0];
        InsertAt(near, record);
    } else {
        near = PlaceFor(record.first);
        InsertAt(near, record);
    }
}

void CRangeTree::InsertAt(CPlace &place, const TRangeRecord &record) {
    if (height_ == 0) {
        root_.reset(new TRangeLeaf);
        place.nodes_[0] = root_.get();
        place.slots_[0] = 0;
        height_ = 1;
    }
    if (place.nodes_[0]->IsFull()) {
        Split(place, 0);
    }
    static_cast<TRangeLeaf *>(place.nodes_[0])->Insert(place.slots_[0], record);
    ++size_;
    for (std::uint32_t level = 1; level < height_; ++level) {
        auto *inner = static_cast<TRangeInner *>(place.nodes_[level]);
        const std::uint32_t slot = place.slots_[level];
        ++inner->size[slot];
        inner->first[slot] = std::min(inner->first[slot], record.first);
        inner->last[slot] = std::max(inner->last[slot], record.last);
        inner->CheckAscending(slot);
    }
}

/// Splits the place's full node at a level in two and keeps the place on its slot.
void CRangeTree::Split(CPlace &place, std::uint32_t level) {
    if (level + 1 == height_) {
        GrowRoot(place);
    } else if (place.nodes_[level + 1]->IsFull()) {
        Split(place, level + 1);
    }
    TRangeNode *node = place.nodes_[level];
    auto *parent = static_cast<TRangeInner *>(place.nodes_[level + 1]);
    std::uint32_t &slot = place.slots_[level];
    std::uint32_t &parent_slot = place.slots_[level + 1];

    // Ranges that come in ascending order leave full nodes behind, not half empty ones.
    const bool at_end = slot + 1 >= node->count;
    const std::uint32_t kept = at_end ? node->count - 1 : node->count / 2;
    parent->Insert(parent_slot + 1, node->is_leaf ? static_cast<TRangeLeaf *>(node)->SplitOff(kept)
                                                  : static_cast<TRangeInner *>(node)->SplitOff(kept));
    parent->Describe(parent_slot);
    if (slot > kept || (slot == kept && !node->is_leaf)) {
        slot -= kept;
        ++parent_slot;
        place.nodes_[level] = parent->child[parent_slot].get();
    }
}

void CRangeTree::GrowRoot(CPlace &place) {
    assert(height_ < CPlace::kMaxHeight);
    auto *root = new TRangeInner;
    TRangeNode::TPointer owner(root);
    root->Insert(0, std::move(root_));
    root_ = std::move(owner);
    place.nodes_[height_] = root;
    place.slots_[height_] = 0;
    ++height_;
}

void CRangeTree::Erase(const CPlace &place) {
    static_cast<TRangeLeaf *>(place.nodes_[0])->Erase(place.slots_[0]);
    --size_;
    for (std::uint32_t level = 1; level < height_; ++level) {
        --static_cast<TRangeInner *>(place.nodes_[level])->size[place.slots_[level]];
    }
    DropEmptyNodes(place);
}

/// Takes the nodes out that have become empty at a place, and roots with a single child.
void CRangeTree::DropEmptyNodes(const CPlace &place) {
    if (size_ == 0) {
        Clear();
        return;
    }
    std::uint32_t level = 0;
    while (place.nodes_[level]->count == 0) {
        ++level;
        static_cast<TRangeInner *>(place.nodes_[level])->Erase(place.slots_[level]);
    }
    RefreshMaxima(place, level);
    while (!root_->is_leaf && root_->count == 1) {
        root_ = std::move(static_cast<TRangeInner *>(root_.get())->child[0]);
        --height_;
    }
}

/// Carries the highest last number of a place's node at a level up to the root.
void CRangeTree::RefreshMaxima(const CPlace &place, std::uint32_t level) {
    for (; level + 1 < height_; ++level) {
        auto *parent = place.nodes_[level + 1];
        const std::uint32_t slot = place.slots_[level + 1];
        const std::uint32_t last = place.nodes_[level]->HighestLast();
        if (parent->last[slot] == last) {
            return;
        }
        parent->last[slot] = last;
        parent->CheckAscending(slot);
    }
}

}  // namespace kq_drv

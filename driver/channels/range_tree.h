#pragma once

#include <array>
#include <cstdint>

#include "driver/channels/range_nodes.h"

namespace kq_drv {

/// Ranges in ascending order of their first numbers. Equal first numbers are in the order of their insertion, and
/// ranges may overlap. Searching, inserting, erasing and the way from a row to its range and back cost a logarithm of
/// the number of ranges; a step to a neighbour costs next to nothing.
class CRangeTree {
public:
    /// A position in the order: that of a range, or the end. It holds until the tree changes in any other way than
    /// through SetLast and SetRest.
    class CPosition {
        friend class CRangeTree;
        static constexpr std::uint32_t kMaxHeight = 8;  // a level more takes more than 30 times the insertions

        std::array<TRangeNode *, kMaxHeight> nodes_{};  // the way from the leaf, 0, up to the root
        std::array<std::uint32_t, kMaxHeight> slots_{};
    };

    CRangeTree();
    CRangeTree(CRangeTree &&other) noexcept;
    CRangeTree &operator=(CRangeTree &&other) noexcept;
    ~CRangeTree();

    std::uint32_t Size() const { return size_; }
    bool IsEmpty() const { return size_ == 0; }
    void Clear();

    /// The lowest range, or the end of an empty tree.
    CPosition Begin() const;
    /// The lowest range whose last number isn't below this one, or the end.
    CPosition FirstEndingFrom(std::uint32_t number) const;
    /// The lowest range that holds a number; false without one, and the position is FirstEndingFrom's.
    bool FindContaining(std::uint32_t number, CPosition &position) const;
    /// The same for those who only want to know the range; without one the record stays as it was.
    bool FindContaining(std::uint32_t number, TRangeRecord &record) const;
    /// The lowest range that starts at a number; false without one.
    bool FindByFirst(std::uint32_t first, CPosition &position) const;
    /// The range at a row, counted from 0; the end from Size on.
    CPosition AtRow(std::uint32_t row) const;

    bool IsEnd(const CPosition &position) const {
        return height_ == 0 || position.slots_[0] >= position.nodes_[0]->count;
    }
    /// Steps to the next range or the end.
    void Next(CPosition &position) const {
        if (++position.slots_[0] >= position.nodes_[0]->count) {
            NextLeaf(position);
        }
    }
    /// Steps to the next range if it is in the same leaf, else stays and gives false.
    bool NextInLeaf(CPosition &position) const {
        const bool can = position.slots_[0] + 1 < position.nodes_[0]->count;
        position.slots_[0] += can ? 1 : 0;
        return can;
    }
    std::uint32_t RowOf(const CPosition &position) const;

    TRangeRecord At(const CPosition &position) const {
        return static_cast<const TRangeLeaf *>(position.nodes_[0])->At(position.slots_[0]);
    }
    std::uint32_t FirstAt(const CPosition &position) const { return position.nodes_[0]->first[position.slots_[0]]; }
    std::uint32_t LastAt(const CPosition &position) const { return position.nodes_[0]->last[position.slots_[0]]; }
    void SetLast(const CPosition &position, std::uint32_t last);
    /// Replaces type, direction and note; first and last stay as they are.
    void SetRest(const CPosition &position, const TRangeRecord &record);

    /// Inserts a range in the order, after those of the same first number.
    void Insert(const TRangeRecord &record);
    /// The same, faster if the position is where the range belongs or right before it. The position goes to the new
    /// range.
    void Insert(CPosition &near, const TRangeRecord &record);
    /// Inserts a range so that it is the one at a row, counted from 0 and not above Size. Its first number must fit
    /// between those of its new neighbours; among equal ones any row will do.
    void InsertAtRow(std::uint32_t row, const TRangeRecord &record);
    void Erase(const CPosition &position);

private:
    template <class TChoose>
    void Descend(CPosition &position, TChoose choose) const;
    void NextLeaf(CPosition &position) const;
    void GoToPlace(std::uint32_t first, CPosition &position) const;
    void InsertAt(CPosition &position, const TRangeRecord &record);
    void Split(CPosition &position, std::uint32_t level);
    void GrowRoot(CPosition &position);
    void DropEmptyNodes(const CPosition &position);
    void RefreshMaxima(const CPosition &position, std::uint32_t level);

    TRangeNode::TPointer root_;
    std::uint32_t height_ = 0;  // levels, the leaves included
    std::uint32_t size_ = 0;
};

}  // namespace kq_drv

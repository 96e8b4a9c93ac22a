#pragma once

#include <array>
#include <cstdint>

#include "driver/channels/range_nodes.h"

namespace kq_drv {

/// Ranges in ascending order of their first numbers. Equal first numbers stand in the order of their insertion, and
/// ranges may overlap. Searching, inserting, erasing and the way from a row to its range and back cost a logarithm of
/// the number of ranges; a step to a neighbour costs nothing worth mentioning.
class CRangeTree {
public:
    /// A place in the order: at a range, or at the end. It holds until the tree changes in any other way than through
    /// SetLast and SetRest.
    class CPlace {
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
    CPlace Begin() const;
    /// The lowest range whose last number isn't below this one, or the end.
    CPlace FirstEndingFrom(std::uint32_t number) const;
    /// The lowest range that holds a number; false without one, and the place is FirstEndingFrom's.
    bool FindContaining(std::uint32_t number, CPlace &place) const;
    /// The same for those who only want to know the range; without one the record stays as it was.
    bool FindContaining(std::uint32_t number, TRangeRecord &record) const;
    /// The lowest range that starts at a number; false without one.
    bool FindByFirst(std::uint32_t first, CPlace &place) const;
    /// The range at a row, counted from 0; the end from Size on.
    CPlace AtRow(std::uint32_t row) const;

    bool IsEnd(const CPlace &place) const { return height_ == 0 || place.slots_[0] >= place.nodes_[0]->count; }
    /// Steps to the next range or the end.
    void Next(CPlace &place) const {
        if (++place.slots_[0] >= place.nodes_[0]->count) {
            NextLeaf(place);
        }
    }
    /// Steps to the next range if it stands in the same leaf, else stays and gives false.
    bool NextInLeaf(CPlace &place) const {
        const bool can = place.slots_[0] + 1 < place.nodes_[0]->count;
        place.slots_[0] += can ? 1 : 0;
        return can;
    }
    std::uint32_t RowOf(const CPlace &place) const;

    TRangeRecord At(const CPlace &place) const {
        return static_cast<const TRangeLeaf *>(place.nodes_[0])->At(place.slots_[0]);
    }
    std::uint32_t FirstAt(const CPlace &place) const { return place.nodes_[0]->first[place.slots_[0]]; }
    std::uint32_t LastAt(const CPlace &place) const { return place.nodes_[0]->last[place.slots_[0]]; }
    void SetLast(const CPlace &place, std::uint32_t last);
    /// Replaces type, direction and note; first and last stay as they are.
    void SetRest(const CPlace &place, const TRangeRecord &record);

    /// Puts a range at its place, behind those of the same first number.
    void Insert(const TRangeRecord &record);
    /// The same, faster if the place is where the range belongs or right ahead of it. The place goes to the new range.
    void Insert(CPlace &near, const TRangeRecord &record);
    void Erase(const CPlace &place);

private:
    template <class TChoose>
    CPlace Descend(TChoose choose) const;
    void NextLeaf(CPlace &place) const;
    CPlace PlaceFor(std::uint32_t first) const;
    void InsertAt(CPlace &place, const TRangeRecord &record);
    void Split(CPlace &place, std::uint32_t level);
    void GrowRoot(CPlace &place);
    void DropEmptyNodes(const CPlace &place);
    void RefreshMaxima(const CPlace &place, std::uint32_t level);

    TRangeNode::TPointer root_;
    std::uint32_t height_ = 0;  // levels, the leaves included
    std::uint32_t size_ = 0;
};

}  // namespace kq_drv

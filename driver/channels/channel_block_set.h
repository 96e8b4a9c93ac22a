#pragma once

#include <cstdint>

#include "driver/channels/range_tree.h"
#include "driver/kq_def.h"

namespace kq_drv {

/// A block of channels of one type and direction. Its type is a tag of TValue. A count of 0 in a block that starts at 0
/// means all 2^32 channels, in any other block none.
struct CChannelBlock {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    std::uint32_t type = 0;
    kq_def::TDirection direction = kq_def::kDirectionInput;

    std::uint32_t Last() const { return first + (count - 1); }
};

/// Channel blocks in ascending order. Blocks may overlap; of several that hold a channel the lowest counts.
class CChannelBlockSet {
public:
    bool IsEmpty() const { return blocks_.IsEmpty(); }
    void Clear() { blocks_.Clear(); }

    /// The block that holds a channel; false if there is none.
    bool Find(std::uint32_t channel, CChannelBlock &block) const;
    /// Adds a block, whatever is there already.
    void Insert(const CChannelBlock &block);

    /// Gives each block in ascending order to a function.
    template <class TVisit>
    void ForEach(TVisit visit) const {
        for (auto position = blocks_.Begin(); !blocks_.IsEnd(position); blocks_.Next(position)) {
            visit(BlockOf(blocks_.At(position)));
        }
    }

private:
    static CChannelBlock BlockOf(const TRangeRecord &record);

    CRangeTree blocks_;
};

}  // namespace kq_drv

#include "driver/channels/channel_block_set.h"

namespace kq_drv {

bool CChannelBlockSet::Find(std::uint32_t channel, CChannelBlock &block) const {
    TRangeRecord record;
    if (!blocks_.FindContaining(channel, record)) {
        return false;
    }
    block = BlockOf(record);
    return true;
}

void CChannelBlockSet::Insert(const CChannelBlock &block) {
    blocks_.Insert({block.first, block.Last(), block.type, block.direction, 0});
}

CChannelBlock CChannelBlockSet::BlockOf(const TRangeRecord &record) {
    return {record.first, record.last - record.first + 1, record.type,
            static_cast<kq_def::TDirection>(record.direction)};
}

}  // namespace kq_drv

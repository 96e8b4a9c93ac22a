#include "channel_numbers.h"

#include <algorithm>
#include <iterator>

namespace simulator {

CChannelNumbers::CChannelNumbers() : blocks_{{kStartChannel, kReportChannel}, {kHistoryChannel, kHistoryChannel}} {}

bool CChannelNumbers::Take(std::uint32_t first, std::uint32_t count, std::uint32_t &taken) {
    const std::uint32_t last = first + (count - 1);
    const auto next = blocks_.upper_bound(last);
    if (next != blocks_.begin() && std::prev(next)->second >= first) {
        taken = std::max(first, std::prev(next)->first);
        return false;
    }
    blocks_.emplace(first, last);
    return true;
}

std::uint32_t CChannelNumbers::FreeAfterAll(std::uint32_t count) const {
    auto highest = std::prev(blocks_.end());
    if (highest->first == kHistoryChannel && kHistoryChannel - std::prev(highest)->second > count) {
        --highest;
    }
    return 0xFFFFFFFF - highest->second >= count ? highest->second + 1 : 0;
}

}  // namespace simulator

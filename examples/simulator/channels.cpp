#include "channels.h"

#include <algorithm>
#include <iterator>

#include "channel_numbers.h"
#include "signal_values.h"
#include "texts.h"

using kq_def::TDirection;
using kq_def::TValueTag;

namespace simulator {

namespace {

TValueTag TypeOf(const TSignal &signal) {
    switch (signal.shape) {
        case TShape::kSquare:
            return kq_def::kTagBoolean;
        case TShape::kRandom:
            return kq_def::kTagInteger;
        default:
            return kq_def::kTagShortreal;
    }
}

}  // namespace

CChannels::CChannels(const TParameters &parameters)
    : blocks_{{kStartChannel, 4, kq_def::kTagBoolean, kq_def::kDirectionOutput, nullptr},
              {kStepsChannel, 1, kq_def::kTagLongcard, kq_def::kDirectionInput, nullptr},
              {kReportChannel, 1, kq_def::kTagDString, kq_def::kDirectionInput, nullptr},
              {kHistoryChannel, 1, kq_def::kTagBuffer, kq_def::kDirectionInput, nullptr}} {
    for (const TSignal &signal : parameters.signals) {
        const TDirection direction = signal.writable ? kq_def::kDirectionBoth : kq_def::kDirectionInput;
        blocks_.push_back({signal.first, signal.count, TypeOf(signal), direction, &signal});
    }
    std::sort(blocks_.begin(), blocks_.end(),
              [](const TBlock &left, const TBlock &right) { return left.first < right.first; });
}

const TBlock *CChannels::Find(std::uint32_t channel) const {
    const auto next = std::upper_bound(blocks_.begin(), blocks_.end(), channel,
                                       [](std::uint32_t number, const TBlock &block) { return number < block.first; });
    if (next == blocks_.begin()) {
        return nullptr;
    }
    const TBlock &block = *std::prev(next);
    return channel - block.first < block.count ? &block : nullptr;
}

std::string CChannels::Description(const TBlock &block, std::uint32_t channel) {
    if (block.signal != nullptr) {
        return std::string(texts::kSignal) + std::to_string(block.signal->number) + ": " + SignalText(*block.signal);
    }
    switch (channel) {
        case kStartChannel:
            return std::string(texts::kStart);
        case kStopChannel:
            return std::string(texts::kStop);
        case kStepChannel:
            return std::string(texts::kStep);
        case kResetChannel:
            return std::string(texts::kReset);
        case kStepsChannel:
            return std::string(texts::kSteps);
        case kReportChannel:
            return std::string(texts::kReport);
        default:
            return std::string(texts::kHistory);
    }
}

}  // namespace simulator

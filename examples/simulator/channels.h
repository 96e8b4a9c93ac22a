#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "driver/kq_def.h"
#include "parameters.h"

namespace simulator {

/// Neighbouring channels that are alike.
struct TBlock {
    std::uint32_t first;
    std::uint32_t count;
    kq_def::TValueTag type;
    kq_def::TDirection direction;
    const TSignal *signal;  ///< none for the channels that are there in every configuration
};

/// All channels of a configuration, ascending.
class CChannels {
public:
    CChannels() = default;
    /// The parameters have to stay where they are.
    explicit CChannels(const TParameters &parameters);

    const std::vector<TBlock> &Blocks() const { return blocks_; }
    /// The block of a channel, null if there is no such channel.
    const TBlock *Find(std::uint32_t channel) const;
    /// What a channel is, in code page 1250.
    static std::string Description(const TBlock &block, std::uint32_t channel);

private:
    std::vector<TBlock> blocks_;
};

}  // namespace simulator

#pragma once

#include <cstdint>
#include <map>

namespace simulator {

// The channels that are there in every configuration. simulator.pdt declares all of them but the buffer, whose number
// is beyond those that people give to signals: a driver map file made by the configurator has none for buffers.
inline constexpr std::uint32_t kStartChannel = 1;
inline constexpr std::uint32_t kStopChannel = 2;
inline constexpr std::uint32_t kStepChannel = 3;
inline constexpr std::uint32_t kResetChannel = 4;
inline constexpr std::uint32_t kStepsChannel = 5;
inline constexpr std::uint32_t kReportChannel = 6;
inline constexpr std::uint32_t kHistoryChannel = 10000;

inline constexpr std::uint32_t kMaxSignals = 99;
inline constexpr std::uint32_t kMaxChannelsOfSignal = 64;

/// Which numbers of channels are taken; in the beginning those above.
class CChannelNumbers {
public:
    CChannelNumbers();

    /// Takes a block that ends within 32 bits. False if one of its numbers is taken already, and which one.
    bool Take(std::uint32_t first, std::uint32_t count, std::uint32_t &taken);
    /// Where a block after all signals would begin; 0 if the numbers don't suffice.
    std::uint32_t FreeAfterAll(std::uint32_t count) const;

private:
    std::map<std::uint32_t, std::uint32_t> blocks_;  ///< last number of each, by its first
};

}  // namespace simulator

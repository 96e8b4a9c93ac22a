#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "tools/arguments.h"
#include "tools/driver/channel_value.h"

/// A channel that is written or read in every round.
struct TDrivePoint {
    std::uint32_t channel = 0;
    CChannelValue value;
};

/// What to do with a driver, as the command line says it.
struct TDrivePlan {
    std::string name;  ///< the driver's, in code page 1250
    std::deque<TDrivePoint> reads;
    std::deque<TDrivePoint> writes;
};

/// The longest name that a driver can have, and the longest path of its parameter file, in code page 1250.
inline constexpr std::size_t kLongestDriverName = 63;
inline constexpr std::size_t kLongestParPath = 259;

/// False, with the reason, for a channel, type, value or name that isn't one. The module's name serves a driver without
/// one.
bool MakeDrivePlan(const TDriveArguments &arguments, std::string_view module, TDrivePlan &plan, std::string &reason);

#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "driver/kq_def.h"
#include "platform/base/dynamic_string.h"
#include "platform/base/export.h"

namespace kq_drv {

class CChannelBlockSet;
class CDriver;

/// Which channels a driver has: blocks of channel numbers with a type, a tag of TValue, and a direction each. Filled
/// from the text of a driver map (DMF) or from the driver itself, then asked.
///
/// A text holds, after the word `begin` and up to `end`, entries such as `1 - 8 boolean input` or `9 real output`, in
/// any order. Words are taken in any case. The end of the text is no error, wherever it comes.
///
/// Copies of a loaded map share its blocks: Done on any of them empties all. Error texts go to a caller's buffer, given
/// by its highest valid index and its address; they are cut at the bound, and written only on failure. Short memory is
/// a failure too; nothing throws.
class KQ_API CChannelMap {
public:
    /// More blocks aren't taken from a driver: its list may have no end.
    static constexpr std::uint32_t kMostBlocks = 1000000;

    CChannelMap();
    ~CChannelMap();
    CChannelMap(const CChannelMap &);
    CChannelMap &operator=(const CChannelMap &);

    /// Adds the blocks of a text to those that are there. False for a text with an error; what comes before it has
    /// been added. A block whose first number is taken is an error.
    bool LoadFromDString(std::uint32_t error_high, char *error, const TDStringA *text);
    /// The same for a file. The path is given by its length, 0 meaning up to the terminator, and its address.
    bool LoadFromFile(std::uint32_t error_high, char *error, std::uint32_t path_high, const char *path);

    /// Adds the blocks that a driver lists, kMostBlocks at most. False for a block whose first number is taken and for
    /// one more block than that, the blocks before it having been added, and, without a text, for a driver that can't
    /// list its channels.
    bool LoadFromDriver(std::uint32_t error_high, char *error, CDriver *driver);

    /// May these channels be used with this type and direction? False names the first thing that is wrong with the
    /// first channel that is wrong. Buffers may be used anywhere; an empty map refuses all else.
    bool Check(std::uint32_t error_high, char *error, std::uint32_t first, std::uint32_t count, std::uint32_t type,
               kq_def::TDirection direction) const;
    /// The type and direction of a channel; false if the map doesn't have it. A channel that may be used in either
    /// direction reads as one that goes both ways.
    bool Get(std::uint32_t error_high, char *error, std::uint32_t channel, std::uint32_t &type,
             kq_def::TDirection &direction) const;

    /// Drops all blocks. The map can be loaded again.
    void Done();

private:
    bool Load(std::uint32_t error_high, char *error, std::string_view text);
    bool LoadBlocks(std::uint32_t error_high, char *error, CDriver &driver);
    CChannelBlockSet &Blocks();

    std::shared_ptr<CChannelBlockSet> blocks_;  // none as long as nothing was loaded
};

}  // namespace kq_drv

#pragma once

#include <cstdint>
#include <unordered_set>
#include <utility>
#include <vector>

#include "driver/channels/channel_transaction.h"
#include "model/journal.h"
#include "model/report_window.h"

namespace kq_pdt {

class CSectionDef;
class CVariable;

/// The edit under way: what takes it back, whether it was refused, and what is left to do when its own work is done.
/// However many refusals it meets, the user is told once, at its end.
struct TEditState {
    using TCommands = std::vector<std::pair<TWindowCommand, std::uint32_t>>;

    /// How many assignments one edit may set off.
    static constexpr std::uint32_t kMaxAssignments = 10'000;

    explicit TEditState(CChannelRangeTable &ranges) : channels(ranges) {}

    void Touch(CVariable &variable) {
        if (is_touched.insert(&variable).second) {
            touched.push_back(&variable);
        }
    }

    CJournal journal;
    CChannelTransaction channels;
    bool refused = false;
    bool bad_channel = false;  ///< refused for a channel, which a box tells
    bool bad_group = false;    ///< refused for a group of channels, which the message list tells
    bool removes = false;      ///< something is deleted, and what depends on it may go as well
    bool channels_changed = false;
    std::uint32_t assignments = 0;
    std::uint32_t sections_created = 0;
    std::vector<CVariable *> touched;  ///< variables whose value has to be settled, in the order of their first change
    std::unordered_set<CVariable *> is_touched;
    std::vector<CSectionDef *> orphans;  ///< dependent sections whose source is gone
    TCommands commands;                  ///< for the window, each once
};

}  // namespace kq_pdt

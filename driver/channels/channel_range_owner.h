#pragma once

#include <cstdint>
#include <string_view>

namespace kq_pdt {

/// Who hears what the table of channel ranges has to say: the window of a session, in a test a recorder.
class CChannelRangeOwner {
public:
    virtual ~CChannelRangeOwner() = default;

    /// Appends text1 followed by text2 to the list of messages. A position of 0xFFFFFFFF means none.
    virtual void AddWarning(std::string_view text1, std::string_view text2, std::uint32_t position) = 0;
    /// The same for an error, which counts: with an error there is no way on from text to model.
    virtual void AddError(std::string_view text1, std::string_view text2, std::uint32_t position) = 0;
    /// The table looks different now.
    virtual void ChannelsChanged() = 0;
    /// Selects a row of the table, counted from 1.
    virtual void SelectChannelRow(std::uint32_t row) = 0;
};

}  // namespace kq_pdt

#pragma once

#include <cstdint>
#include <string_view>

#include "driver/channels/channel_range_owner.h"

namespace kq_pdt {

/// Commands that the model posts to the window of its session.
enum TWindowCommand : std::uint32_t {
    cmRebuildSheets = 0x3E9,   ///< both sheets lay out anew
    cmRebuildTable = 0x3EA,    ///< the sheet rebuilds one table; the parameter is its id
    cmCellCommitted = 0x3EB,   ///< a cell was edited
    cmKeywordsChanged = 0x3EC  ///< the words to be coloured have changed
};

/// What the model sees of its window. Every operation has an empty body, so a window overrides only those that it
/// needs. Lines and columns count from 1; 0 and 0xFFFFFFFF mean that there is none.
class CReportWindow : public CChannelRangeOwner {
public:
    void AddWarning(std::string_view /*text1*/, std::string_view /*text2*/, std::uint32_t /*line*/) override {}
    void AddError(std::string_view /*text1*/, std::string_view /*text2*/, std::uint32_t /*line*/) override {}
    void SelectChannelRow(std::uint32_t /*row*/) override {}
    void ChannelsChanged() override {}
    /// An error with its column in the text.
    virtual void AddErrorAt(std::string_view /*text1*/, std::string_view /*text2*/, std::uint32_t /*line*/,
                            std::uint32_t /*column*/) {}
    virtual void UpdateToolButtons(bool /*insert*/, bool /*remove*/, bool /*add*/) {}
    virtual void ShowHint(std::string_view /*text*/) {}
    virtual void AddMessageRecord(std::uint32_t /*line*/, std::uint32_t /*column*/) {}
    virtual void ClearMessages() {}
    /// Takes a command to be carried out later.
    virtual void PostCommand(TWindowCommand /*command*/, std::uint32_t /*parameter*/) {}
};

}  // namespace kq_pdt

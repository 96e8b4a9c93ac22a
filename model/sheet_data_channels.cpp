// The table of channels as the model reaches it: the window is informed of every change.

#include "model/sheet_data.h"
#include "model/texts.h"
#include "platform/view/message_box.h"

namespace kq_pdt {

void CParSheetData::ShowBadChannel() {
    TMessageBox box;
    box.title = texts::kBadChannelTitle;
    box.lines[0] = texts::kBadChannel;
    box.icon = TBoxIcon::kStop;
    DoMessageBox2(box);
}

bool CParSheetData::ChangeChannelParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                                           const TParValue &new_value) {
    if (!ranges_.ChangeParameter(key, keyword, old_value, new_value)) {
        ShowBadChannel();
        return false;
    }
    if (window_ != nullptr) {
        window_->ChannelsChanged();
    }
    Post(cmRebuildSheets);
    return true;
}

void CParSheetData::RemoveChannelRange(std::uint32_t first) {
    ranges_.RemoveRange(first);
    if (window_ != nullptr) {
        window_->ChannelsChanged();
    }
    Post(cmRebuildSheets);
}

void CParSheetData::AppendChannelRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first,
                                       std::uint32_t &last, bool defined) {
    ranges_.AppendChannel(type, direction, first, last, defined);
    Post(cmRebuildSheets);
}

bool CParSheetData::AddUnnamedChannelRange(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                           std::uint32_t direction) {
    const bool added = ranges_.AddDefinedUnnamed(first, last, type, direction);
    if (window_ != nullptr) {
        window_->ChannelsChanged();
    }
    return added;
}

bool CParSheetData::AddChannelRangeIfFree(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                          std::uint32_t direction) {
    return ranges_.DefineIfFits(first, last, type, direction);
}

std::uint32_t CParSheetData::NewChannelRange(bool defined, std::uint32_t count) {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    ranges_.AppendRange(kUndefinedCode, kUndefinedCode, first, last, defined, count);
    Post(cmRebuildSheets);
    return first;
}

void CParSheetData::SelectChannelRange(std::uint32_t first) { ranges_.SelectRow(first); }

}  // namespace kq_pdt

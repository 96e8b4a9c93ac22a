// The table of channels as the model reaches it: the window is informed of every change.

#include "model/edit_state.h"
#include "model/sheet_data.h"
#include "model/texts.h"
#include "platform/view/message_box.h"

namespace kq_pdt {

void CParSheetData::ShowBadChannel() {
    if (edit_ != nullptr) {
        Refuse(true);
        return;
    }
    TMessageBox box;
    box.title = texts::kBadChannelTitle;
    box.lines[0] = texts::kBadChannel;
    box.icon = TBoxIcon::kStop;
    DoMessageBox2(box);
}

void CParSheetData::TellChannelsChanged() {
    if (edit_ != nullptr) {
        edit_->channels_changed = true;
    } else if (window_ != nullptr) {
        window_->ChannelsChanged();
    }
}

bool CParSheetData::ChangeChannelParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                                           const TParValue &new_value) {
    if (!ranges_.ChangeParameter(key, keyword, old_value, new_value)) {
        ShowBadChannel();
        return false;
    }
    TellChannelsChanged();
    Post(cmRebuildSheets);
    return true;
}

void CParSheetData::RemoveChannelRange(std::uint32_t first) {
    ranges_.RemoveRange(first);
    TellChannelsChanged();
    Post(cmRebuildSheets);
}

bool CParSheetData::AppendChannelRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first,
                                       std::uint32_t &last, bool defined) {
    const bool appended = ranges_.AppendChannel(type, direction, first, last, defined);
    Post(cmRebuildSheets);
    return appended;
}

bool CParSheetData::AddUnnamedChannelRange(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                           std::uint32_t direction) {
    const bool added = ranges_.AddDefinedUnnamed(first, last, type, direction);
    TellChannelsChanged();
    return added;
}

bool CParSheetData::DefineFittingRange(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                       std::uint32_t direction) {
    const bool fits = ranges_.DefineIfFits(first, last, type, direction);
    if (fits) {
        TellChannelsChanged();
    }
    return fits;
}

bool CParSheetData::DefineChannelRange(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                       std::uint32_t direction) {
    const bool defined = DefineFittingRange(first, last, type, direction);
    if (!defined) {
        ShowBadChannel();
    }
    return defined;
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

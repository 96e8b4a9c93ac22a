#include "driver/channels/channel_range_table.h"

#include "driver/channels/channel_range_note.h"
#include "driver/channels/texts.h"
#include "platform/base/number_text.h"

namespace kq_pdt {

namespace texts = kq_drv::texts;

namespace {

constexpr std::uint32_t kColumnFirst = 1;
constexpr std::uint32_t kColumnLast = 2;
constexpr std::uint32_t kColumnType = 3;
constexpr std::uint32_t kColumnDirection = 4;
constexpr std::uint32_t kColumnName = 5;

constexpr std::uint32_t kColorDefined = 0;
constexpr std::uint32_t kColorUndefined = 0x7F7F7F;
constexpr std::uint32_t kColorFree = 0xFF0000;
constexpr std::uint32_t kColorHighlight = 0xFFFFFF;
constexpr std::uint32_t kBackgroundHighlight = 0xFF;

}  // namespace

void CChannelRangeTable::Clear() {
    ranges_.Clear();
    names_.clear();
    aside_.Clear();
    dmf_stop_line_ = 0;
    next_row_ = kNoNumber;
}

bool CChannelRangeTable::AddIfFree(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                   std::uint32_t direction) {
    CPosition position = ranges_.FirstEndingFrom(first);
    if (first > last || (!ranges_.IsEnd(position) && last >= ranges_.FirstAt(position))) {
        return false;
    }
    ranges_.Insert(position, {first, last, type, direction, NoteFlags(true, type, direction)});
    Changed();
    return true;
}

void CChannelRangeTable::AppendRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first,
                                     std::uint32_t &last, bool defined, std::uint32_t count) {
    first = ranges_.IsEmpty() ? 1 : ranges_.LastAt(ranges_.AtRow(ranges_.Size() - 1)) + 1;
    last = first + count - 1;
    ranges_.Insert({first, last, type, direction, NoteFlags(defined, type, direction)});
    Changed();
}

void CChannelRangeTable::AppendChannel(std::uint32_t type, std::uint32_t direction, std::uint32_t &first,
                                       std::uint32_t &last, bool defined) {
    AppendRange(type, direction, first, last, defined, 1);
}

void CChannelRangeTable::RemoveRange(std::uint32_t first) {
    CPosition position;
    if (ranges_.FindByFirst(first, position)) {
        ranges_.Erase(position);
        Changed();
    }
}

bool CChannelRangeTable::FindContaining(std::uint32_t number, CChannelRange &range) const {
    TRecord record;
    const bool found = ranges_.FindContaining(number, record);
    if (found) {
        Show(record, range);
    }
    return found;
}

bool CChannelRangeTable::FindByFirst(std::uint32_t first, CChannelRange &range) const {
    CPosition position;
    const bool found = ranges_.FindByFirst(first, position);
    if (found) {
        Show(ranges_.At(position), range);
    }
    return found;
}

bool CChannelRangeTable::HasUndefined() const {
    std::uint32_t row = 0;
    return FirstUndefinedRow(row);
}

bool CChannelRangeTable::FirstUndefinedRow(std::uint32_t &row) const {
    std::uint32_t at = 0;
    for (CPosition position = ranges_.Begin(); !ranges_.IsEnd(position); ranges_.Next(position), ++at) {
        const TRecord record = ranges_.At(position);
        if (!IsChannelType(record.type) || !IsDirection(record.direction)) {
            row = at;
            return true;
        }
    }
    return false;
}

bool CChannelRangeTable::GetRow(std::uint32_t row, CChannelRange &range) const {
    if (!GoToRow(row)) {
        return false;
    }
    Show(ranges_.At(row_position_), range);
    return true;
}

bool CChannelRangeTable::GetCellText(std::uint32_t row, std::uint32_t column, kq_base::TText &text,
                                     std::uint32_t &text_color, std::uint32_t &background, bool highlight) const {
    CChannelRange range;
    if (!GetRow(row, range)) {
        return false;
    }
    text.Clear();
    text_color = range.defined ? kColorDefined : kColorUndefined;
    const auto show_code = [&](std::uint32_t code, bool known, bool free) {
        text = known ? KeywordText(code) : texts::kUndefined;
        if (free) {
            text_color = kColorFree;
        }
        if (!known && highlight) {
            text_color = kColorHighlight;
            background = kBackgroundHighlight;
        }
    };
    switch (column) {
        case kColumnFirst:
            text = kq_base::DecimalText(range.first);
            break;
        case kColumnLast:
            text = kq_base::DecimalText(range.last);
            break;
        case kColumnType:
            show_code(range.type, IsChannelType(range.type), range.typeFree);
            break;
        case kColumnDirection:
            show_code(range.direction, IsDirection(range.direction), range.directionFree);
            break;
        case kColumnName:
            text = range.name;
            break;
        default:
            break;
    }
    return true;
}

bool CChannelRangeTable::IsCellEditable(std::uint32_t row, std::uint32_t column) const {
    CChannelRange range;
    return GetRow(row, range) &&
           ((column == kColumnType && range.typeFree) || (column == kColumnDirection && range.directionFree));
}

void CChannelRangeTable::SetCellText(std::uint32_t row, std::uint32_t column, std::string_view text) {
    const std::uint32_t keyword = FindKeyword(text);
    if (keyword == 0 || !GoToRow(row)) {
        return;
    }
    TRecord record = ranges_.At(row_position_);
    if (column == kColumnType) {
        record.type = keyword;
    } else if (column == kColumnDirection) {
        record.direction = keyword;
    }
    ranges_.SetRest(row_position_, record);
}

void CChannelRangeTable::SelectRow(std::uint32_t first) const {
    CPosition position;
    if (owner_ != nullptr && ranges_.FindByFirst(first, position)) {
        owner_->SelectChannelRow(ranges_.RowOf(position) + 1);
    }
}

void CChannelRangeTable::Show(const TRecord &record, CChannelRange &range) const {
    range.first = record.first;
    range.last = record.last;
    range.type = record.type;
    range.direction = record.direction;
    range.defined = IsDefined(record);
    range.typeFree = (record.note & kNoteTypeFree) != 0;
    range.directionFree = (record.note & kNoteDirectionFree) != 0;
    if (const std::uint32_t name = record.note >> kNoteNameShift; name != 0) {
        range.name = names_[name - 1];
    } else if (!range.name.IsEmpty()) {
        range.name.Clear();
    }
}

bool CChannelRangeTable::GoToRow(std::uint32_t row) const {
    if (row == next_row_ && ranges_.NextInLeaf(row_position_)) {
        ++next_row_;
        return true;
    }
    if (row >= ranges_.Size()) {
        return false;
    }
    if (row + 1 != next_row_) {
        row_position_ = ranges_.AtRow(row);
        next_row_ = row + 1;
    }
    return true;
}

void CChannelRangeTable::ReportWarning(std::string_view text1, std::string_view text2) const {
    if (owner_ != nullptr) {
        owner_->AddWarning(text1, text2, kNoNumber);
    }
}

void CChannelRangeTable::ReportError(std::string_view text1, std::string_view text2) const {
    if (owner_ != nullptr) {
        owner_->AddError(text1, text2, kNoNumber);
    }
}

void CChannelRangeTable::Changed() {
    next_row_ = kNoNumber;
    if (owner_ != nullptr) {
        owner_->ChannelsChanged();
    }
}

}  // namespace kq_pdt

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

bool CChannelRangeTable::AppendRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first,
                                     std::uint32_t &last, bool defined, std::uint32_t count) {
    const std::uint32_t highest = Ranges().IsEmpty() ? 0 : Ranges().LastAt(Ranges().AtRow(Ranges().Size() - 1));
    if (count == 0 || std::uint64_t{highest} + count > kHighestChannel) {
        first = last = kNoNumber;
        return false;
    }
    first = highest + 1;
    last = highest + count;
    store_.Insert({first, last, type, direction, NoteFlags(defined, type, direction)});
    Changed();
    return true;
}

bool CChannelRangeTable::AppendChannel(std::uint32_t type, std::uint32_t direction, std::uint32_t &first,
                                       std::uint32_t &last, bool defined) {
    return AppendRange(type, direction, first, last, defined, 1);
}

bool CChannelRangeTable::FindContaining(std::uint32_t number, CChannelRange &range) const {
    TRecord record;
    const bool found = Ranges().FindContaining(number, record);
    if (found) {
        Show(record, range);
    }
    return found;
}

bool CChannelRangeTable::FindByFirst(std::uint32_t first, CChannelRange &range) const {
    CPosition position;
    const bool found = Ranges().FindByFirst(first, position);
    if (found) {
        Show(Ranges().At(position), range);
    }
    return found;
}

bool CChannelRangeTable::HasUndefined() const {
    std::uint32_t row = 0;
    return FirstUndefinedRow(row);
}

bool CChannelRangeTable::FirstUndefinedRow(std::uint32_t &row) const {
    std::uint32_t at = 0;
    for (CPosition position = Ranges().Begin(); !Ranges().IsEnd(position); Ranges().Next(position), ++at) {
        const TRecord record = Ranges().At(position);
        if (!IsChannelType(record.type) || !IsDirection(record.direction)) {
            row = at;
            return true;
        }
    }
    return false;
}

bool CChannelRangeTable::GetRow(std::uint32_t row, CChannelRange &range) const {
    const CPosition *position = store_.GoToRow(row);
    if (position != nullptr) {
        Show(Ranges().At(*position), range);
    }
    return position != nullptr;
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
    const CPosition *cursor = keyword != 0 ? store_.GoToRow(row) : nullptr;
    if (cursor == nullptr) {
        return;
    }
    const CPosition position = *cursor;
    TRecord record = Ranges().At(position);
    if (column == kColumnType) {
        record.type = keyword;
    } else if (column == kColumnDirection) {
        record.direction = keyword;
    }
    store_.SetRest(position, record);
    Settle();
}

void CChannelRangeTable::SelectRow(std::uint32_t first) const {
    CPosition position;
    if (owner_ != nullptr && FindBlockStart(first, position)) {
        owner_->SelectChannelRow(Ranges().RowOf(position) + 1);
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
    range.continues = Continues(record);
    if (const kq_base::TText *name = store_.Name(record.note)) {
        range.name = *name;
    } else if (!range.name.IsEmpty()) {
        range.name.Clear();
    }
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
    if (owner_ != nullptr) {
        owner_->ChannelsChanged();
    }
}

}  // namespace kq_pdt

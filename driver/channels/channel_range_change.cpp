#include <algorithm>

#include "driver/channels/channel_range_note.h"
#include "driver/channels/channel_range_table.h"

// A changed parameter moves one bound of a definition's range, or both. What lies in the way goes only if no definition
// has it: undefined ranges are deleted or lose the channels that the new bounds take. Nothing changes before it is
// certain that everything can give way. Ranges are named by their rows here, since erasing makes positions invalid.
namespace kq_pdt {
namespace {

using kq_drv::TRangeRecord;

bool FitsKind(std::uint32_t code, std::uint32_t wanted) { return code == kUndefinedCode || code == wanted; }

/// True if a range may be deleted for another one to take its channels.
bool GivesWay(const TRangeRecord &range, const TRangeRecord &taker) {
    return !IsDefined(range) && FitsKind(range.type, taker.type) && FitsKind(range.direction, taker.direction);
}

}  // namespace

bool CChannelRangeTable::ChangeParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                                         const TParValue &new_value) {
    next_row_ = kNoNumber;
    const std::uint32_t old_number = old_value.number;
    const std::uint32_t new_number = new_value.number;
    CPosition position;
    if (keyword == kwAll) {
        return ranges_.FindByFirst(key, position) && MoveWhole(position, old_number, new_number);
    }
    const bool to_number = new_value.IsNumber();
    const bool between_numbers = old_value.IsNumber() && to_number;
    if (old_value == new_value) {
        return true;
    }
    switch (keyword) {
        case kwChNumber:
            return !to_number || (ranges_.FindByFirst(old_number, position) && MoveStart(position, new_number));
        case kwChType:
        case kwChDirection:
            return !to_number || (ranges_.FindByFirst(key, position) && ChangeKind(position, keyword, new_number));
        case kwChFrom:
            return !between_numbers || (ranges_.FindByFirst(old_number, position) && MoveFirst(position, new_number));
        case kwChTo:
            return !between_numbers ||
                   (ranges_.FindByFirst(key, position) && MoveLast(position, old_number, new_number));
        default:
            return true;
    }
}

bool CChannelRangeTable::ChangeKind(const CPosition &position, std::uint32_t keyword, std::uint32_t code) {
    TRecord range = ranges_.At(position);
    (keyword == kwChType ? range.type : range.direction) = code;
    ranges_.SetRest(position, range);
    return true;
}

/// The range keeps its length; bounds beyond the last channel number are refused.
bool CChannelRangeTable::MoveStart(const CPosition &position, std::uint32_t first) {
    const TRecord range = ranges_.At(position);
    const std::uint32_t last = first + (range.last - range.first);
    const bool wraps = range.first <= range.last && last < first;
    return !wraps && MoveWhole(position, first, last);
}

bool CChannelRangeTable::MoveWhole(const CPosition &position, std::uint32_t first, std::uint32_t last) {
    const TRecord taker = ranges_.At(position);
    const std::uint32_t row = ranges_.RowOf(position);
    std::vector<std::uint32_t> in_the_way;
    std::uint32_t rows_below = 0;
    CPosition other = ranges_.FirstEndingFrom(first);
    for (std::uint32_t at = ranges_.RowOf(other); !ranges_.IsEnd(other) && ranges_.FirstAt(other) <= last;
         ranges_.Next(other), ++at) {
        if (at == row || ranges_.LastAt(other) < first) {
            continue;
        }
        if (!GivesWay(ranges_.At(other), taker)) {
            return false;
        }
        in_the_way.push_back(at);
        rows_below += at < row ? 1 : 0;
    }
    std::for_each(in_the_way.rbegin(), in_the_way.rend(),
                  [this](std::uint32_t at) { ranges_.Erase(ranges_.AtRow(at)); });
    SetBounds(row - rows_below, first, last);
    return true;
}

bool CChannelRangeTable::MoveFirst(const CPosition &position, std::uint32_t first) {
    const TRecord range = ranges_.At(position);
    std::uint32_t row = ranges_.RowOf(position);
    if (first < range.first && !ClearDown(row, first)) {
        return false;
    }
    if (first > range.last && !ClearUp(row, first)) {
        return false;
    }
    SetBounds(row, first, first > range.last ? first : range.last);
    return true;
}

/// The last number that the definition had need not be the range's: the direction of the move depends on it alone.
bool CChannelRangeTable::MoveLast(const CPosition &position, std::uint32_t old_last, std::uint32_t last) {
    const TRecord range = ranges_.At(position);
    std::uint32_t row = ranges_.RowOf(position);
    if (last > old_last) {
        if (!ClearUp(row, last)) {
            return false;
        }
        SetBounds(row, range.first, last);
        return true;
    }
    if (last < range.first && !ClearDown(row, last)) {
        return false;
    }
    SetBounds(row, last < range.first ? last : range.first, last);
    return true;
}

/// Makes way for the range at a row from an edge below it on. The row follows what is deleted.
bool CChannelRangeTable::ClearDown(std::uint32_t &row, std::uint32_t edge) {
    const TRecord taker = ranges_.At(ranges_.AtRow(row));
    std::uint32_t lowest = row;
    for (; lowest > 0; --lowest) {
        const CPosition position = ranges_.AtRow(lowest - 1);
        const TRecord range = ranges_.At(position);
        if (range.last < edge) {
            break;
        }
        if (!GivesWay(range, taker)) {
            return false;
        }
        if (range.first < edge) {
            ranges_.SetLast(position, edge - 1);
            break;
        }
    }
    EraseRows(lowest, row);
    row = lowest;
    return true;
}

/// Makes way for the range at a row up to an edge above it. Of what kind the ranges there are doesn't matter.
bool CChannelRangeTable::ClearUp(std::uint32_t row, std::uint32_t edge) {
    std::uint32_t highest = row + 1;
    for (; highest < ranges_.Size(); ++highest) {
        const CPosition position = ranges_.AtRow(highest);
        TRecord range = ranges_.At(position);
        if (edge < range.first) {
            break;
        }
        if (IsDefined(range)) {
            return false;
        }
        if (edge < range.last) {
            range.first = edge + 1;
            ranges_.Erase(position);
            ranges_.Insert(range);
            break;
        }
    }
    EraseRows(row + 1, highest);
    return true;
}

void CChannelRangeTable::EraseRows(std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t row = to; row > from; --row) {
        ranges_.Erase(ranges_.AtRow(row - 1));
    }
}

void CChannelRangeTable::SetBounds(std::uint32_t row, std::uint32_t first, std::uint32_t last) {
    const CPosition position = ranges_.AtRow(row);
    TRecord range = ranges_.At(position);
    if (range.first == first) {
        ranges_.SetLast(position, last);
        return;
    }
    range.first = first;
    range.last = last;
    ranges_.Erase(position);
    ranges_.Insert(range);
}

}  // namespace kq_pdt

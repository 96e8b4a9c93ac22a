#include "tests/driver/channels/reference_table.h"

#include <algorithm>

using namespace kq_pdt;
using namespace kq_drv;

void CReferenceTable::CheckOverlaps() {
    for (std::size_t at = 0; at + 1 < ranges_.size(); ++at) {
        CRange &lower = ranges_[at];
        const CRange &upper = ranges_[at + 1];
        if (upper.first > lower.last) {
            continue;
        }
        std::string text = std::to_string(upper.first) + " - " + std::to_string(lower.last);
        if (lower.type == upper.type && lower.direction == upper.direction) {
            owner_->AddWarning(texts::kMapRepeats, text, kNoNumber);
            continue;
        }
        owner_->AddError(texts::kMapOverlaps, text.append(texts::kMapDiffers), kNoNumber);
        lower.last = upper.first > 0 ? upper.first - 1 : lower.last;
    }
}

bool CReferenceTable::ReportTwice(std::uint32_t first, std::uint32_t last) const {
    std::string text(texts::kDefinedTwiceFrom);
    text.append(std::to_string(first)).append(texts::kDefinedTwiceTo);
    owner_->AddError(text, std::to_string(last), kNoNumber);
    return false;
}

bool CReferenceTable::ReportClash(const CRange &range, std::uint32_t first, bool type) const {
    std::string text(texts::kChannel);
    text += std::to_string(first);
    if (range.defined) {
        owner_->AddError(texts::kDefinedTwice, text, kNoNumber);
    } else {
        text.append(type ? texts::kOtherType : texts::kOtherDirection).append(texts::kUseRepair);
        owner_->AddError(texts::kMapDiffers, text, kNoNumber);
    }
    return false;
}

bool CReferenceTable::AddDefined(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                                 std::string_view name) {
    const bool laid = Lay(first, last, type, direction, name);
    MarkPieces();
    return laid;
}

void CReferenceTable::MarkPieces() {
    for (CRange &range : ranges_) {
        const auto is_below = [&](const CRange &other) { return other.laid && other.last + 1 == range.first; };
        range.continues =
            range.continues || (range.laid && range.first > 0 && std::any_of(ranges_.begin(), ranges_.end(), is_below));
    }
    for (CRange &range : ranges_) {
        range.laid = false;
    }
}

bool CReferenceTable::Lay(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                          std::string_view name) {
    if (first > last) {
        return true;
    }
    if (const std::size_t at = Containing(first); at < ranges_.size()) {
        const CRange &range = ranges_[at];
        if (Clash(type, range.type) || Clash(direction, range.direction)) {
            return ReportClash(range, first, Clash(type, range.type));
        }
        return range.defined ? ReportTwice(first, last) : LayFromFirst(at, first, last, type, direction, name);
    }
    if (const std::size_t at = Containing(last); at < ranges_.size()) {
        return ranges_[at].defined ? ReportTwice(first, last) : LayFromLast(at, first, last, type, direction, name);
    }
    const auto is_defined = [&](const CRange &range) { return range.defined && Shares(range, first, last); };
    if (std::any_of(ranges_.begin(), ranges_.end(), is_defined)) {
        InsertPiece(first, last, type, direction, name);
        return true;
    }
    std::erase_if(ranges_, [&](const CRange &range) {
        return Shares(range, first, last) && (Clash(type, range.type) || Clash(direction, range.direction));
    });
    LayUpward(first, last, type, direction, name);
    return true;
}

void CReferenceTable::InsertPiece(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                                  std::string_view name) {
    CRange range;
    range.first = first;
    range.last = last;
    range.type = type;
    range.direction = direction;
    TakeOver(range, type, direction, name);
    Insert(range);
}

bool CReferenceTable::LayFromFirst(std::size_t at, std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                   std::uint32_t direction, std::string_view name) {
    const CRange old = ranges_[at];
    const std::uint32_t taken_last = std::min(last, old.last);
    if (old.first == first) {
        CRange &range = ranges_[at];
        range.last = taken_last;
        TakeOver(range, type, direction, name);
        if (old.last == last) {
            range.type = type != kNone ? type : range.type;
            range.direction = direction != kNone ? direction : range.direction;
        }
    } else {
        ranges_[at].last = first - 1;
        CRange taken = old;
        taken.first = first;
        taken.last = taken_last;
        TakeOver(taken, type, direction, name);
        Insert(taken);
    }
    if (last < old.last) {
        CRange upper = old;
        upper.first = last + 1;
        if (old.first < first) {
            upper.name = name;
        }
        Insert(upper);
    }
    return last <= old.last || Lay(old.last + 1, last, type, direction, {});
}

bool CReferenceTable::LayFromLast(std::size_t at, std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                  std::uint32_t direction, std::string_view name) {
    const CRange old = ranges_[at];
    if (last == old.last) {
        TakeOver(ranges_[at], type, direction, name);
        return Lay(first, old.first - 1, type, direction, {});
    }
    if (last == old.first) {
        CRange single = old;
        single.last = last;
        TakeOver(single, type, direction, name);
        Erase(at);
        Insert(single);
        CRange rest = old;
        rest.first = last + 1;
        Insert(rest);
        return Lay(first, last - 1, type, direction, {});
    }
    ranges_[at].last = last;
    TakeOver(ranges_[at], type, direction, name);
    CRange upper = old;
    upper.first = last + 1;
    upper.name = name;
    Insert(upper);
    return Lay(first, old.first - 1, type, direction, {});
}

bool CReferenceTable::DefineIfFits(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                   std::uint32_t direction) {
    const auto in_the_way = [&](const CRange &range) {
        return Shares(range, first, last) &&
               (range.defined || Clash(type, range.type) || Clash(direction, range.direction));
    };
    if (first > last || last == kNone || std::any_of(ranges_.begin(), ranges_.end(), in_the_way)) {
        return false;
    }
    LayUpward(first, last, type, direction, {});
    MarkPieces();
    return true;
}

void CReferenceTable::LayUpward(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                                std::string_view name) {
    for (std::uint32_t from = first; from <= last; name = {}) {
        std::uint32_t to = last;
        if (const std::size_t at = Containing(from); at < ranges_.size()) {
            to = std::min(last, ranges_[at].last);
            LayFromFirst(at, from, to, type, direction, name);
            // Of those that start here the piece is the only one that is defined.
            CRange &piece = *std::find_if(ranges_.begin(), ranges_.end(),
                                          [&](const CRange &range) { return range.first == from && range.defined; });
            piece.type = type != kNone ? type : piece.type;
            piece.direction = direction != kNone ? direction : piece.direction;
        } else {
            for (const CRange &range : ranges_) {
                if (range.first > from && range.first <= range.last) {
                    to = std::min(to, range.first - 1);
                }
            }
            InsertPiece(from, to, type, direction, name);
        }
        from = to + 1;
    }
}

bool CReferenceTable::AppendRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first,
                                  std::uint32_t &last, bool defined, std::uint32_t count) {
    const std::uint64_t highest = ranges_.empty() ? 0 : ranges_.back().last;
    first = last = kNoNumber;
    if (count == 0 || highest + count >= kNoNumber) {
        return false;
    }
    CRange range;
    range.first = first = static_cast<std::uint32_t>(highest + 1);
    range.last = last = static_cast<std::uint32_t>(highest + count);
    range.type = type;
    range.direction = direction;
    TakeOver(range, type, direction, {});
    range.defined = defined;
    range.laid = false;
    Insert(range);
    return true;
}

std::size_t CReferenceTable::BlockStart(std::uint32_t first) const {
    std::size_t start = ranges_.size();
    for (std::size_t at = ranges_.size(); at-- > 0;) {
        const CRange &range = ranges_[at];
        const bool other_is_better = start < ranges_.size() && ranges_[start].defined && !range.defined;
        if (range.first == first && !range.continues && !other_is_better) {
            start = at;
        }
    }
    return start;
}

std::vector<bool> CReferenceTable::Block(std::size_t start) const {
    std::vector<bool> block(ranges_.size(), false);
    block[start] = true;
    std::uint32_t last = ranges_[start].last;
    for (std::size_t at = start + 1; at < ranges_.size() && ranges_[start].defined; ++at) {
        if (ranges_[at].continues && ranges_[at].first == last + 1) {
            block[at] = true;
            last = ranges_[at].last;
        }
    }
    return block;
}

void CReferenceTable::RemoveRange(std::uint32_t first) {
    const std::size_t start = BlockStart(first);
    if (start == ranges_.size()) {
        return;
    }
    const std::vector<bool> block = Block(start);
    for (std::size_t at = block.size(); at-- > 0;) {
        if (block[at]) {
            ranges_.erase(ranges_.begin() + static_cast<std::ptrdiff_t>(at));
        }
    }
}

bool CReferenceTable::ChangeParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                                      const TParValue &new_value) {
    const std::int64_t from = old_value.number;
    const std::int64_t to = new_value.number;
    const bool by_key = keyword != kwChNumber && keyword != kwChFrom;
    if (keyword != kwAll && old_value == new_value) {
        return true;
    }
    const std::size_t start = BlockStart(by_key ? key : old_value.number);
    if (start == ranges_.size()) {
        return false;
    }
    const std::vector<bool> block = Block(start);
    const std::int64_t first = ranges_[start].first;
    std::int64_t last = first;
    for (std::size_t at = 0; at < block.size(); ++at) {
        last = block[at] ? ranges_[at].last : last;
    }
    switch (keyword) {
        case kwAll:
            return Move(start, TWay::kWithin, true, from, to);
        case kwChNumber:
            return Move(start, TWay::kWithin, true, to, to + last - first);
        case kwChType:
        case kwChDirection:
            for (std::size_t at = 0; at < block.size(); ++at) {
                CRange &range = ranges_[at];
                if (block[at]) {
                    (keyword == kwChType ? range.type : range.direction) = new_value.number;
                }
            }
            return true;
        case kwChFrom:
            return Move(start,
                        to < first  ? TWay::kDown
                        : to > last ? TWay::kUp
                                    : TWay::kNone,
                        false, to, std::max(to, last));
        case kwChCount:
            return to > 0 && ChangeLast(start, first + from - 1, first + to - 1);
        default:
            return ChangeLast(start, from, to);
    }
}

bool CReferenceTable::ChangeLast(std::size_t start, std::int64_t old_last, std::int64_t last) {
    const std::int64_t first = ranges_[start].first;
    if (last > old_last) {
        return last >= first && Move(start, TWay::kUp, false, first, last);
    }
    return Move(start, last < first ? TWay::kDown : TWay::kNone, false, std::min(first, last), last);
}

bool CReferenceTable::Move(std::size_t start, TWay way, bool shifts, std::int64_t first, std::int64_t last) {
    if (first > last || last > 0xFFFFFFFE) {
        return false;
    }
    const std::vector<bool> block = Block(start);
    std::vector<CRange> stay;
    std::vector<CRange> leave;
    const std::int64_t shift = shifts ? first - ranges_[start].first : 0;
    std::vector<CRange> pieces;
    for (std::size_t at = 0; at < ranges_.size(); ++at) {
        const bool within = ranges_[at].last + shift >= first && ranges_[at].first + shift <= last;
        if (block[at] && within) {
            pieces.push_back(ranges_[at]);
        }
    }
    if (pieces.empty()) {
        pieces.push_back(ranges_[start]);
    }
    const CRange lowest = pieces.front();
    const CRange highest = pieces.back();
    for (std::size_t at = 0; at < ranges_.size(); ++at) {
        CRange range = ranges_[at];
        if (block[at]) {
            const bool kept = std::any_of(pieces.begin(), pieces.end(),
                                          [&](const CRange &piece) { return piece.first == range.first; });
            if (!kept) {
                continue;
            }
            range.continues = range.continues && range.first != lowest.first;
            range.first = static_cast<std::uint32_t>(range.first == lowest.first ? first : range.first + shift);
            range.last = static_cast<std::uint32_t>(range.last == highest.last ? last : range.last + shift);
        } else if (way == TWay::kDown && at < start && range.last >= first) {
            if (Unlike(range, ranges_[start])) {
                return false;
            }
            if (range.first >= first) {
                continue;
            }
            range.last = static_cast<std::uint32_t>(first - 1);
        } else if (way == TWay::kUp && at > start && range.first <= last) {
            if (range.defined) {
                return false;
            }
            if (range.last <= last) {
                continue;
            }
            range.first = static_cast<std::uint32_t>(last + 1);
        } else if (way == TWay::kWithin && range.first <= last && range.last >= first) {
            if (Unlike(range, ranges_[start])) {
                return false;
            }
            continue;
        }
        (range.first == ranges_[at].first ? stay : leave).push_back(range);
    }
    ranges_ = stay;
    for (const CRange &range : leave) {
        Insert(range);
    }
    return true;
}

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
    CRange range;
    range.first = first;
    range.last = last;
    range.type = type;
    range.direction = direction;
    TakeOver(range, type, direction, name);
    Insert(range);
    return true;
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
    return last <= old.last || AddDefined(old.last + 1, last, type, direction, {});
}

bool CReferenceTable::LayFromLast(std::size_t at, std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                  std::uint32_t direction, std::string_view name) {
    const CRange old = ranges_[at];
    if (last == old.last) {
        TakeOver(ranges_[at], type, direction, name);
        return AddDefined(first, old.first - 1, type, direction, {});
    }
    if (last == old.first) {
        CRange single = old;
        single.last = last;
        single.name = name;
        single.defined = true;
        Erase(at);
        Insert(single);
        CRange rest = old;
        rest.first = last + 1;
        Insert(rest);
        return AddDefined(first, last - 1, type, direction, {});
    }
    ranges_[at].last = last;
    TakeOver(ranges_[at], type, direction, name);
    CRange upper = old;
    upper.first = last + 1;
    upper.name = name;
    Insert(upper);
    return AddDefined(first, old.first - 1, type, direction, {});
}

bool CReferenceTable::AddIfFree(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction) {
    if (first > last) {
        return false;
    }
    for (const CRange &range : ranges_) {
        if (range.last >= first) {
            if (last >= range.first) {
                return false;
            }
            break;
        }
    }
    CRange range;
    range.first = first;
    range.last = last;
    range.type = type;
    range.direction = direction;
    TakeOver(range, type, direction, {});
    Insert(range);
    return true;
}

void CReferenceTable::AppendRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first,
                                  std::uint32_t &last, bool defined, std::uint32_t count) {
    CRange range;
    range.first = first = ranges_.empty() ? 1 : ranges_.back().last + 1;
    range.last = last = first + count - 1;
    range.type = type;
    range.direction = direction;
    TakeOver(range, type, direction, {});
    range.defined = defined;
    Insert(range);
}

bool CReferenceTable::ChangeParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                                      const TParValue &new_value) {
    const std::uint32_t from = old_value.number;
    const std::uint32_t to = new_value.number;
    const bool by_key = keyword != kwChNumber && keyword != kwChFrom;
    if (keyword != kwAll && old_value == new_value) {
        return true;
    }
    const std::size_t at = ByFirst(by_key ? key : from);
    if (at == ranges_.size()) {
        return false;
    }
    CRange &range = ranges_[at];
    switch (keyword) {
        case kwAll:
            return MoveWhole(at, from, to);
        case kwChNumber: {
            const std::uint64_t length = std::uint64_t{range.last} - range.first;
            const std::uint64_t last = to + length;
            return (range.first > range.last || last <= 0xFFFFFFFF) &&
                   MoveWhole(at, to, static_cast<std::uint32_t>(last));
        }
        case kwChType:
            range.type = to;
            return true;
        case kwChDirection:
            range.direction = to;
            return true;
        case kwChFrom:
            if (to < from) {
                return MoveBound(at, false, to, to, range.last);
            }
            if (to > range.last) {
                return MoveBound(at, true, to, to, to);
            }
            break;
        default:
            if (to > from) {
                return MoveBound(at, true, to, range.first, to);
            }
            if (to < range.first) {
                return MoveBound(at, false, to, to, to);
            }
    }
    CRange moved = range;
    (keyword == kwChFrom ? moved.first : moved.last) = to;
    Erase(at);
    if (keyword == kwChTo) {
        ranges_.insert(ranges_.begin() + static_cast<std::ptrdiff_t>(at), moved);
    } else {
        Insert(moved);
    }
    return true;
}

bool CReferenceTable::MoveWhole(std::size_t at, std::uint32_t first, std::uint32_t last) {
    std::vector<CRange> kept;
    CRange moved = ranges_[at];
    for (std::size_t other = 0; other < ranges_.size(); ++other) {
        const CRange &range = ranges_[other];
        if (other == at) {
            continue;
        }
        if (range.last < first || range.first > last) {
            kept.push_back(range);
        } else if (Unlike(range, moved)) {
            return false;
        }
    }
    const bool stays = moved.first == first;
    moved.first = first;
    moved.last = last;
    if (stays) {
        // Only the upper bound moves, so the range keeps its position among those of equal first.
        std::size_t below = 0;
        for (std::size_t other = 0; other < at; ++other) {
            below += ranges_[other].last < first || ranges_[other].first > last ? 1 : 0;
        }
        kept.insert(kept.begin() + static_cast<std::ptrdiff_t>(below), moved);
        ranges_ = kept;
        return true;
    }
    ranges_ = kept;
    Insert(moved);
    return true;
}

bool CReferenceTable::MoveBound(std::size_t at, bool up, std::uint32_t edge, std::uint32_t first, std::uint32_t last) {
    std::vector<CRange> ranges = ranges_;
    CRange moved = ranges_[at];
    ranges_.clear();
    std::vector<CRange> reinserted;
    std::vector<bool> gone(ranges.size(), false);
    std::size_t other = at;
    bool refused = false;
    while (up ? ++other < ranges.size() : other-- > 0) {
        CRange &range = ranges[other];
        if (up ? edge < range.first : range.last < edge) {
            break;
        }
        if (up ? range.defined : Unlike(range, moved)) {
            refused = true;
            break;
        }
        if (up && edge < range.last) {
            range.first = edge + 1;
            reinserted.push_back(range);
            gone[other] = true;
            break;
        }
        if (!up && range.first < edge) {
            range.last = edge - 1;
            break;
        }
        gone[other] = true;
    }
    const bool stays = moved.first == first;
    for (std::size_t row = 0; row < ranges.size(); ++row) {
        if (row == at && stays && !refused) {
            ranges[row].last = last;
        }
        if (refused || (!gone[row] && (row != at || stays))) {
            ranges_.push_back(ranges[row]);
        }
    }
    if (refused) {
        return false;
    }
    for (const CRange &range : reinserted) {
        Insert(range);
    }
    moved.first = first;
    moved.last = last;
    if (!stays) {
        Insert(moved);
    }
    return true;
}

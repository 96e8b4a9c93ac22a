#include <algorithm>

#include "driver/channels/channel_range_note.h"
#include "driver/channels/channel_range_table.h"
#include "driver/channels/texts.h"
#include "platform/base/text_buffer.h"

// A step of a definition meets one range at most: the one that holds its first channel or, without such a range, the
// one that holds its last. What reaches beyond that range is the next step's, and has no name. Ranges that lie wholly
// inside a definition and touch neither end aren't looked for.
namespace kq_pdt {

namespace texts = kq_drv::texts;

struct CChannelRangeTable::TDefinition {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t type;
    std::uint32_t direction;
    std::string_view name;
};

bool CChannelRangeTable::AddDefinedUnnamed(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                           std::uint32_t direction) {
    return AddDefined(first, last, type, direction, {});
}

bool CChannelRangeTable::AddDefined(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                    std::uint32_t direction, std::string_view name) {
    if (first > last) {
        return true;
    }
    next_row_ = kNoNumber;
    TDefinition rest = {first, last, type, direction, name};
    TStep step = TStep::kMore;
    while (step == TStep::kMore) {
        step = LayStep(rest);
    }
    if (step == TStep::kDone) {
        Changed();
    }
    return step == TStep::kDone;
}

CChannelRangeTable::TStep CChannelRangeTable::LayStep(TDefinition &rest) {
    CPosition position;
    if (ranges_.FindContaining(rest.first, position)) {
        const TRecord range = ranges_.At(position);
        const bool refused = ReportConflict(range, rest) || ReportSecondDefinition(range, rest);
        return refused ? TStep::kRefused : LayFromFirst(position, rest);
    }
    TRecord laid = {rest.first, rest.last, rest.type, rest.direction, NoteFlags(true, rest.type, rest.direction)};
    if (ranges_.IsEnd(position) || ranges_.FirstAt(position) > rest.last) {
        laid.note |= NameBits(rest.name);
        ranges_.Insert(position, laid);
        return TStep::kDone;
    }
    if (ranges_.FindContaining(rest.last, position)) {
        return ReportSecondDefinition(ranges_.At(position), rest) ? TStep::kRefused : LayFromLast(position, rest);
    }
    laid.note |= NameBits(rest.name);
    ranges_.Insert(laid);
    return TStep::kDone;
}

/// A range holds the first channel: it is taken over from there on.
CChannelRangeTable::TStep CChannelRangeTable::LayFromFirst(CPosition &position, TDefinition &rest) {
    const TRecord range = ranges_.At(position);
    const std::uint32_t name = NameBits(rest.name);
    const bool from_start = range.first == rest.first;
    TRecord taken = range;
    taken.first = rest.first;
    taken.last = std::min(range.last, rest.last);
    taken.note = NoteFlags(true, rest.type, rest.direction) | name;
    if (from_start) {
        if (range.last == rest.last) {
            taken.type = rest.type != kUndefinedCode ? rest.type : range.type;
            taken.direction = rest.direction != kUndefinedCode ? rest.direction : range.direction;
        }
        ranges_.SetLast(position, taken.last);
        ranges_.SetRest(position, taken);
    } else {
        ranges_.SetLast(position, rest.first - 1);
        ranges_.Insert(position, taken);
    }
    if (rest.last < range.last) {
        TRecord rest_of_range = range;
        rest_of_range.first = rest.last + 1;
        if (!from_start) {
            rest_of_range.note = WithName(range.note, name);
        }
        ranges_.Insert(position, rest_of_range);
    }
    if (rest.last <= range.last) {
        return TStep::kDone;
    }
    rest.first = range.last + 1;
    rest.name = {};
    return TStep::kMore;
}

/// A range holds the last channel, none the first: the range is taken over up to there.
CChannelRangeTable::TStep CChannelRangeTable::LayFromLast(CPosition &position, TDefinition &rest) {
    const TRecord range = ranges_.At(position);
    const std::uint32_t name = NameBits(rest.name);
    TRecord taken = range;
    taken.last = rest.last;
    taken.note = NoteFlags(true, rest.type, rest.direction) | name;
    TRecord rest_of_range = range;
    rest_of_range.first = rest.last + 1;
    if (rest.last == range.last) {
        ranges_.SetRest(position, taken);
    } else if (rest.last == range.first) {
        // The one channel at the range's start only counts as defined; what was free in the range stays as it was.
        taken.note = WithName(range.note, name) | kNoteDefined;
        ranges_.Erase(position);
        ranges_.Insert(taken);
        ranges_.Insert(rest_of_range);
    } else {
        ranges_.SetLast(position, taken.last);
        ranges_.SetRest(position, taken);
        rest_of_range.note = WithName(range.note, name);
        ranges_.Insert(position, rest_of_range);
    }
    rest.last = range.first - 1;
    rest.name = {};
    return TStep::kMore;
}

/// The bits of a note that stand for a name, which is kept if it is a new one.
std::uint32_t CChannelRangeTable::NameBits(std::string_view name) {
    constexpr std::uint32_t kMostNames = 0xFFFFFFFFU >> kNoteNameShift;
    if (name.empty()) {
        return 0;
    }
    const kq_base::TText text(name);
    if (names_.empty() || names_.back() != text) {
        if (names_.size() >= kMostNames) {
            return 0;
        }
        names_.push_back(text);
    }
    return static_cast<std::uint32_t>(names_.size()) << kNoteNameShift;
}

bool CChannelRangeTable::ReportConflict(const TRecord &range, const TDefinition &rest) const {
    const bool other_type = Differs(range.type, rest.type);
    if (!other_type && !Differs(range.direction, rest.direction)) {
        return false;
    }
    kq_base::CTextBuffer text;
    text.Append(texts::kChannel);
    text.AppendDecimal(rest.first);
    if (!IsDefined(range)) {
        text.Append(other_type ? texts::kOtherType : texts::kOtherDirection);
        text.Append(texts::kUseRepair);
    }
    ReportError(IsDefined(range) ? texts::kDefinedTwice : texts::kMapDiffers, text.View());
    return true;
}

bool CChannelRangeTable::ReportSecondDefinition(const TRecord &range, const TDefinition &rest) const {
    if (!IsDefined(range)) {
        return false;
    }
    kq_base::CTextBuffer text;
    text.Append(texts::kDefinedTwiceFrom);
    text.AppendDecimal(rest.first);
    text.Append(texts::kDefinedTwiceTo);
    ReportError(text.View(), kq_base::DecimalText(rest.last));
    return true;
}

}  // namespace kq_pdt

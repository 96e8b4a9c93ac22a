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
    std::uint32_t laid_last = kNoNumber;  ///< of what a step from the last channel laid
    bool continues = false;               ///< channels right below have been laid
    bool fills_gaps = false;  ///< an unknown type or direction of a range that is taken over becomes the definition's

    /// The range that is laid where there is none.
    TRecord Whole() const { return {first, last, type, direction, Note()}; }
    std::uint32_t Note() const { return NoteFlags(true, type, direction) | (continues ? kNoteContinues : 0); }
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
    TDefinition rest = {first, last, type, direction, name};
    TStep step = TStep::kMore;
    while (step == TStep::kMore) {
        step = LayStep(rest);
    }
    if (step == TStep::kDone) {
        Changed();
    } else if (rest.last < last) {
        DetachPiece(rest.last + 1, rest.laid_last);
    }
    return step == TStep::kDone;
}

/// What was laid from a number on has lost the channels that it was to continue.
void CChannelRangeTable::DetachPiece(std::uint32_t first, std::uint32_t last) {
    CPosition position;
    for (bool found = FindPiece(first, position);
         found && !Ranges().IsEnd(position) && Ranges().FirstAt(position) == first; Ranges().Next(position)) {
        TRecord range = Ranges().At(position);
        if (Continues(range) && range.last == last) {
            range.note &= ~kNoteContinues;
            store_.SetRest(position, range);
            return;
        }
    }
}

bool CChannelRangeTable::DefineIfFits(std::uint32_t first, std::uint32_t last, std::uint32_t type,
                                      std::uint32_t direction) {
    TDefinition rest = {first, last, type, direction, {}};
    rest.fills_gaps = true;
    if (first > last || last > kHighestChannel || !Fits(rest)) {
        return false;
    }
    while (LayUpward(rest) == TStep::kMore) {
    }
    Changed();
    return true;
}

/// True if no range that holds one of the definition's channels is defined or of another kind.
bool CChannelRangeTable::Fits(const TDefinition &wanted) const {
    for (CPosition position = Ranges().FirstEndingFrom(wanted.first);
         !Ranges().IsEnd(position) && Ranges().FirstAt(position) <= wanted.last; Ranges().Next(position)) {
        const TRecord range = Ranges().At(position);
        const bool shares_channels = range.last >= wanted.first && range.first <= range.last;
        if (shares_channels &&
            (IsDefined(range) || Differs(range.type, wanted.type) || Differs(range.direction, wanted.direction))) {
            return false;
        }
    }
    return true;
}

/// Lays the lowest part of what fits: the range that holds the first channel is taken over, or the gap up to the next
/// range is filled. So ranges inside the definition become pieces of it.
CChannelRangeTable::TStep CChannelRangeTable::LayUpward(TDefinition &rest) {
    CPosition position;
    if (Ranges().FindContaining(rest.first, position)) {
        return LayFromFirst(position, rest);
    }
    CPosition next = position;
    while (!Ranges().IsEnd(next) && Ranges().LastAt(next) < Ranges().FirstAt(next)) {
        Ranges().Next(next);
    }
    TRecord laid = rest.Whole();
    if (!Ranges().IsEnd(next)) {
        laid.last = std::min(laid.last, Ranges().FirstAt(next) - 1);
    }
    store_.Insert(position, laid);
    const bool done = laid.last == rest.last;
    rest.first = laid.last + 1;
    rest.continues = true;
    return done ? TStep::kDone : TStep::kMore;
}

CChannelRangeTable::TStep CChannelRangeTable::LayStep(TDefinition &rest) {
    CPosition position;
    if (Ranges().FindContaining(rest.first, position)) {
        const TRecord range = Ranges().At(position);
        const bool refused = ReportConflict(range, rest) || ReportSecondDefinition(range, rest);
        return refused ? TStep::kRefused : LayFromFirst(position, rest);
    }
    TRecord laid = rest.Whole();
    if (Ranges().IsEnd(position) || Ranges().FirstAt(position) > rest.last) {
        laid.note |= store_.NameBits(rest.name);
        store_.Insert(position, laid);
        return TStep::kDone;
    }
    if (Ranges().FindContaining(rest.last, position)) {
        return ReportSecondDefinition(Ranges().At(position), rest) ? TStep::kRefused : LayFromLast(position, rest);
    }
    laid.note |= store_.NameBits(rest.name);
    store_.Insert(laid);
    return TStep::kDone;
}

/// A range holds the first channel: it is taken over from there on.
CChannelRangeTable::TStep CChannelRangeTable::LayFromFirst(CPosition &position, TDefinition &rest) {
    const TRecord range = Ranges().At(position);
    const std::uint32_t name = store_.NameBits(rest.name);
    const bool from_start = range.first == rest.first;
    TRecord taken = range;
    taken.first = rest.first;
    taken.last = std::min(range.last, rest.last);
    taken.note = rest.Note() | name;
    if (rest.fills_gaps || (from_start && range.last == rest.last)) {
        taken.type = rest.type != kUndefinedCode ? rest.type : range.type;
        taken.direction = rest.direction != kUndefinedCode ? rest.direction : range.direction;
    }
    if (from_start) {
        store_.SetLast(position, taken.last);
        store_.SetRest(position, taken);
    } else {
        store_.SetLast(position, rest.first - 1);
        store_.Insert(position, taken);
    }
    if (rest.last < range.last) {
        TRecord rest_of_range = range;
        rest_of_range.first = rest.last + 1;
        if (!from_start) {
            rest_of_range.note = WithName(range.note, name);
        }
        store_.Insert(position, rest_of_range);
    }
    if (rest.last <= range.last) {
        return TStep::kDone;
    }
    rest.first = range.last + 1;
    rest.continues = true;
    rest.name = {};
    return TStep::kMore;
}

/// A range holds the last channel, none the first: the range is taken over up to there, and continues what the next
/// steps lay below.
CChannelRangeTable::TStep CChannelRangeTable::LayFromLast(CPosition &position, TDefinition &rest) {
    const TRecord range = Ranges().At(position);
    const std::uint32_t name = store_.NameBits(rest.name);
    TRecord taken = range;
    taken.last = rest.last;
    taken.note = rest.Note() | kNoteContinues | name;
    TRecord rest_of_range = range;
    rest_of_range.first = rest.last + 1;
    if (rest.last == range.last) {
        store_.SetRest(position, taken);
    } else if (rest.last == range.first) {
        // The one channel at the range's start only counts as defined; what was free in the range stays as it was.
        taken.note = WithName(range.note, name) | kNoteDefined | kNoteContinues;
        store_.Erase(position);
        store_.Insert(taken);
        store_.Insert(rest_of_range);
    } else {
        store_.SetLast(position, taken.last);
        store_.SetRest(position, taken);
        rest_of_range.note = WithName(range.note, name);
        store_.Insert(position, rest_of_range);
    }
    rest.laid_last = rest.last;
    rest.last = range.first - 1;
    rest.name = {};
    return TStep::kMore;
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

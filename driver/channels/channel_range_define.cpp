#include <algorithm>

#include "driver/channels/channel_range_note.h"
#include "driver/channels/channel_range_table.h"
#include "driver/channels/texts.h"
#include "platform/base/text_buffer.h"

// A step of a definition meets one range at most: the one that holds its first channel or, without such a range, the
// one that holds its last. What reaches beyond that range is the next step's, and has no name. Without either, what
// lies wholly inside is nothing that could be a mistake: undefined ranges become pieces or give way, so that the
// written driver map has each channel once, and a defined one isn't noticed.
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
    bool settled = true;                  ///< reading the written driver map would lay the same
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
        if (!rest.settled) {
            store_.Unsettled().insert(first);
        }
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

/// True if use(position, range) is true for all ranges that share channels with a definition.
template <class TUse>
bool CChannelRangeTable::AllSharing(const TDefinition &wanted, const TUse &use) const {
    for (CPosition position = Ranges().FirstEndingFrom(wanted.first);
         !Ranges().IsEnd(position) && Ranges().FirstAt(position) <= wanted.last; Ranges().Next(position)) {
        const TRecord range = Ranges().At(position);
        if (range.last >= wanted.first && range.first <= range.last && !use(position, range)) {
            return false;
        }
    }
    return true;
}

/// True if no range that holds one of the definition's channels is defined or of another kind.
bool CChannelRangeTable::Fits(const TDefinition &wanted) const {
    return AllSharing(wanted, [&](const CPosition &, const TRecord &range) {
        return !IsDefined(range) && !Differs(range.type, wanted.type) && !Differs(range.direction, wanted.direction);
    });
}

/// Lays what meets no range at its ends.
void CChannelRangeTable::LayOverInside(TDefinition &rest) {
    std::vector<std::uint32_t> unlike;
    const bool all_undefined = AllSharing(rest, [&](const CPosition &position, const TRecord &range) {
        if (Differs(range.type, rest.type) || Differs(range.direction, rest.direction)) {
            unlike.push_back(Ranges().RowOf(position));
        }
        return !IsDefined(range);
    });
    if (!all_undefined) {
        TRecord laid = rest.Whole();
        laid.note |= store_.NameBits(rest.name);
        store_.Insert(laid);
        return;
    }
    std::for_each(unlike.rbegin(), unlike.rend(), [this](std::uint32_t row) { store_.Erase(Ranges().AtRow(row)); });
    rest.fills_gaps = true;
    while (LayUpward(rest) == TStep::kMore) {
    }
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
    laid.note |= store_.NameBits(rest.name);
    if (!Ranges().IsEnd(next)) {
        laid.last = std::min(laid.last, Ranges().FirstAt(next) - 1);
    }
    store_.Insert(position, laid);
    const bool done = laid.last == rest.last;
    rest.first = laid.last + 1;
    rest.continues = true;
    rest.name = {};
    return done ? TStep::kDone : TStep::kMore;
}

CChannelRangeTable::TStep CChannelRangeTable::LayStep(TDefinition &rest) {
    CPosition position;
    if (Ranges().FindContaining(rest.first, position)) {
        const TRecord range = Ranges().At(position);
        const bool refused = ReportConflict(range, rest) || ReportSecondDefinition(range, rest);
        return refused ? TStep::kRefused : LayFromFirst(position, rest);
    }
    if (Ranges().IsEnd(position) || Ranges().FirstAt(position) > rest.last) {
        TRecord laid = rest.Whole();
        laid.note |= store_.NameBits(rest.name);
        store_.Insert(position, laid);
        return TStep::kDone;
    }
    if (Ranges().FindContaining(rest.last, position)) {
        return ReportSecondDefinition(Ranges().At(position), rest) ? TStep::kRefused : LayFromLast(position, rest);
    }
    LayOverInside(rest);
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
        rest.settled = rest.settled && NameBitsOf(rest_of_range.note) == 0;
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
        store_.Erase(position);
        store_.Insert(taken);
        store_.Insert(rest_of_range);
    } else {
        store_.SetLast(position, taken.last);
        store_.SetRest(position, taken);
        rest_of_range.note = WithName(range.note, name);
        store_.Insert(position, rest_of_range);
    }
    rest.settled = rest.settled && NameBitsOf(taken.note | rest_of_range.note) == 0 &&
                   !Differs(range.type, rest.type) && !Differs(range.direction, rest.direction);
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

#include <algorithm>
#include <optional>
#include <utility>

#include "driver/channels/channel_range_note.h"
#include "driver/channels/channel_range_table.h"

// A changed parameter moves one bound of a definition's block, or both. What lies in the way goes only if no definition
// has it: undefined ranges are deleted or lose the channels that the new bounds take. A change is first worked out as a
// list of rows with what becomes of them, and carried out only when it is certain that everything can give way.
namespace kq_pdt {
namespace {

using kq_drv::TRangeRecord;

bool FitsKind(std::uint32_t code, std::uint32_t wanted) { return code == kUndefinedCode || code == wanted; }

/// True if a range may be deleted for another one to take its channels.
bool GivesWay(const TRangeRecord &range, const TRangeRecord &taker) {
    return !IsDefined(range) && FitsKind(range.type, taker.type) && FitsKind(range.direction, taker.direction);
}

}  // namespace

/// The ranges of a definition, ascending: one, or its pieces.
struct CChannelRangeTable::TBlock {
    struct TPiece {
        std::uint32_t row;
        TRecord range;
    };
    std::vector<TPiece> pieces;

    const TRecord &Lowest() const { return pieces.front().range; }
    std::uint32_t First() const { return Lowest().first; }
    std::uint32_t Last() const { return pieces.back().range.last; }
    bool HasRow(std::uint32_t row) const {
        const auto below = [](const TPiece &piece, std::uint32_t wanted) { return piece.row < wanted; };
        const auto piece = std::lower_bound(pieces.begin(), pieces.end(), row, below);
        return piece != pieces.end() && piece->row == row;
    }
};

/// What becomes of the range at a row; without a range it is deleted.
struct CChannelRangeTable::TReplacement {
    std::uint32_t row;
    std::optional<TRecord> range;
};

bool CChannelRangeTable::ChangeParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                                         const TParValue &new_value) {
    const std::uint32_t old_number = old_value.number;
    const std::uint32_t new_number = new_value.number;
    TBlock block;
    if (keyword == kwAll) {
        return FindBlock(key, block) && MoveWhole(block, old_number, new_number);
    }
    const bool to_number = new_value.IsNumber();
    const bool between_numbers = old_value.IsNumber() && to_number;
    if (old_value == new_value) {
        return true;
    }
    switch (keyword) {
        case kwChNumber:
            return !to_number || (FindBlock(old_number, block) && MoveStart(block, new_number));
        case kwChType:
        case kwChDirection:
            return !to_number || (FindBlock(key, block) && ChangeKind(block, keyword, new_number));
        case kwChFrom:
            return !between_numbers || (FindBlock(old_number, block) && MoveFirst(block, new_number));
        case kwChTo:
            return !between_numbers || (FindBlock(key, block) && MoveLast(block, old_number, new_number));
        case kwChCount:
            return !between_numbers || (FindBlock(key, block) && ChangeCount(block, old_number, new_number));
        default:
            return true;
    }
}

void CChannelRangeTable::RemoveRange(std::uint32_t first) {
    TBlock block;
    if (!FindBlock(first, block)) {
        return;
    }
    std::vector<TReplacement> changes;
    for (const TBlock::TPiece &piece : block.pieces) {
        changes.push_back({piece.row, std::nullopt});
    }
    Apply(changes);
    Changed();
}

/// The block that starts at a number, and its pieces.
bool CChannelRangeTable::FindBlock(std::uint32_t first, TBlock &block) const {
    CPosition position;
    if (!FindBlockStart(first, position)) {
        return false;
    }
    do {
        block.pieces.push_back({Ranges().RowOf(position), Ranges().At(position)});
    } while (IsDefined(block.Lowest()) && block.Last() != kNoNumber && FindPiece(block.Last() + 1, position));
    return true;
}

/// The range with which a block starts. Of several that start at a number it is the one that a definition has: others
/// may lie inside a definition that was laid over them.
bool CChannelRangeTable::FindBlockStart(std::uint32_t first, CPosition &position) const {
    CPosition candidate;
    bool found = false;
    for (Ranges().FindByFirst(first, candidate); !Ranges().IsEnd(candidate) && Ranges().FirstAt(candidate) == first;
         Ranges().Next(candidate)) {
        const TRecord range = Ranges().At(candidate);
        if (IsDefined(range) && !Continues(range)) {
            position = candidate;
            return true;
        }
        if (!found && !IsDefined(range)) {
            position = candidate;
            found = true;
        }
    }
    return found;
}

/// The piece that starts at a number and continues a definition.
bool CChannelRangeTable::FindPiece(std::uint32_t first, CPosition &position) const {
    for (Ranges().FindByFirst(first, position); !Ranges().IsEnd(position) && Ranges().FirstAt(position) == first;
         Ranges().Next(position)) {
        if (Continues(Ranges().At(position))) {
            return true;
        }
    }
    return false;
}

bool CChannelRangeTable::ChangeKind(const TBlock &block, std::uint32_t keyword, std::uint32_t code) {
    for (const TBlock::TPiece &piece : block.pieces) {
        TRecord range = piece.range;
        (keyword == kwChType ? range.type : range.direction) = code;
        store_.SetRest(Ranges().AtRow(piece.row), range);
    }
    return true;
}

void CChannelRangeTable::SetKind(std::uint32_t first, std::uint32_t type, std::uint32_t direction) {
    TBlock block;
    if (!FindBlock(first, block)) {
        return;
    }
    constexpr std::uint32_t kFree = kNoteTypeFree | kNoteDirectionFree;
    const std::uint32_t free = NoteFlags(true, type, direction) & kFree;
    const auto is_given = [](std::uint32_t code, std::uint32_t has) { return code == kUndefinedCode || code == has; };
    const TRecord &lowest = block.Lowest();
    if ((lowest.note & kFree) == free && is_given(type, lowest.type) && is_given(direction, lowest.direction)) {
        return;
    }
    for (const TBlock::TPiece &piece : block.pieces) {
        TRecord range = piece.range;
        range.note = (range.note & ~kFree) | free;
        range.type = type != kUndefinedCode ? type : range.type;
        range.direction = direction != kUndefinedCode ? direction : range.direction;
        store_.SetRest(Ranges().AtRow(piece.row), range);
    }
}

bool CChannelRangeTable::Settle() {
    const TRows rows = UnsettledRows();
    for (const auto &[row, settled] : rows) {
        store_.SetRest(Ranges().AtRow(row), settled);
    }
    return !rows.empty();
}

/// The rows that Settle changes, with what it makes of them.
CChannelRangeTable::TRows CChannelRangeTable::UnsettledRows() const {
    TRows rows;
    const auto add = [&rows](std::uint32_t row, const TRecord &range, const TRecord &settled) {
        if (settled.type != range.type || settled.direction != range.direction || settled.note != range.note) {
            rows.emplace(row, settled);
        }
    };
    for (const std::uint32_t first : store_.Unsettled()) {
        TBlock block;
        if (!FindBlock(first, block) || !IsDefined(block.Lowest())) {
            continue;
        }
        const TRecord lowest = block.Lowest();
        const bool type_given = (lowest.note & kNoteTypeFree) == 0 && lowest.type != kUndefinedCode;
        const bool direction_given = (lowest.note & kNoteDirectionFree) == 0 && lowest.direction != kUndefinedCode;
        std::uint32_t name = 0;
        for (const TBlock::TPiece &piece : block.pieces) {
            name = std::max(name, NameBitsOf(piece.range.note));
        }
        for (const TBlock::TPiece &piece : block.pieces) {
            TRecord settled = piece.range;
            settled.type = type_given ? lowest.type : settled.type;
            settled.direction = direction_given ? lowest.direction : settled.direction;
            settled.note = WithName(settled.note, std::exchange(name, 0));
            add(piece.row, piece.range, settled);
        }
        CPosition next;
        if (block.Last() != kNoNumber && Ranges().FindByFirst(block.Last() + 1, next) &&
            !IsDefined(Ranges().At(next))) {
            TRecord unnamed = Ranges().At(next);
            unnamed.note = WithName(unnamed.note, 0);
            add(Ranges().RowOf(next), Ranges().At(next), unnamed);
        }
    }
    return rows;
}

/// The block keeps its length.
bool CChannelRangeTable::MoveStart(const TBlock &block, std::uint32_t first) {
    const std::int64_t last = std::int64_t{block.Last()} - block.First() + first;
    return last <= kHighestChannel && MoveWhole(block, first, static_cast<std::uint32_t>(last));
}

bool CChannelRangeTable::MoveWhole(const TBlock &block, std::uint32_t first, std::uint32_t last) {
    if (first > last || last > kHighestChannel) {
        return false;
    }
    std::vector<TReplacement> changes;
    CPosition other = Ranges().FirstEndingFrom(first);
    for (std::uint32_t row = Ranges().RowOf(other); !Ranges().IsEnd(other) && Ranges().FirstAt(other) <= last;
         Ranges().Next(other), ++row) {
        if (Ranges().LastAt(other) < first || block.HasRow(row)) {
            continue;
        }
        if (!GivesWay(Ranges().At(other), block.Lowest())) {
            return false;
        }
        changes.push_back({row, std::nullopt});
    }
    Reshape(block, std::int64_t{first} - block.First(), first, last, changes);
    return true;
}

bool CChannelRangeTable::MoveFirst(const TBlock &block, std::uint32_t first) {
    std::vector<TReplacement> changes;
    const bool can = first <= kHighestChannel && (first >= block.First() || ClearDown(block, first, changes)) &&
                     (first <= block.Last() || ClearUp(block, first, changes));
    if (can) {
        Reshape(block, 0, first, std::max(first, block.Last()), changes);
    }
    return can;
}

/// The last number that the definition had need not be the block's: the direction of the move depends on it alone.
bool CChannelRangeTable::MoveLast(const TBlock &block, std::int64_t old_last, std::uint32_t last) {
    const bool up = last > old_last;
    if (last > kHighestChannel || (up && last < block.First())) {
        return false;
    }
    std::vector<TReplacement> changes;
    const bool can = up ? ClearUp(block, last, changes) : last >= block.First() || ClearDown(block, last, changes);
    if (can) {
        Reshape(block, 0, std::min(block.First(), last), last, changes);
    }
    return can;
}

bool CChannelRangeTable::ChangeCount(const TBlock &block, std::uint32_t old_count, std::uint32_t count) {
    const std::int64_t last = std::int64_t{block.First()} + count - 1;
    return count > 0 && last <= kHighestChannel &&
           MoveLast(block, std::int64_t{block.First()} + old_count - 1, static_cast<std::uint32_t>(last));
}

/// Works out how way is made for a block from an edge below it on.
bool CChannelRangeTable::ClearDown(const TBlock &block, std::uint32_t edge, std::vector<TReplacement> &changes) const {
    const std::uint32_t end = block.pieces.front().row;
    CPosition other = Ranges().FirstEndingFrom(edge);
    for (std::uint32_t row = Ranges().RowOf(other); row < end; Ranges().Next(other), ++row) {
        TRecord range = Ranges().At(other);
        if (range.last < edge) {
            continue;
        }
        if (!GivesWay(range, block.Lowest())) {
            return false;
        }
        if (range.first < edge) {
            range.last = edge - 1;
            changes.push_back({row, range});
        } else {
            changes.push_back({row, std::nullopt});
        }
    }
    return true;
}

/// Works out how way is made for a block up to an edge. Of what kind the ranges there are doesn't matter.
bool CChannelRangeTable::ClearUp(const TBlock &block, std::uint32_t edge, std::vector<TReplacement> &changes) const {
    std::uint32_t row = block.pieces.front().row + 1;
    CPosition other = Ranges().AtRow(row);
    for (; !Ranges().IsEnd(other) && Ranges().FirstAt(other) <= edge; Ranges().Next(other), ++row) {
        if (block.HasRow(row)) {
            continue;
        }
        TRecord range = Ranges().At(other);
        if (IsDefined(range)) {
            return false;
        }
        if (edge < range.last) {
            range.first = edge + 1;
            changes.push_back({row, range});
        } else {
            changes.push_back({row, std::nullopt});
        }
    }
    return true;
}

/// Carries a change out: the pieces are shifted, then cut or extended to the new bounds, and the changes join them.
/// Pieces outside the bounds go; if all are, the lowest stays for the whole.
void CChannelRangeTable::Reshape(const TBlock &block, std::int64_t shift, std::uint32_t first, std::uint32_t last,
                                 std::vector<TReplacement> &changes) {
    const auto stays = [&](const TBlock::TPiece &piece) {
        return piece.range.first + shift <= last && piece.range.last + shift >= first;
    };
    const auto lowest = std::find_if(block.pieces.begin(), block.pieces.end(), stays);
    const auto kept_from = lowest != block.pieces.end() ? lowest : block.pieces.begin();
    std::uint32_t next_first = first;
    std::size_t kept = changes.size();
    for (auto piece = block.pieces.begin(); piece != block.pieces.end(); ++piece) {
        if (piece != kept_from && !(piece > kept_from && stays(*piece))) {
            changes.push_back({piece->row, std::nullopt});
            continue;
        }
        TRecord range = piece->range;
        range.first = next_first;
        range.last = static_cast<std::uint32_t>(std::min<std::int64_t>(range.last + shift, last));
        range.note = piece == kept_from ? range.note & ~kNoteContinues : range.note;
        next_first = range.last + 1;
        kept = changes.size();
        changes.push_back({piece->row, range});
    }
    changes[kept].range->last = last;
    Apply(changes);
}

/// Ranges that keep their first numbers change in their rows. The others leave theirs, and come in again where they
/// belong.
void CChannelRangeTable::Apply(std::vector<TReplacement> &changes) {
    std::sort(changes.begin(), changes.end(),
              [](const TReplacement &left, const TReplacement &right) { return left.row > right.row; });
    std::vector<TRecord> moved;
    for (const TReplacement &change : changes) {
        const CPosition position = Ranges().AtRow(change.row);
        if (change.range && change.range->first == Ranges().FirstAt(position)) {
            const TRecord before = Ranges().At(position);
            if (before.last != change.range->last) {
                store_.SetLast(position, change.range->last);
            }
            if (before.note != change.range->note) {
                store_.SetRest(position, *change.range);
            }
            continue;
        }
        store_.Erase(position);
        if (change.range) {
            moved.push_back(*change.range);
        }
    }
    // Of equal first numbers the one inserted later is the upper: the lower rows come first.
    std::for_each(moved.rbegin(), moved.rend(), [this](const TRecord &range) { store_.Insert(range); });
}

}  // namespace kq_pdt

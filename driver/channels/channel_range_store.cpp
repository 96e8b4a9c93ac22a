#include "driver/channels/channel_range_store.h"

#include <cassert>
#include <utility>

#include "driver/channels/channel_range_note.h"

// The journal names ranges by their rows at the time of the change. Undone newest first, each row is right again when
// its turn comes, and ranges of equal first numbers return to their old order.
namespace kq_pdt {

void CChannelRangeStore::Insert(const TRecord &record) {
    CPosition position = contents_.ranges.Begin();
    Insert(position, record);
}

void CChannelRangeStore::Insert(CPosition &near, const TRecord &record) {
    contents_.ranges.Insert(near, record);
    Note(TChangeKind::kInserted, near, {});
}

void CChannelRangeStore::Erase(const CPosition &position) {
    Note(TChangeKind::kErased, position, contents_.ranges.At(position));
    contents_.ranges.Erase(position);
}

void CChannelRangeStore::SetLast(const CPosition &position, std::uint32_t last) {
    Note(TChangeKind::kSet, position, contents_.ranges.At(position));
    contents_.ranges.SetLast(position, last);
}

void CChannelRangeStore::SetRest(const CPosition &position, const TRecord &record) {
    Note(TChangeKind::kSet, position, contents_.ranges.At(position));
    contents_.ranges.SetRest(position, record);
}

void CChannelRangeStore::Note(TChangeKind kind, const CPosition &position, const TRecord &before) {
    next_row_ = kNoRow;
    if (levels_ > 0) {
        journal_.push_back({kind, contents_.ranges.RowOf(position), before});
    }
}

std::uint32_t CChannelRangeStore::NameBits(std::string_view name) {
    constexpr std::uint32_t kMostNames = 0xFFFFFFFFU >> kNoteNameShift;
    if (name.empty()) {
        return 0;
    }
    std::vector<kq_base::TText> &names = contents_.names;
    const kq_base::TText text(name);
    if (names.empty() || names.back() != text) {
        if (names.size() >= kMostNames) {
            return 0;
        }
        names.push_back(text);
    }
    return static_cast<std::uint32_t>(names.size()) << kNoteNameShift;
}

void CChannelRangeStore::Clear() {
    next_row_ = kNoRow;
    TContents old = std::exchange(contents_, TContents());
    if (levels_ > 0) {
        journal_.push_back({TChangeKind::kCleared, 0, {}});
        cleared_.push_back(std::move(old));
    }
}

const CChannelRangeStore::CPosition *CChannelRangeStore::FindRow(std::uint32_t row) const {
    const kq_drv::CRangeTree &ranges = contents_.ranges;
    if (row >= ranges.Size()) {
        return nullptr;
    }
    if (row + 1 != next_row_) {
        row_position_ = ranges.AtRow(row);
        next_row_ = row + 1;
    }
    return &row_position_;
}

CChannelRangeStore::TMark CChannelRangeStore::OpenJournal() {
    ++levels_;
    return {journal_.size(), contents_.names.size()};
}

void CChannelRangeStore::CloseJournal() {
    assert(levels_ > 0);
    if (--levels_ == 0) {
        journal_.clear();
        cleared_.clear();
    }
}

bool CChannelRangeStore::RollBackTo(const TMark &mark) {
    const bool changed = journal_.size() > mark.changes;
    for (; journal_.size() > mark.changes; journal_.pop_back()) {
        Undo(journal_.back());
    }
    contents_.names.resize(mark.names);
    next_row_ = kNoRow;
    return changed;
}

void CChannelRangeStore::Undo(const TChange &change) {
    kq_drv::CRangeTree &ranges = contents_.ranges;
    switch (change.kind) {
        case TChangeKind::kInserted:
            ranges.Erase(ranges.AtRow(change.row));
            break;
        case TChangeKind::kErased:
            ranges.InsertAtRow(change.row, change.before);
            break;
        case TChangeKind::kSet: {
            const CPosition position = ranges.AtRow(change.row);
            ranges.SetLast(position, change.before.last);
            ranges.SetRest(position, change.before);
            break;
        }
        case TChangeKind::kCleared:
            contents_ = std::move(cleared_.back());
            cleared_.pop_back();
            break;
    }
}

}  // namespace kq_pdt

#pragma once

#include <cstdint>
#include <set>
#include <string_view>
#include <vector>

#include "driver/channels/channel_block_set.h"
#include "driver/channels/channel_range_note.h"
#include "driver/channels/range_tree.h"
#include "platform/base/bounded_text.h"

namespace kq_pdt {

/// What the table of channel ranges keeps, and every elementary change of it. While a journal is open, each change is
/// written down with what it takes to undo it, so that a transaction costs what it changes and never what the table
/// holds. Rules about channels are the table's.
class CChannelRangeStore {
public:
    using CPosition = kq_drv::CRangeTree::CPosition;
    using TRecord = kq_drv::TRangeRecord;
    /// A state in the journal to which RollBackTo can return.
    struct TMark {
        std::size_t changes = 0;
        std::size_t names = 0;
    };

    const kq_drv::CRangeTree &Ranges() const { return contents_.ranges; }

    void Insert(const TRecord &record);
    /// The same, faster if the position is where the range belongs. The position goes to the new range.
    void Insert(CPosition &near, const TRecord &record);
    void Erase(const CPosition &position);
    void SetLast(const CPosition &position, std::uint32_t last);
    /// Replaces type, direction and note; first and last stay as they are.
    void SetRest(const CPosition &position, const TRecord &record);

    /// The bits of a note for a name, which is kept if it is a new one.
    std::uint32_t NameBits(std::string_view name);
    /// The name in a note; null if it has none.
    const kq_base::TText *Name(std::uint32_t note) const {
        const std::uint32_t name = note >> kNoteNameShift;
        return name != 0 ? &contents_.names[name - 1] : nullptr;
    }

    /// First channels of definitions that may have something to settle; see CChannelRangeTable::Settle. An entry too
    /// many does no harm, so undoing a change leaves them.
    std::set<std::uint32_t> &Unsettled() { return contents_.unsettled; }
    const std::set<std::uint32_t> &Unsettled() const { return contents_.unsettled; }

    /// Forgets everything. In a journal the old contents are kept, not copied.
    void Clear();
    /// What a driver map holds besides the ranges. Filled after Clear and before any mark, so Clear's undoing is
    /// theirs.
    kq_drv::CChannelBlockSet &Aside() { return contents_.aside; }
    const kq_drv::CChannelBlockSet &Aside() const { return contents_.aside; }
    std::uint32_t DmfStopLine() const { return contents_.dmf_stop_line; }
    void SetDmfStopLine(std::uint32_t line) { contents_.dmf_stop_line = line; }

    /// The range at a row, counted from 0; null after the last. The row cursor stays there, so that the next row is a
    /// step away; any change of the ranges forgets it.
    const CPosition *GoToRow(std::uint32_t row) const {
        if (row == next_row_ && contents_.ranges.NextInLeaf(row_position_)) {
            ++next_row_;
            return &row_position_;
        }
        return FindRow(row);
    }

    /// Opens the journal, or goes one level deeper in it.
    TMark OpenJournal();
    /// Leaves a level; with the outermost one the journal is dropped.
    void CloseJournal();
    /// Undoes all changes since a mark, the newest first; false if there were none.
    bool RollBackTo(const TMark &mark);

private:
    static constexpr std::uint32_t kNoRow = 0xFFFFFFFF;

    struct TContents {
        kq_drv::CRangeTree ranges;
        std::vector<kq_base::TText> names;  ///< a range's note holds a number into this list; few ranges have one
        std::set<std::uint32_t> unsettled;
        kq_drv::CChannelBlockSet aside;
        std::uint32_t dmf_stop_line = 0;
    };
    enum class TChangeKind : std::uint8_t { kInserted, kErased, kSet, kCleared };
    struct TChange {
        TChangeKind kind;
        std::uint32_t row;
        TRecord before;
    };

    const CPosition *FindRow(std::uint32_t row) const;
    void Note(TChangeKind kind, const CPosition &position, const TRecord &before);
    void Undo(const TChange &change);

    TContents contents_;
    std::vector<TChange> journal_;
    std::vector<TContents> cleared_;  ///< one for each kCleared of the journal
    std::uint32_t levels_ = 0;

    mutable std::uint32_t next_row_ = kNoRow;  ///< the row after the one that was read last
    mutable CPosition row_position_;
};

}  // namespace kq_pdt

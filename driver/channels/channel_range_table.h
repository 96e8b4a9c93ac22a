#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "driver/channels/channel_range.h"
#include "driver/channels/channel_range_owner.h"
#include "driver/channels/channel_range_store.h"
#include "platform/base/bounded_text.h"
#include "platform/base/par_value.h"

class CTextOut;
class CTextView;

namespace kq_pdt {

/// All channels of the driver being edited, as one ascending list of ranges in which three sources meet: the driver
/// map's text (DMF), the template's fixed channels and the channels that the parameter file defines. What the driver
/// map says is there first, undefined; definitions are laid over it. Disagreements go to the owner.
///
/// Types and directions are keyword codes, kUndefinedCode where open. Ranges are disjoint, but for two cases: ranges of
/// equal type and direction that overlap in a driver map stay so, and AddDefined may cover whole ranges. Of several
/// ranges that hold a number, or start at one, the lowest in the list counts, except where a definition is meant.
///
/// A definition's block is one range or several. Where the driver map splits it (several entries, or one that ends
/// inside the block) it lies in pieces: adjoining defined ranges, of which all but the lowest have `continues` set.
/// Rows and the written driver map show each piece by itself. What changes or removes a definition names the block by
/// its first channel and acts on all pieces; a piece that continues can't be named, and no range that a definition has
/// is found through it. The flag is set by AddDefined and DefineIfFits. A piece loses it when it becomes the lowest one
/// of its block: because the first channel moved into it, or because the definition was refused before it came down
/// to the channels below the piece. The flag isn't written: reading the written driver map and defining the same
/// blocks again gives the same pieces.
///
/// An open CChannelTransaction journals every change and can take all back.
///
/// The members lie in four files: channel_range_table.cpp (appending, look-ups, rows), channel_range_dmf.cpp (driver
/// maps), channel_range_define.cpp (new definitions) and channel_range_change.cpp (changed and removed definitions).
/// The elementary changes are CChannelRangeStore's.
class CChannelRangeTable {
public:
    /// Sets who gets reports and news, not owned; without an owner they are dropped.
    void SetOwner(CChannelRangeOwner *owner) { owner_ = owner; }
    /// Forgets all channels, those kept aside as well.
    void Clear() { store_.Clear(); }

    // Driver maps: channel_range_dmf.cpp.

    /// Replaces the table by what a driver map's text says, then compares neighbours: equal ones that overlap give a
    /// warning and stay; of unlike ones the lower gives way and an error is reported. The first entry that the table
    /// can't hold ends the reading: from there on the entries are read by the rules of kq_drv::CChannelMap and kept
    /// aside for WriteDmfText. Nothing is reported about syntax; the result is always true.
    bool LoadDmfText(std::string_view text);
    bool LoadDmfText(const CTextView &view);
    /// The line of the entry at which the last LoadDmfText stopped filling the table, counted from 1; 0 if it read the
    /// whole text.
    std::uint32_t DmfStopLine() const { return store_.DmfStopLine(); }
    /// Writes the driver map: the ranges of known type and direction as Settle would leave them, then those channels
    /// kept aside that the table doesn't hold. Nothing without a text view.
    void WriteDmfText(CTextOut &out) const;
    /// Writes the driver map to a file. False gives the reason.
    bool SaveDmf(std::string_view path, std::string &error) const;

    // New definitions: channel_range_define.cpp.

    /// Lays a definition over the table. It takes over the channels of ranges from the driver map, which it splits at
    /// its own bounds but whose type and direction it can't change. False after a report: a channel is defined already
    /// or of another kind; pieces laid before that stay. If no range holds the first channel, the one that holds the
    /// last channel isn't compared: it gives a piece that keeps its kind until Settle. Nothing, and true, if first is
    /// above last. Of the ranges wholly inside the definition that hold neither its ends nor the ends of its rests,
    /// undefined ones become pieces or, if they are of another kind, go; if one of them is defined, none is noticed.
    bool AddDefined(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                    std::string_view name);
    bool AddDefinedUnnamed(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction);
    /// Lays the block of a definition that gets its numbers in an edit, as AddDefinedUnnamed does, but all or nothing
    /// and without a report. False, and nothing changed, if first is above last, last above kHighestChannel, or some
    /// range that shares channels with the block is defined or has a known type or direction that differs from a known
    /// one of the block. Otherwise the block is laid from below: each undefined range in it becomes a piece, split at
    /// the block's bounds, also one that lies wholly inside, and each gap between them becomes one; what isn't known of
    /// a range's type or direction is taken from the block.
    bool DefineIfFits(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction);

    // Changed and removed definitions: channel_range_change.cpp.

    /// Takes out the block that starts at a number, with all its pieces. Without a definition that starts there it
    /// takes out the lowest undefined range that does; nothing if there is none, nor for a piece that continues.
    void RemoveRange(std::uint32_t first);
    /// Applies one changed parameter of a definition to its block. The block is found by its first channel as in
    /// RemoveRange; if none starts there the result is false. All or nothing: false means an unchanged table. Nothing
    /// is reported and the owner isn't told. By keyword:
    ///
    /// - kwChFrom: the first channel moves from old to new. Above the last one the block becomes the one channel new.
    /// - kwChTo: the last channel of the block at key moves from old to new; below the first one the block becomes the
    ///   one channel new. Only the order of old and new counts: a new above old may run over ranges above, a new not
    ///   above old only over those below the block's first channel. A new above old, but below the first, is refused.
    /// - kwChCount: the block at key gets new channels instead of old ones: kwChTo with first + count - 1. A count of 0
    ///   is refused.
    /// - kwChNumber: the block at old moves to new and keeps its length. Its pieces move with it.
    /// - kwAll: the block at key gets the bounds old to new, also if they are equal. Its pieces move with its first
    ///   channel; the highest that is left is cut or extended.
    /// - kwChType, kwChDirection: all pieces of the block at key get the code new; old doesn't count.
    ///
    /// Any other keyword, and values that aren't numbers where the keyword needs them (old for kwChFrom, kwChTo and
    /// kwChCount), change nothing and give true; so do equal values, but for kwAll.
    ///
    /// Pieces outside new bounds go. Undefined ranges in the way are deleted, or at the far edge trimmed (kwChFrom,
    /// kwChTo, kwChCount). Refused is: a defined range in the way; an undefined one of another known type or direction
    /// than the block's lowest piece, unless the block grows upwards; a channel above kHighestChannel; first above
    /// last.
    bool ChangeParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                         const TParValue &new_value);

    /// Gives the block at first, with all its pieces, the type and direction that its definition has now. What the
    /// definition leaves open (kUndefinedCode) keeps its code and is the user's to choose. Nothing without such a
    /// block, or if its lowest piece has them.
    void SetKind(std::uint32_t first, std::uint32_t type, std::uint32_t direction);

    /// Makes of all definitions what reading the written driver map makes of them: every piece has the type and
    /// direction that the definition gives, and only the lowest has its name. True if something has changed; the owner
    /// isn't told.
    bool Settle();

    // Appending, look-ups and rows: channel_range_table.cpp.

    /// Adds a range of count channels after the highest range and gives its bounds. False, with kNoNumber for both
    /// bounds and nothing changed, if count is 0 or the last one would be above kHighestChannel.
    bool AppendRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first, std::uint32_t &last,
                     bool defined, std::uint32_t count);
    /// The same with a count of 1.
    bool AppendChannel(std::uint32_t type, std::uint32_t direction, std::uint32_t &first, std::uint32_t &last,
                       bool defined);

    /// The range that holds a number, or starts at one; false without one.
    bool FindContaining(std::uint32_t number, CChannelRange &range) const;
    bool FindByFirst(std::uint32_t first, CChannelRange &range) const;
    /// True if the type or direction of some range isn't known.
    bool HasUndefined() const;
    /// The row of the first such range, from 0.
    bool FirstUndefinedRow(std::uint32_t &row) const;

    std::uint32_t RowCount() const { return Ranges().Size(); }
    /// The range at a row, counted from 0; false after the last. Ascending rows are read at the cost of a step each.
    bool GetRow(std::uint32_t row, CChannelRange &range) const;
    /// What the channels sheet shows in columns 1 to 5: first, last, type, direction, name. The background is only set
    /// for a cell that needs attention: an unknown type or direction while highlight is on. False after the last row.
    bool GetCellText(std::uint32_t row, std::uint32_t column, kq_base::TText &text, std::uint32_t &text_color,
                     std::uint32_t &background, bool highlight) const;
    /// True for a type or direction that the range's definition leaves open.
    bool IsCellEditable(std::uint32_t row, std::uint32_t column) const;
    /// Sets type (column 3) or direction (column 4) to a word of the template language, and settles; anything else
    /// changes nothing.
    void SetCellText(std::uint32_t row, std::uint32_t column, std::string_view text);
    /// Has the owner select the row of the range that starts at a number.
    void SelectRow(std::uint32_t first) const;

private:
    friend class CChannelTransaction;

    using CPosition = CChannelRangeStore::CPosition;
    using TRecord = CChannelRangeStore::TRecord;
    /// What is still to be laid of a definition.
    struct TDefinition;
    /// How a step of laying a definition ends.
    enum class TStep : std::uint8_t { kDone, kMore, kRefused };
    using TRows = std::map<std::uint32_t, TRecord>;
    struct TBlock;
    struct TReplacement;

    const kq_drv::CRangeTree &Ranges() const { return store_.Ranges(); }

    // channel_range_define.cpp
    TStep LayStep(TDefinition &rest);
    TStep LayUpward(TDefinition &rest);
    TStep LayFromFirst(CPosition &position, TDefinition &rest);
    TStep LayFromLast(CPosition &position, TDefinition &rest);
    void DetachPiece(std::uint32_t first, std::uint32_t last);
    template <class TUse>
    bool AllSharing(const TDefinition &wanted, const TUse &use) const;
    bool Fits(const TDefinition &wanted) const;
    void LayOverInside(TDefinition &rest);
    bool ReportConflict(const TRecord &range, const TDefinition &rest) const;
    bool ReportSecondDefinition(const TRecord &range, const TDefinition &rest) const;

    // channel_range_change.cpp
    bool FindBlock(std::uint32_t first, TBlock &block) const;
    bool FindBlockStart(std::uint32_t first, CPosition &position) const;
    bool FindPiece(std::uint32_t first, CPosition &position) const;
    bool ChangeKind(const TBlock &block, std::uint32_t keyword, std::uint32_t code);
    bool MoveStart(const TBlock &block, std::uint32_t first);
    bool MoveWhole(const TBlock &block, std::uint32_t first, std::uint32_t last);
    bool MoveFirst(const TBlock &block, std::uint32_t first);
    bool MoveLast(const TBlock &block, std::int64_t old_last, std::uint32_t last);
    bool ChangeCount(const TBlock &block, std::uint32_t old_count, std::uint32_t count);
    bool ClearDown(const TBlock &block, std::uint32_t edge, std::vector<TReplacement> &changes) const;
    bool ClearUp(const TBlock &block, std::uint32_t edge, std::vector<TReplacement> &changes) const;
    TRows UnsettledRows() const;
    void Reshape(const TBlock &block, std::int64_t shift, std::uint32_t first, std::uint32_t last,
                 std::vector<TReplacement> &changes);
    void Apply(std::vector<TReplacement> &changes);

    // channel_range_dmf.cpp
    void CheckOverlaps();
    void WriteAside(CTextOut &out) const;
    bool ReportOverlap(const TRecord &lower, const TRecord &upper) const;

    // channel_range_table.cpp
    void ReportWarning(std::string_view text1, std::string_view text2) const;
    void ReportError(std::string_view text1, std::string_view text2) const;
    void Show(const TRecord &record, CChannelRange &range) const;
    void Changed();

    CChannelRangeStore store_;
    CChannelRangeOwner *owner_ = nullptr;
};

}  // namespace kq_pdt

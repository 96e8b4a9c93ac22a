#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "driver/channels/channel_block_set.h"
#include "driver/channels/channel_range.h"
#include "driver/channels/channel_range_owner.h"
#include "driver/channels/range_tree.h"
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
/// equal type and direction that overlap in a driver map stay so, and a new definition may cover whole ranges. Of
/// several ranges that hold a number, or start at one, the lowest in the list counts.
///
/// The members lie in four files: channel_range_table.cpp (single ranges, look-ups, rows), channel_range_dmf.cpp
/// (driver maps), channel_range_define.cpp (AddDefined) and channel_range_change.cpp (ChangeParameter).
class CChannelRangeTable {
public:
    /// Sets who gets reports and news, not owned; without an owner they are dropped.
    void SetOwner(CChannelRangeOwner *owner) { owner_ = owner; }
    /// Forgets all channels, those kept aside as well.
    void Clear();

    // Driver maps: channel_range_dmf.cpp.

    /// Replaces the table by what a driver map's text says, then runs CheckOverlaps. The first entry that the table
    /// can't hold ends the reading: from there on the entries are read by the rules of kq_drv::CChannelMap and kept
    /// aside for WriteDmfText. Nothing is reported about syntax; the result is always true.
    bool LoadDmfText(std::string_view text);
    bool LoadDmfText(const CTextView &view);
    /// The line of the entry at which the last LoadDmfText stopped filling the table, counted from 1; 0 if it read the
    /// whole text.
    std::uint32_t DmfStopLine() const { return dmf_stop_line_; }
    /// Writes the driver map: the ranges of known type and direction, then those channels kept aside that the table
    /// doesn't hold. Nothing without a text view.
    void WriteDmfText(CTextOut &out) const;
    /// Writes the driver map to a file. False gives the reason.
    bool SaveDmf(std::string_view path, std::string &error) const;
    /// Compares neighbours: equal ones that overlap give a warning and stay; of unlike ones the lower gives way and an
    /// error is reported.
    void CheckOverlaps();

    // Definitions: channel_range_define.cpp.

    /// Lays a definition over the table. It takes over the channels of ranges from the driver map, which it splits at
    /// its own bounds but whose type and direction it can't change. False after a report: a channel is defined already
    /// or of another kind; pieces laid before that stay. Nothing, and true, if first is above last.
    bool AddDefined(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                    std::string_view name);
    bool AddDefinedUnnamed(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction);
    // Single ranges: channel_range_table.cpp.

    /// Adds a defined range if none of its channels is in the table; false otherwise.
    bool AddIfFree(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction);
    /// Adds a range of count channels after the highest and gives its bounds.
    void AppendRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first, std::uint32_t &last,
                     bool defined, std::uint32_t count);
    /// The same with a count of 1.
    void AppendChannel(std::uint32_t type, std::uint32_t direction, std::uint32_t &first, std::uint32_t &last,
                       bool defined);
    /// Takes out the range that starts at a number, if there is one.
    void RemoveRange(std::uint32_t first);
    // Changed parameters: channel_range_change.cpp.

    /// Applies one changed parameter of a definition, named by its keyword: `ch_from`, `ch_to`, `ch_number`, `ch_type`,
    /// `ch_direction`, or `all` for a group whose bounds both moved. The key is the first number of the range where the
    /// values don't say it: for `ch_to`, `ch_type`, `ch_direction` and `all`. Undefined ranges in the way are deleted
    /// or trimmed; if the change runs into a range that can't give way, nothing changes and the result is false.
    bool ChangeParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                         const TParValue &new_value);

    // Look-ups and rows: channel_range_table.cpp.

    /// The range that holds a number, or starts at one; false without one.
    bool FindContaining(std::uint32_t number, CChannelRange &range) const;
    bool FindByFirst(std::uint32_t first, CChannelRange &range) const;
    /// True if the type or direction of some range isn't known.
    bool HasUndefined() const;
    /// The row of the first such range, from 0.
    bool FirstUndefinedRow(std::uint32_t &row) const;

    std::uint32_t RowCount() const { return ranges_.Size(); }
    /// The range at a row, counted from 0; false after the last. Ascending rows are read at the cost of a step each.
    bool GetRow(std::uint32_t row, CChannelRange &range) const;
    /// What the channels sheet shows in columns 1 to 5: first, last, type, direction, name. The background is only set
    /// for a cell that needs attention: an unknown type or direction while highlight is on. False after the last row.
    bool GetCellText(std::uint32_t row, std::uint32_t column, kq_base::TText &text, std::uint32_t &text_color,
                     std::uint32_t &background, bool highlight) const;
    /// True for a type or direction that the range's definition leaves open.
    bool IsCellEditable(std::uint32_t row, std::uint32_t column) const;
    /// Sets type (column 3) or direction (column 4) to a word of the template language; anything else changes nothing.
    void SetCellText(std::uint32_t row, std::uint32_t column, std::string_view text);
    /// Has the owner select the row of the range that starts at a number.
    void SelectRow(std::uint32_t first) const;

private:
    using CPosition = kq_drv::CRangeTree::CPosition;
    using TRecord = kq_drv::TRangeRecord;
    /// What is still to be laid of a definition.
    struct TDefinition;
    /// How a step of laying a definition ends.
    enum class TStep : std::uint8_t { kDone, kMore, kRefused };

    // channel_range_define.cpp
    TStep LayStep(TDefinition &rest);
    TStep LayFromFirst(CPosition &position, TDefinition &rest);
    TStep LayFromLast(CPosition &position, TDefinition &rest);
    std::uint32_t NameBits(std::string_view name);
    bool ReportConflict(const TRecord &range, const TDefinition &rest) const;
    bool ReportSecondDefinition(const TRecord &range, const TDefinition &rest) const;

    // channel_range_change.cpp
    bool ChangeKind(const CPosition &position, std::uint32_t keyword, std::uint32_t code);
    bool MoveStart(const CPosition &position, std::uint32_t first);
    bool MoveWhole(const CPosition &position, std::uint32_t first, std::uint32_t last);
    bool MoveFirst(const CPosition &position, std::uint32_t first);
    bool MoveLast(const CPosition &position, std::uint32_t old_last, std::uint32_t last);
    bool ClearDown(std::uint32_t &row, std::uint32_t edge);
    bool ClearUp(std::uint32_t row, std::uint32_t edge);
    void EraseRows(std::uint32_t from, std::uint32_t to);
    void SetBounds(std::uint32_t row, std::uint32_t first, std::uint32_t last);

    // channel_range_dmf.cpp
    void WriteAside(CTextOut &out) const;
    bool ReportOverlap(const TRecord &lower, const TRecord &upper) const;

    // channel_range_table.cpp
    void ReportWarning(std::string_view text1, std::string_view text2) const;
    void ReportError(std::string_view text1, std::string_view text2) const;
    void Show(const TRecord &record, CChannelRange &range) const;
    bool GoToRow(std::uint32_t row) const;
    void Changed();

    kq_drv::CRangeTree ranges_;
    /// The names of ranges: a range's note holds a number into this list. Few ranges have one.
    std::vector<kq_base::TText> names_;
    kq_drv::CChannelBlockSet aside_;
    std::uint32_t dmf_stop_line_ = 0;
    CChannelRangeOwner *owner_ = nullptr;

    // The row that was read last is the one before this one, so that the next one is a step away. Any change of the
    // ranges forgets it.
    mutable std::uint32_t next_row_ = kNoNumber;
    mutable CPosition row_position_;
};

}  // namespace kq_pdt

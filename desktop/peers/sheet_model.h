#pragma once

#include <QAbstractItemModel>
#include <cstdint>
#include <unordered_map>

#include "platform/view/sheet_view.h"

namespace kq_desktop {

class CPeerAdvice;

/// The tables of a sheet as a tree for Qt. A row of a table is an item; below it lie the rows of the table that opens
/// from it, the first of which shows that table's column headings. Nothing is read before somebody looks.
///
/// The sheet tells of a change when it has happened already, so the model remembers what Qt was last told: which tables
/// it has seen, in which row each lies, and how many rows each has.
class CSheetModel final : public QAbstractItemModel {
public:
    /// Where an item lies in the sheet. Row 0 is that of the headings.
    struct TPlace {
        std::uint32_t table = 0;
        std::uint32_t row = 0;
        std::uint32_t column = 0;

        bool IsHeading() const { return row == 0; }
    };

    static constexpr std::uint32_t kRoot = 1;
    /// True for the items of a row with headings.
    static constexpr int kHeadingRole = Qt::UserRole + 1;
    /// True for an item that a person can edit now.
    static constexpr int kEditableRole = Qt::UserRole + 2;
    /// True for the items of a row that adds another one.
    static constexpr int kAddRole = Qt::UserRole + 3;
    static constexpr int kDisabledRole = Qt::UserRole + 4;

    CSheetModel(CSheetView &sheet, CPeerAdvice &advice);

    TPlace PlaceOf(const QModelIndex &index) const;
    /// Invalid for a place that doesn't exist.
    QModelIndex IndexOf(std::uint32_t table, std::uint32_t row, std::uint32_t column) const;
    /// The item that a table opens from; invalid for the root.
    QModelIndex NodeOf(std::uint32_t table) const;
    /// The cells of a row that a person can go to.
    std::uint32_t CellsOf(const TPlace &place) const;
    /// What the item holds, in words: the row's name and the column's heading.
    QString TitleOf(const TPlace &place) const;
    /// The table that opens from an item; 0 without one.
    std::uint32_t TableBelow(const QModelIndex &index) const;
    /// The columns that the known tables have at most.
    void AddColumns(std::uint32_t table);

    /// The sheet told of rows.
    void RowInserted(std::uint32_t table, std::uint32_t row);
    void RowRemoved(std::uint32_t table, std::uint32_t row);
    /// Brings all in step with the sheet after whatever happened. False if that meant reading all anew, after which the
    /// views have forgotten what was open.
    bool Sync();
    void Reset();
    void CellChanged(std::uint32_t table, std::uint32_t row, std::uint32_t column);

    QModelIndex index(int row, int column, const QModelIndex &parent) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent) const override;
    int columnCount(const QModelIndex &parent) const override;
    bool hasChildren(const QModelIndex &parent) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct TKnown {
        std::uint32_t owner = 0;  ///< the table and row of the node
        std::uint32_t row = 0;
        std::uint32_t shown = 0;  ///< rows without that of the headings
    };

    TKnown &Know(std::uint32_t table, std::uint32_t owner, std::uint32_t row) const;
    void Forget(std::uint32_t owner, std::uint32_t row);
    void ShiftNodes(std::uint32_t owner, std::uint32_t from, bool up);
    bool IsInStep(std::uint32_t table, const TKnown &known) const;
    QVariant HeadingData(const TPlace &place, int role) const;
    QVariant CellData(const TPlace &place, int role) const;
    QString ToolTip(const TPlace &place, bool disabled) const;
    QString Description(const TPlace &place, bool disabled) const;
    /// The items of a table before its first row of cells.
    static int Headings(std::uint32_t table) { return table == kRoot ? 0 : 1; }

    CSheetView &sheet_;
    CPeerAdvice &advice_;
    mutable std::unordered_map<std::uint32_t, TKnown> known_;
    int columns_ = 1;
};

}  // namespace kq_desktop

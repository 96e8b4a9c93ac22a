#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/base/bounded_text.h"
#include "platform/view/view.h"

/// A sheet of nested tables. Table 1 always exists; below a row may lie a table of its own, its node. The sheet holds
/// no row: a subclass answers how many there are and what is in a cell (the operations named DS_), and is asked only
/// for what somebody wants to see. Tables are known by their ids, rows and columns count from 1.
///
/// The members lie in two files: sheet_view.cpp (tables, rows, selection, editor) and sheet_columns.cpp (columns and
/// their settings).
class KQ_API CSheetView : public CView {
public:
    /// A bit of a table's style: the row after the last one adds a row at once, without an editor.
    static constexpr std::uint32_t kStyleAppendsAtOnce = 0x80;
    /// Kinds of DS_Notify: another row, or another cell of the row, is selected.
    static constexpr std::uint32_t kNotifyRow = 0;
    static constexpr std::uint32_t kNotifyCell = 1;

    struct TColumn {
        kq_base::TText text;
        std::uint32_t mode = 0;
        std::uint32_t width = 0;
        std::uint32_t least_width = 0;
        std::uint32_t greatest_width = 0;
    };

    /// What a cell shows.
    struct TCell {
        kq_base::TText text;
        bool disabled = false;  ///< the text is the symbol of a disabled cell, in the symbol font
        std::optional<std::uint32_t> color;
        std::optional<std::uint32_t> background;
    };

    struct TPosition {
        std::uint32_t table = 0;  ///< 0 for no position
        std::uint32_t row = 0;
        std::uint32_t column = 0;

        friend bool operator==(const TPosition &left, const TPosition &right) = default;
    };

    TViewKind Kind() const override { return TViewKind::kSheet; }

    // The program's side.

    /// Forgets all tables and the selection; an open editor goes without taking its value.
    void Clear();
    /// Makes a table known. Its columns belong to a form, which names the stored widths: tables of one form share
    /// them. Describing a known table again leaves it as it is; true if it is new and needs its columns.
    bool DescribeTable(std::uint32_t table, std::uint32_t style, std::string_view form);
    /// Appends a column to a table.
    void DescribeColumn(std::uint32_t table, std::string_view text, std::uint32_t mode, std::uint32_t width,
                        std::uint32_t least_width, std::uint32_t greatest_width);
    /// Forgets a table. Nothing without it.
    void DeleteTable(std::uint32_t table);
    /// The style as it is now; 0 for an unknown table.
    std::uint32_t TableStyle(std::uint32_t table);
    bool FindTableByHandle(std::uint32_t table) const { return tables_.contains(table); }
    /// Whatever the cells show may have changed. The selection stays at its table and row, cut to the last row shown;
    /// if its table is gone it goes to the row that held the node, or to none.
    virtual void PrepareSheet();
    /// A row that came or went. To be called at once, with the rows as they are then; the peer hears of it at the next
    /// PrepareSheet.
    void NoteRows(std::uint32_t table, std::uint32_t row, bool inserted);
    /// Selects a row, in its first column; DS_Notify tells of it if the selection moves. False if there is none.
    bool SelTableRow(std::uint32_t table, std::uint32_t row) { return SelTableCell(table, row, 1); }
    bool SelTableCell(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    void ClearSelection();
    const TPosition &Selection() const { return selection_; }
    std::uint32_t GetSelTable() const { return selection_.table; }
    std::uint32_t GetSelRow() const { return selection_.row; }
    /// Ends the open editor; it takes its value unless what it edits is gone.
    void HideCellEditor();
    /// An editor's content is always good to be taken; the model judges it.
    static bool CheckCellEditorData() { return true; }
    /// The editor view, not owned by the sheet; null without one.
    CView *CellEditor() const { return editor_; }
    const TPosition &EditorPosition() const { return editor_position_; }
    /// Another sheet, which lives as long: who goes to a cell of this one leaves the cell that is edited there, too.
    void SetNeighbour(CSheetView &neighbour) { neighbour_ = &neighbour; }

    // Column widths: sheet_columns.cpp.

    /// The columns as they are now; none for an unknown table.
    const std::vector<TColumn> &Columns(std::uint32_t table);
    std::uint32_t ColumnWidth(std::uint32_t table, std::uint32_t column) const;
    /// Reads and writes the widths of all forms that were described, as values "FORM.COLUMN" below a path.
    /// Forms that are described later are read then.
    void RegistryReadSettings(std::string_view path);
    void RegistryWriteSettings(std::string_view path) const;

    // What a peer reads.

    std::uint32_t RowCount(std::uint32_t table);
    /// The rows, and one more where the row after the last can be used to add.
    std::uint32_t ShownRowCount(std::uint32_t table);
    TCell ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    bool IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    /// True if an editor would come up for a cell now, or a row would be added: what is to look editable.
    bool CanEdit(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    /// The table that opens from a row, 0 without one.
    std::uint32_t SubTable(std::uint32_t table, std::uint32_t row);
    /// True if a table opens from a row, which needn't be described for that.
    bool HasSubTable(std::uint32_t table, std::uint32_t row);
    /// The table and the row in which a table's node lies; false for table 1 and unknown ones.
    bool FindNode(std::uint32_t table, std::uint32_t &owner, std::uint32_t &row);
    /// A closed table isn't shown. Tables are closed until somebody opens them.
    bool IsOpen(std::uint32_t table) const;

    // What a person does. Each but UserSizeColumn and UserOpen first commits an open editor, since it leaves the cell.
    // A cell is given by the place that it has before the commit, and stays the same cell when rows come or go with the
    // commit. If its own row goes, there is no such cell.

    /// Clicks a cell. False if there is none.
    bool UserSelect(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    /// Selects a cell and opens its editor, or adds a row. True if an editor view came up or a row was added. Nothing
    /// changes if the cell can't be edited.
    bool UserEdit(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    /// Ends the editor; false without one.
    bool UserCommit();
    bool UserCancel();
    void UserOpen(std::uint32_t table, bool open);
    void UserSizeColumn(std::uint32_t table, std::uint32_t column, std::uint32_t width);

protected:
    /// Something happened to the selection.
    virtual void DS_Notify(std::uint32_t /*kind*/, std::uint32_t /*table*/, std::uint32_t /*row*/) {}
    virtual std::uint32_t DS_GetRowCount(std::uint32_t table) = 0;
    virtual void DS_ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column, TCell &cell) = 0;
    /// The table that opens from a row, described by then; 0 without one.
    virtual std::uint32_t DS_OpenNode(std::uint32_t /*table*/, std::uint32_t /*row*/) { return 0; }
    virtual bool DS_HasNode(std::uint32_t table, std::uint32_t row) { return DS_OpenNode(table, row) != 0; }
    /// The table and the row in which a table's node lies; false if it is gone, and for table 1.
    virtual bool DS_FindNode(std::uint32_t /*table*/, std::uint32_t & /*owner*/, std::uint32_t & /*row*/) {
        return false;
    }
    /// A table's style, given the one that it was described with.
    virtual std::uint32_t DS_GetTableStyle(std::uint32_t /*table*/, std::uint32_t described) { return described; }
    /// Brings a column's text up to date.
    virtual void DS_ReadColumn(std::uint32_t /*table*/, std::uint32_t /*column*/, TColumn & /*described*/) {}
    /// Adds a row without an editor; false if the table wants an editor for that.
    virtual bool DS_AppendRow(std::uint32_t /*table*/) { return false; }
    virtual bool DS_DeleteRowNumber(std::uint32_t /*table*/, std::uint32_t /*row*/) { return true; }
    virtual bool DS_IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column) = 0;
    /// True if a cell that can be edited has something to edit at present.
    virtual bool DS_HasEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
        return !ReadCell(table, row, column).disabled;
    }
    /// Makes an editor view; true if the cell can be edited, with a null view if it can't at present.
    virtual bool DS_OpenCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *&editor) = 0;
    virtual void DS_CloseCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *editor,
                                    bool cancelled) = 0;
    /// True if the open editor's value may still be taken.
    virtual bool DS_CanCommitEditor() { return true; }

private:
    struct TTable {
        std::uint32_t style = 0;
        bool open = false;
        std::string form;
        std::vector<TColumn> columns;
    };
    struct TRowChange {
        std::uint32_t table = 0;
        std::uint32_t row = 0;
        bool inserted = false;
    };
    /// The width of each column that a person or the settings gave, 0 where neither did.
    using TWidths = std::vector<std::uint32_t>;

    void ChildForgotten(CView &child) override;
    void CloseEditor(bool cancelled);
    /// Commits the open editors. Gives where a cell is afterwards, no position if its row went.
    TPosition LeaveCellFor(const TPosition &target);
    void FollowTarget(std::uint32_t table, std::uint32_t row, bool inserted);
    bool OpenEditor(const TPosition &cell);
    void Select(const TPosition &position);
    void RestoreSelection();
    bool IsAlive(std::uint32_t table);
    void TellRows();
    void ReadWidths(const std::string &form, std::size_t columns);

    std::unordered_map<std::uint32_t, TTable> tables_;
    std::map<std::string, TWidths, std::less<>> widths_;  ///< by form
    std::string settings_path_;
    TPosition selection_;
    std::vector<TPosition> selection_path_;  ///< the nodes that lead to the selected table, innermost first
    CSheetView *neighbour_ = nullptr;
    CView *editor_ = nullptr;
    TPosition editor_position_;
    std::vector<TRowChange> row_changes_;
    TPosition target_;             ///< the cell that a person goes to, while editors are committed
    std::uint32_t rows_gone_ = 0;  ///< how many rows went where the target is, its own first; 0 if it is there
};

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
    /// No table: what owns table 1.
    static constexpr std::uint32_t kNoTable = 0xFFFFFFFF;
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

    /// Forgets all tables, the selection and, without a question, the editor.
    void Clear();
    /// A table, with the table in which its node lies. Its columns belong to a form, which names the stored widths;
    /// tables of one form share them. Describing a table again leaves columns and node as they are.
    void DescribeTable(std::uint32_t table, std::uint32_t style, std::uint32_t owner, std::string_view form);
    /// Appends a column to a table.
    void DescribeColumn(std::uint32_t table, std::string_view text, std::uint32_t mode, std::uint32_t width,
                        std::uint32_t least_width, std::uint32_t greatest_width);
    /// Says that a cell opens a table.
    void DescribeNodeCell(std::uint32_t table, std::uint32_t column, std::uint32_t sub_table);
    /// Forgets a table and those below it. Nothing without it.
    void DeleteTable(std::uint32_t table);
    void SetTableStyle(std::uint32_t table, std::uint32_t style);
    std::uint32_t TableStyle(std::uint32_t table) const;
    bool FindTableByHandle(std::uint32_t table) const { return tables_.contains(table); }
    /// Whatever the cells show may have changed. The selection stays at its table and row, cut to the last row shown;
    /// if its table is gone it goes to the row that held the node, or to none.
    void PrepareSheet();
    /// Rows that came or went since the last PrepareSheet, in the order in which they did: for the peer, which hears of
    /// them at the next PrepareSheet.
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
    /// The open editor goes without a question: what it edits is gone.
    void DropCellEditor();

    // Column widths: sheet_columns.cpp.

    const std::vector<TColumn> &Columns(std::uint32_t table) const;
    std::uint32_t ColumnWidth(std::uint32_t table, std::uint32_t column) const;
    /// Reads and writes the widths of all forms that were described, as values "FORM.COLUMN" below a path.
    void RegistryReadSettings(std::string_view path);
    void RegistryWriteSettings(std::string_view path) const;

    // What a peer reads.

    std::uint32_t RowCount(std::uint32_t table);
    /// The rows, and one more where the row after the last can be used to add.
    std::uint32_t ShownRowCount(std::uint32_t table);
    TCell ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    bool IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    /// The table that opens from a row, 0 without one.
    std::uint32_t SubTable(std::uint32_t table, std::uint32_t row);
    /// The table and the row in which a table's node lies; false for table 1 and unknown ones.
    bool FindNode(std::uint32_t table, std::uint32_t &owner, std::uint32_t &row);
    /// A closed table isn't shown. Tables are closed until somebody opens them.
    bool IsOpen(std::uint32_t table) const;

    // What a person does. Each but UserSizeColumn and UserOpen first commits an open editor, since it leaves the cell.

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
    /// The row that holds a table's node; 0 if it is gone.
    virtual std::uint32_t DS_FindNodeRow(std::uint32_t /*table*/) { return 0; }
    /// Adds a row without an editor; true if one was added.
    virtual bool DS_AppendRow(std::uint32_t /*table*/) { return false; }
    virtual bool DS_DeleteRowNumber(std::uint32_t /*table*/, std::uint32_t /*row*/) { return true; }
    virtual bool DS_IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column) = 0;
    /// Makes an editor view; true if the cell can be edited, with a null view if it can't at present.
    virtual bool DS_OpenCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *&editor) = 0;
    virtual void DS_CloseCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *editor,
                                    bool cancelled) = 0;
    /// True if the open editor's value may still be taken.
    virtual bool DS_CanCommitEditor() { return true; }

private:
    struct TForm {
        std::vector<std::uint32_t> widths;  ///< those that a person or the settings gave, 0 where neither did
    };
    struct TTable {
        std::uint32_t style = 0;
        std::uint32_t owner = kNoTable;
        std::uint32_t node_column = 0;
        bool open = false;
        std::string form;
        std::vector<TColumn> columns;
    };
    struct TRowChange {
        std::uint32_t table = 0;
        std::uint32_t row = 0;
        bool inserted = false;
    };

    void CloseEditor(bool cancelled);
    /// Moves the selection and remembers the rows that lead to its table.
    void Select(const TPosition &position);
    void RestoreSelection();
    const TTable *FindTable(std::uint32_t table) const;
    void TellRows();

    std::unordered_map<std::uint32_t, TTable> tables_;
    std::map<std::string, TForm, std::less<>> forms_;
    TPosition selection_;
    std::vector<TPosition> selection_path_;  ///< the nodes that lead to the selected table, innermost first
    CView *editor_ = nullptr;
    TPosition editor_position_;
    std::vector<TRowChange> row_changes_;
    bool closing_editor_ = false;
};

#include "platform/view/sheet_view.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t kRoot = 1;

}  // namespace

void CSheetView::Clear() {
    CloseEditor(true);
    tables_.clear();
    row_changes_.clear();
    ClearSelection();
    Changed(TViewChange::kTable);
}

bool CSheetView::DescribeTable(std::uint32_t table, std::uint32_t style, std::string_view form) {
    const auto [position, is_new] = tables_.try_emplace(table);
    if (is_new) {
        position->second.style = style;
        position->second.form = form;
    }
    return is_new;
}

void CSheetView::DeleteTable(std::uint32_t table) {
    if (tables_.erase(table) != 0) {
        Changed({.change = TViewChange::kTable, .table = table});
    }
}

std::uint32_t CSheetView::TableStyle(std::uint32_t table) {
    const auto found = tables_.find(table);
    return found != tables_.end() ? DS_GetTableStyle(table, found->second.style) : 0;
}

void CSheetView::PrepareSheet() {
    TellRows();
    RestoreSelection();
    Changed(TViewChange::kContent);
}

void CSheetView::NoteRows(std::uint32_t table, std::uint32_t row, bool inserted) {
    FollowTarget(table, row, inserted);
    if (Peer() != nullptr) {
        row_changes_.push_back({table, row, inserted});
    }
}

void CSheetView::TellRows() {
    for (const TRowChange &change : std::exchange(row_changes_, {})) {
        Changed({.change = change.inserted ? TViewChange::kRowsInserted : TViewChange::kRowsRemoved,
                 .table = change.table,
                 .first = change.row,
                 .count = 1});
    }
}

bool CSheetView::IsAlive(std::uint32_t table) {
    std::uint32_t owner = 0;
    std::uint32_t row = 0;
    return table == kRoot || DS_FindNode(table, owner, row);
}

/// The nodes that lead to the table may be in other rows now, even if the position is the same.
void CSheetView::Select(const TPosition &position) {
    selection_path_.clear();
    TPosition node;
    for (std::uint32_t table = position.table; table != 0 && DS_FindNode(table, node.table, node.row);
         table = node.table) {
        selection_path_.push_back(node);
    }
    if (position == selection_) {
        return;
    }
    const bool same_row = position.table == selection_.table && position.row == selection_.row;
    selection_ = position;
    Changed(
        {.change = TViewChange::kSelection, .table = position.table, .first = position.row, .column = position.column});
    DS_Notify(same_row ? kNotifyCell : kNotifyRow, position.table, position.row);
}

bool CSheetView::SelTableCell(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    if (row == 0 || row > ShownRowCount(table) || column == 0 || column > Columns(table).size()) {
        return false;
    }
    Select({table, row, column});
    return true;
}

void CSheetView::ClearSelection() {
    if (selection_.table != 0) {
        selection_ = {};
        selection_path_.clear();
        Changed(TViewChange::kSelection);
    }
}

void CSheetView::RestoreSelection() {
    TPosition position = selection_;
    for (const TPosition &node : selection_path_) {
        if (IsAlive(position.table)) {
            break;
        }
        position = {node.table, node.row, 1};
    }
    if (position.table == 0) {
        return;
    }
    position.row = std::min(position.row, ShownRowCount(position.table));
    if (!IsAlive(position.table) || position.row == 0) {
        ClearSelection();
        return;
    }
    position.column = std::min(position.column, static_cast<std::uint32_t>(Columns(position.table).size()));
    Select(position);
}

std::uint32_t CSheetView::RowCount(std::uint32_t table) { return DS_GetRowCount(table); }

std::uint32_t CSheetView::ShownRowCount(std::uint32_t table) {
    const std::uint32_t rows = DS_GetRowCount(table);
    return DS_IsCellEditable(table, rows + 1, 1) ? rows + 1 : rows;
}

CSheetView::TCell CSheetView::ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    TCell cell;
    DS_ReadCell(table, row, column, cell);
    return cell;
}

bool CSheetView::IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    return DS_IsCellEditable(table, row, column);
}

bool CSheetView::CanEdit(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    return DS_IsCellEditable(table, row, column) && DS_HasEditor(table, row, column);
}

std::uint32_t CSheetView::SubTable(std::uint32_t table, std::uint32_t row) { return DS_OpenNode(table, row); }

bool CSheetView::HasSubTable(std::uint32_t table, std::uint32_t row) { return DS_HasNode(table, row); }

bool CSheetView::FindNode(std::uint32_t table, std::uint32_t &owner, std::uint32_t &row) {
    return DS_FindNode(table, owner, row);
}

bool CSheetView::IsOpen(std::uint32_t table) const {
    const auto found = tables_.find(table);
    return table == kRoot || (found != tables_.end() && found->second.open);
}

void CSheetView::UserOpen(std::uint32_t table, bool open) {
    const auto found = tables_.find(table);
    if (found != tables_.end() && found->second.open != open) {
        found->second.open = open;
        Changed({.change = TViewChange::kVisible, .table = table});
    }
}

/// An editor's view ends with what it edits, whoever ends that.
void CSheetView::ChildForgotten(CView &child) {
    if (&child == editor_) {
        editor_ = nullptr;
        Changed(TViewChange::kEditor);
    }
}

void CSheetView::CloseEditor(bool cancelled) {
    if (CView *editor = editor_) {
        Forget(*editor);
        DS_CloseCellEditor(editor_position_.table, editor_position_.row, editor_position_.column, editor, cancelled);
    }
}

void CSheetView::HideCellEditor() { CloseEditor(!DS_CanCommitEditor()); }

/// An edit that is refused gives back the rows that it took, the last one first.
void CSheetView::FollowTarget(std::uint32_t table, std::uint32_t row, bool inserted) {
    if (table != target_.table || row > target_.row) {
        return;
    }
    if (row == target_.row && !inserted) {
        ++rows_gone_;
    } else if (row == target_.row && rows_gone_ != 0) {
        --rows_gone_;
    } else {
        target_.row = inserted ? target_.row + 1 : target_.row - 1;
    }
}

CSheetView::TPosition CSheetView::LeaveCellFor(const TPosition &target) {
    target_ = target;
    rows_gone_ = 0;
    HideCellEditor();
    if (neighbour_ != nullptr) {
        neighbour_->HideCellEditor();
    }
    const TPosition followed = std::exchange(target_, {});
    return rows_gone_ == 0 ? followed : TPosition();
}

bool CSheetView::UserSelect(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    const TPosition cell = LeaveCellFor({table, row, column});
    return SelTableCell(cell.table, cell.row, cell.column);
}

bool CSheetView::UserEdit(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    const TPosition cell = LeaveCellFor({table, row, column});
    return DS_IsCellEditable(cell.table, cell.row, cell.column) && SelTableCell(cell.table, cell.row, cell.column) &&
           OpenEditor(cell);
}

/// Opens the editor of a cell, or adds a row if the table does so at once.
bool CSheetView::OpenEditor(const TPosition &cell) {
    const std::uint32_t rows = DS_GetRowCount(cell.table);
    if (cell.row > rows && (TableStyle(cell.table) & kStyleAppendsAtOnce) != 0 && DS_AppendRow(cell.table)) {
        return DS_GetRowCount(cell.table) > rows;
    }
    CView *editor = nullptr;
    if (!DS_OpenCellEditor(cell.table, cell.row, cell.column, editor) || editor == nullptr) {
        return false;
    }
    editor_ = editor;
    editor_position_ = cell;
    Register(*editor);
    Changed({.change = TViewChange::kEditor, .table = cell.table, .first = cell.row, .column = cell.column});
    return true;
}

bool CSheetView::UserCommit() {
    if (editor_ == nullptr) {
        return false;
    }
    HideCellEditor();
    return true;
}

bool CSheetView::UserCancel() {
    if (editor_ == nullptr) {
        return false;
    }
    CloseEditor(true);
    return true;
}

#include "configurator/par_sheet_view.h"

#include "configurator/texts.h"

namespace kq_pdt {

namespace {

constexpr std::uint32_t kTableStyle = 0x4D;
constexpr std::uint32_t kColumnMode = 4;
constexpr std::uint32_t kLeastWidth = 40;
constexpr std::uint32_t kGreatestWidth = 146;
/// What a disabled cell shows, in the toolkit's symbol font.
constexpr std::string_view kDisabledSymbol = "\xB4";

}  // namespace

CParSheetView::CParSheetView(CParSheetData &data, CReportWindow &window, CSheetHistory &history)
    : data_(data), window_(window), history_(history), edit_(data), tables_(data, edit_) {
    Describe(CSheetTables::kRoot);
}

CParSheetView::~CParSheetView() = default;

void CParSheetView::Describe(std::uint32_t table) {
    std::vector<CSheetTables::TColumn> columns;
    const std::string form = tables_.DescribeColumns(table, columns);
    if (DescribeTable(table, kTableStyle, form)) {
        for (const CSheetTables::TColumn &column : columns) {
            DescribeColumn(table, column.text, kColumnMode, column.width, kLeastWidth, kGreatestWidth);
        }
    }
}

void CParSheetView::Rebuild() {
    Clear();
    Describe(CSheetTables::kRoot);
    PrepareSheet();
}

void CParSheetView::PrepareSheet() {
    CSheetView::PrepareSheet();
    UpdateButtons();
}

void CParSheetView::ReloadTable(std::uint32_t table) {
    DeleteTable(table);
    PrepareSheet();
}

void CParSheetView::UpdateButtons() {
    const TPosition &selection = Selection();
    const CSheetTables::TRow row = tables_.FindRow(selection.table, selection.row);
    bool can_delete = false;
    bool can_add = data_.CanAddMultiple();
    if (selection.table != 0 && selection.table != CSheetTables::kRoot) {
        can_delete = row.kind == CSheetTables::TRowKind::kKey && edit_.CanRemoveKey(*row.key);
        can_add =
            row.kind != CSheetTables::TRowKind::kKeyCell && row.section != nullptr && row.section->HasMultipleKeys();
    } else if (row.kind == CSheetTables::TRowKind::kSection) {
        can_delete = edit_.CanRemoveSection(*row.section);
    }
    window_.UpdateToolButtons(false, can_delete, can_add);
}

void CParSheetView::DS_Notify(std::uint32_t kind, std::uint32_t table, std::uint32_t row) {
    if (kind != kNotifyRow && kind != kNotifyCell) {
        return;
    }
    UpdateButtons();
    if (CKeyDef *key = tables_.FindRow(table, row).key) {
        key->SelectChannel();
    }
}

void CParSheetView::DeleteSelectedRow() {
    const CSheetTables::TRow row = tables_.FindRow(GetSelTable(), GetSelRow());
    const bool is_key = row.kind == CSheetTables::TRowKind::kKey && edit_.CanRemoveKey(*row.key);
    if (!is_key && (row.kind != CSheetTables::TRowKind::kSection || !edit_.CanRemoveSection(*row.section))) {
        HideCellEditor();
        return;
    }
    const TCellEditor *editor = edit_.Editor();
    deleting_ = editor != nullptr && (is_key ? editor->key == row.key : editor->section == row.section);
    HideCellEditor();
    deleting_ = false;
    // What the editor's value set off may have taken the row along.
    const CSheetTables::TRow left = tables_.FindRow(GetSelTable(), GetSelRow());
    if (left.section != row.section || left.key != row.key) {
        return;
    }
    const std::size_t section_index = data_.Instances().IndexOf(*row.section);
    const std::size_t key_index = is_key ? row.section->IndexOf(*row.key) : 0;
    const auto remove = [this, is_key, section_index, key_index] {
        CSectionDef &section = *data_.Instances().List()[section_index];
        if (is_key) {
            edit_.RemoveKey(*section.Keys()[key_index]);
        } else {
            edit_.RemoveSection(section);
        }
    };
    if (history_.Do(is_key ? texts::kStepDeleteKey : texts::kStepDeleteSection, remove)) {
        window_.PostCommand(cmCellCommitted, 0);
    }
}

std::uint32_t CParSheetView::DS_GetRowCount(std::uint32_t table) { return tables_.RowCount(table); }

void CParSheetView::DS_ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column, TCell &cell) {
    kq_base::CTextBuffer text;
    tables_.ReadCell(table, row, column, text, cell.disabled);
    cell.text = cell.disabled ? kDisabledSymbol : text.View();
}

std::uint32_t CParSheetView::DS_OpenNode(std::uint32_t table, std::uint32_t row) {
    const std::uint32_t sub_table = tables_.SubTable(tables_.FindRow(table, row));
    if (sub_table != 0) {
        Describe(sub_table);
    }
    return sub_table;
}

bool CParSheetView::DS_HasNode(std::uint32_t table, std::uint32_t row) {
    return CSheetTables::HasSubTable(tables_.FindRow(table, row));
}

bool CParSheetView::DS_FindNode(std::uint32_t table, std::uint32_t &owner, std::uint32_t &row) {
    return tables_.FindNode(table, owner, row);
}

std::uint32_t CParSheetView::DS_GetTableStyle(std::uint32_t table, std::uint32_t described) {
    return tables_.AppendsRows(table) ? described | kStyleAppendsAtOnce : described;
}

void CParSheetView::DS_ReadColumn(std::uint32_t table, std::uint32_t column, TColumn &described) {
    if (column > 1 && tables_.IsGridTable(table)) {
        described.text = tables_.GridColumnText(table, column);
    }
}

bool CParSheetView::DS_IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    return tables_.IsCellEditable(table, row, column);
}

bool CParSheetView::DS_HasEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    const CSheetTables::TRow found = tables_.FindRow(table, row);
    return found.kind == CSheetTables::TRowKind::kAdd ||
           (CSheetTables::HasCell(found, column) && CSheetView::DS_HasEditor(table, row, column));
}

std::string CParSheetView::CellBubble(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    return tables_.BubbleText(table, row, column);
}

void CParSheetView::ReceiveEvent(TEvent &event) {
    if (event.event_class == ecTimer && bubble_state_ == TBubbleState::kTimer) {
        ForgetTimer(*this);
        ShowBubble();
    } else if (event.Is(ecMouse) && bubble_state_ == TBubbleState::kShown) {
        HideBubble();
    }
    CSheetView::ReceiveEvent(event);
}

void CParSheetView::ShowBubble() {
    CView *editor = CellEditor();
    if (editor == nullptr) {
        bubble_state_ = TBubbleState::kNone;
        return;
    }
    bubble_state_ = TBubbleState::kShown;
    TRect area = ConvertToAbs(editor->Rect());
    area.y -= area.depth / 2;
    bubble_ = std::make_unique<CBubble>(bubble_text_);
    bubble_->NewRect(area);
    GetRoot().Register(*bubble_);
    BeginCaptureMouse();
}

void CParSheetView::HideBubble() {
    if (bubble_state_ == TBubbleState::kTimer) {
        ForgetTimer(*this);
    } else if (bubble_state_ == TBubbleState::kShown) {
        EndCaptureMouse();
        bubble_.reset();
        bubble_text_.clear();
    }
    bubble_state_ = TBubbleState::kNone;
}

}  // namespace kq_pdt

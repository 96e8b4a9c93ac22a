#include "configurator/node_names.h"
#include "configurator/par_sheet_view.h"
#include "configurator/texts.h"
#include "driver/channels/text_out.h"
#include "platform/view/text_view.h"

namespace kq_pdt {

namespace {

constexpr std::uint32_t kBubbleDelay = 1000;

}  // namespace

bool CParSheetView::DS_OpenCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *&editor) {
    if (!tables_.IsCellEditable(table, row, column)) {
        return false;
    }
    const CSheetTables::TRow found = tables_.FindRow(table, row);
    if (found.kind == CSheetTables::TRowKind::kAdd) {
        OpenAddList(table);
        editor = add_list_.get();
    } else if (const TCellEditor *opened =
                   edit_.OpenCell(*found.section, found.key, CSheetTables::EditedCell(found, column))) {
        editor = opened->control.get();
        opened_.emplace(*editor);
    }
    bubble_text_ = tables_.BubbleText(table, row, column);
    window_.ShowHint(bubble_text_);
    if (editor != nullptr && !bubble_text_.empty()) {
        bubble_state_ = TBubbleState::kTimer;
        RegisterTimer(*this, kBubbleDelay);
    }
    return true;
}

void CParSheetView::OpenAddList(std::uint32_t table) {
    add_list_ = std::make_unique<CComboBox>(CComboBox::TMode::kList);
    if (table == CSheetTables::kRoot) {
        for (CSectionDef *definition : tables_.AddableSections()) {
            add_list_->AppendEntry(NewNodeText(*definition));
        }
    } else {
        CSectionDef *section = nullptr;
        CKeyDef *key = nullptr;
        tables_.FindOwner(table, section, key);
        for (const CKeyDef *definition : CSheetTables::AddableKeys(*section)) {
            add_list_->AppendEntry(definition->Label().View());
        }
    }
    add_list_->Select(1);
}

/// The value may be taken unless what it belongs to is gone or going.
bool CParSheetView::DS_CanCommitEditor() { return !deleting_ && (add_list_ != nullptr || edit_.Editor() != nullptr); }

void CParSheetView::DS_CloseCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *editor,
                                       bool cancelled) {
    HideBubble();
    if (add_list_ != nullptr) {
        const std::unique_ptr<CComboBox> list = std::move(add_list_);
        if (!cancelled && AddRow(table, list->Selected())) {
            window_.PostCommand(cmCellCommitted, 0);
        }
        return;
    }
    if (cancelled) {
        edit_.CloseCell(false);
        return;
    }
    window_.PostCommand(cmCellCommitted, 0);
    CommitCell(table, row, column, *editor);
    PrepareSheet();
}

void CParSheetView::CommitCell(std::uint32_t table, std::uint32_t row, std::uint32_t column, const CView &editor) {
    const CSheetTables::TRow found = tables_.FindRow(table, row);
    const CEditorContent content(editor);
    const std::uint32_t cell = CSheetTables::EditedCell(found, column);
    const std::size_t section_index = data_.Instances().IndexOf(*found.section);
    const bool in_key = found.key != nullptr;
    const std::size_t key_index = in_key ? found.section->IndexOf(*found.key) : 0;
    // Who leaves a cell as it was took no step, unless the model makes something else of it.
    const bool same = content == opened_;
    const std::string before = same ? WrittenTexts() : std::string();
    const auto commit = [this, content, cell, section_index, in_key, key_index] {
        if (edit_.Editor() == nullptr) {
            CSectionDef &section = *data_.Instances().List()[section_index];
            CKeyDef *key = in_key ? section.Keys()[key_index].get() : nullptr;
            if (const TCellEditor *again = edit_.OpenCell(section, key, cell)) {
                content.PutInto(*again->control);
            }
        }
        edit_.CloseCell(true);
    };
    history_.Do(texts::kStepValue, commit, [this, same, &before] { return !same || WrittenTexts() != before; });
}

/// What a save would write now.
std::string CParSheetView::WrittenTexts() {
    CTextView written;
    written.SetHistoryKept(false);
    CTextOut out(&written);
    data_.WriteParText(out);
    data_.Ranges().WriteDmfText(out);
    return std::string(written.Text());
}

bool CParSheetView::DS_AppendRow(std::uint32_t table) {
    if (table != CSheetTables::kRoot || !tables_.CanAddRow(table)) {
        return false;
    }
    if (AddRow(table, 1)) {
        window_.PostCommand(cmCellCommitted, 0);
    }
    return true;
}

/// Choices count from 1 in the order of the list.
bool CParSheetView::AddRow(std::uint32_t table, std::size_t choice) {
    if (choice == 0) {
        return false;
    }
    if (table == CSheetTables::kRoot) {
        return history_.Do(texts::kStepAddSection, [this, choice] {
            const std::vector<CSectionDef *> addable = tables_.AddableSections();
            if (choice <= addable.size()) {
                edit_.AddSection(*addable[choice - 1]);
            }
        });
    }
    CSectionDef *section = nullptr;
    CKeyDef *key = nullptr;
    tables_.FindOwner(table, section, key);
    const std::size_t section_index = data_.Instances().IndexOf(*section);
    return history_.Do(texts::kStepAddKey, [this, section_index, choice] {
        CSectionDef &owner = *data_.Instances().List()[section_index];
        const std::vector<const CKeyDef *> addable = CSheetTables::AddableKeys(owner);
        if (choice <= addable.size()) {
            edit_.AddKey(owner, *addable[choice - 1]);
        }
    });
}

}  // namespace kq_pdt

// Taking steps back: on tab 1 those of the sheet, on tab 2 those of the text.

#include "configurator/texts.h"
#include "configurator/window_state.h"

namespace kq_pdt {

bool CWindowSession::Undo() {
    if (done_) {
        return false;
    }
    CommitCellEditors();
    if (OnText()) {
        const bool undone = ParView().UserUndo();
        UpdateUndoMenu(CConfiguratorWindow::kTextTab);
        return undone;
    }
    if (!history_.CanUndo()) {
        return false;
    }
    history_.Undo();
    ShowHistoryState();
    return true;
}

bool CWindowSession::Redo() {
    if (done_) {
        return false;
    }
    CommitCellEditors();
    if (OnText()) {
        const bool redone = ParView().UserRedo();
        UpdateUndoMenu(CConfiguratorWindow::kTextTab);
        return redone;
    }
    if (!history_.CanRedo()) {
        return false;
    }
    const bool redone = history_.Redo();
    ShowHistoryState();
    return redone;
}

/// What a step may change beside the model.
CSheetHistory::TAction CWindowSession::Snapshot() {
    return [this, sheet = sheet_.Selection(), channels = channels_.Selection(), rows = message_list_.Rows().size()] {
        RestoreMessages(rows);
        channels_.RebuildColumns();
        sheet_.ClearSelection();
        sheet_.SelTableCell(sheet.table, sheet.row, sheet.column);
        channels_.ClearSelection();
        channels_.SelTableCell(channels.table, channels.row, channels.column);
    };
}

void CWindowSession::ShowHistoryState() {
    ++changes_;
    modified_ = !history_.IsAtSaved();
    ParView().SetSaved(!modified_);
    channels_.RebuildColumns();
    RebuildSheets();
    UpdateUndoMenu(CConfiguratorWindow::kSheetTab);
}

std::string CWindowSession::UndoName() {
    if (OnSheet()) {
        return std::string(history_.UndoName());
    }
    return std::string(ParView().CanUndo() ? texts::kStepText : std::string_view());
}

std::string CWindowSession::RedoName() {
    if (OnSheet()) {
        return std::string(history_.RedoName());
    }
    return std::string(ParView().CanRedo() ? texts::kStepText : std::string_view());
}

void CWindowSession::UpdateUndoMenu(std::uint32_t tab) {
    const bool sheet = tab == CConfiguratorWindow::kSheetTab;
    const auto enable = [this](std::uint32_t command, bool enabled) {
        if (enabled) {
            menu_bar_.Enable(command);
        } else {
            menu_bar_.Disable(command);
        }
    };
    enable(cmUndo, sheet ? history_.CanUndo() : ParView().CanUndo());
    enable(cmRedo, sheet ? history_.CanRedo() : ParView().CanRedo());
}

}  // namespace kq_pdt

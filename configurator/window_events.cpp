// Commands of the user and of the model, and what the model reports to the window.

#include <algorithm>
#include <array>

#include "configurator/window_state.h"

namespace kq_pdt {

namespace {

/// Commands that leave the cell that is edited. Those that save or close see to it themselves; a deletion takes what is
/// edited along, or leaves it.
bool LeavesCell(std::uint32_t code) {
    constexpr std::array<std::uint32_t, 5> kCodes = {cmAdd, cmSearchDevices, cmDriverHelp, cmRepairDmf,
                                                     CListBox::kRowChosen};
    return std::find(kCodes.begin(), kCodes.end(), code) != kCodes.end();
}

}  // namespace

bool CWindowSession::HandleEvent(TEvent &event) {
    if (done_) {
        return true;
    }
    if (event.Is(ecKeyDown | ecKey) && event.code == CConfiguratorWindow::kNextMessageKey) {
        CommitCellEditors();
        NextMessage();
    } else if (event.Is(ecCommand | ecNotice)) {
        if (!HandleCommand(event)) {
            // The host was told that the window is closed, and may have deleted it.
            return false;
        }
    } else if (event.event_class == ecMouse) {
        HideBubble();
    }
    UpdateUndoMenu(tabs_.ActiveTabIndex());
    return true;
}

bool CWindowSession::HandleCommand(TEvent &event) {
    if (LeavesCell(event.code)) {
        CommitCellEditors();
    }
    switch (event.code) {
        case cmClose:
            HandleCloseRequest();
            StopEvent(event);
            return true;
        case kCloseLoop:
            return HandleCloseLoop(event);
        case cmSave:
        case cmApply:
            SaveSession(event.code);
            StopEvent(event);
            return true;
        case cmDelete:
            channels_.HideCellEditor();
            if (OnSheet()) {
                sheet_.DeleteSelectedRow();
            }
            StopEvent(event);
            return true;
        case cmAdd:
            StopEvent(event);
            return true;
        case cmSearchDevices:
            SearchDevices();
            return true;
        case cmDriverHelp:
            if (opening_.callback != nullptr) {
                opening_.callback->ShowDriverHelp(kq_base::TText::kBound, opening_.name.Characters());
            }
            return true;
        case cmRepairDmf:
            if (OnText()) {
                RepairDmfText();
            }
            return true;
        case cmUndo:
            Undo();
            return true;
        case cmRedo:
            Redo();
            return true;
        case CTextView::kStepsChanged:
            return true;
        default:
            return HandleReport(event);
    }
}

bool CWindowSession::HandleReport(TEvent &event) {
    switch (event.code) {
        case cmRebuildSheets:
            StopEvent(event);
            RebuildSheets();
            break;
        case cmRebuildTable:
            sheet_.ReloadTable(event.parameter);
            StopEvent(event);
            break;
        case cmCellCommitted:
            NoteCommitted();
            break;
        case cmKeywordsChanged:
            SetColouredIds();
            break;
        case CListBox::kRowChosen:
            ChooseMessage();
            break;
        default:
            if (OnText()) {
                ParView().ReceiveEvent(event);
            }
    }
    return true;
}

void CWindowSession::HandleCloseRequest() {
    if (!closing_ && !IsBusy() && QueryClose()) {
        closing_ = true;
        MakeEvent(window_, ecCommand, kCloseLoop);
    }
}

bool CWindowSession::HandleCloseLoop(TEvent &event) {
    if (!closing_) {
        StopEvent(event);
        return true;
    }
    if (opening_.callback == nullptr) {
        return true;
    }
    opening_.callback->NotifyClosed();
    return false;
}

void CWindowSession::HideBubble() {
    // One that is only about to come still comes.
    if (sheet_.Bubble() != nullptr) {
        sheet_.HideBubble();
    }
}

bool CWindowSession::IsBusy() const { return searching_ || IsMessageBoxShown(); }

void CWindowSession::WindowShown() {
    if (maximize_pending_) {
        maximize_pending_ = false;
        window_.Maximize();
    }
}

void CWindowSession::RebuildSheets() {
    sheet_.PrepareSheet();
    channels_.PrepareSheet();
}

void CWindowSession::CommitCellEditors() {
    sheet_.HideCellEditor();
    channels_.HideCellEditor();
}

void CWindowSession::NoteCommitted() {
    ++changes_;
    modified_ = true;
    ParView().SetSaved(false);
}

bool CWindowSession::Find(std::string_view text, bool backwards) {
    CommitCellEditors();
    return OnSheet() && sheet_.FindText(text, backwards);
}

bool CWindowSession::NextProblem() {
    CommitCellEditors();
    return OnSheet() && sheet_.SelectNextProblem();
}

// Reports of the model.

void CWindowSession::SelectChannelRow(std::uint32_t row) { channels_.SelTableRow(CChannelsView::kTable, row); }

void CWindowSession::ChannelsChanged() { channels_.RebuildColumns(); }

void CWindowSession::UpdateToolButtons(bool insert, bool remove, bool /*add*/) {
    sheet_tools_.Enable(cmInsert, insert);
    sheet_tools_.Enable(cmDelete, remove);
    sheet_tools_.Enable(cmAdd, false);
}

void CWindowSession::ShowHint(std::string_view text) { status_line_.ShowHint(text); }

void CWindowSession::PostCommand(TWindowCommand command, std::uint32_t parameter) {
    // What is committed counts at once: whoever saves or closes next has to know.
    if (command == cmCellCommitted) {
        NoteCommitted();
        MakeEvent(window_, ecNotice, CTextView::kStepsChanged);
    } else {
        MakeEvent(window_, ecCommand, command, parameter);
    }
}

}  // namespace kq_pdt

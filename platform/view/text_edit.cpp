// A person's side of the text view: edits, undo and redo, the tool box.

#include "platform/base/code_page.h"
#include "platform/view/text_history.h"
#include "platform/view/text_lines.h"
#include "platform/view/text_view.h"
#include "platform/view/tool_box.h"

namespace {

using namespace kq_base::literals;

constexpr std::uint32_t kGap = 8;

}  // namespace

void CTextView::ReplacePiece(std::size_t offset, std::size_t removed, std::string_view inserted) {
    const std::size_t inserted_size = inserted.size();
    lines_->Replace(text_, offset, removed, inserted);
    text_.replace(offset, removed, inserted);
    const bool selected = anchor_ != cursor_;
    anchor_ = cursor_ = offset + inserted_size;
    Changed({.change = TViewChange::kText, .first = offset, .removed = removed, .inserted = inserted_size});
    Changed(TViewChange::kCursor);
    if (selected) {
        Changed(TViewChange::kSelection);
    }
    UpdateTools();
}

bool CTextView::UserReplace(std::uint32_t line, std::uint32_t column, std::uint32_t count, std::string_view text) {
    std::size_t offset = 0;
    return FindOffset(line, column, offset) && UserReplaceAt(offset, count, text);
}

bool CTextView::UserReplaceAt(std::size_t offset, std::size_t length, std::string_view text, bool typed) {
    if (!IsEnabled() || offset > text_.size() || length > text_.size() - offset ||
        text.size() > MaxSize() - (text_.size() - length)) {
        return false;
    }
    if (Text().substr(offset, length) == text) {
        return UserSelect(offset + length, offset + length);
    }
    FinishStep();
    history_->NoteEdit(text_, offset, length, text, typed);
    saved_ = false;
    ReplacePiece(offset, length, text);
    return true;
}

bool CTextView::UserReplaceSelection(std::string_view text) {
    return UserReplaceAt(SelectionStart(), SelectionLength(), text);
}

bool CTextView::UserSelect(std::size_t anchor, std::size_t cursor) {
    if (!IsEnabled() || anchor > text_.size() || cursor > text_.size()) {
        return false;
    }
    MoveCursor(anchor, cursor);
    return true;
}

bool CTextView::UserUndo() {
    if (!IsEnabled()) {
        return false;
    }
    FinishStep();
    if (!history_->CanStepBack()) {
        return false;
    }
    const CTextHistory::TChange change = history_->StepBack(text_);
    saved_ = history_->IsAtSaved();
    ReplacePiece(change.offset, change.removed, change.inserted);
    return true;
}

bool CTextView::UserRedo() {
    if (!IsEnabled()) {
        return false;
    }
    FinishStep();
    if (!history_->CanStepForward()) {
        return false;
    }
    const CTextHistory::TChange change = history_->StepForward(text_);
    saved_ = history_->IsAtSaved();
    ReplacePiece(change.offset, change.removed, change.inserted);
    return true;
}

bool CTextView::CanUndo() const { return history_->CanStepBack() || history_->IsProgramStepOpen(text_); }

bool CTextView::CanRedo() const { return history_->CanStepForward() && !history_->IsProgramStepOpen(text_); }

void CTextView::ReceiveEvent(TEvent &event) {
    if (!event.Is(ecCommand | ecNotice)) {
        return;
    }
    if (event.code == cmTextUndo) {
        UserUndo();
        StopEvent(event);
    } else if (event.code == cmTextRedo) {
        UserRedo();
        StopEvent(event);
    }
}

CToolBox &CTextView::ToolBox() {
    if (tool_box_ == nullptr) {
        tool_box_ = std::make_unique<CToolBox>();
        tool_box_->AddButton("Nový"_cp, cmTextNew, icTextNew);
        tool_box_->AddButton("Otevřít"_cp, cmTextOpen, icTextOpen);
        tool_box_->AddButton("Uložit"_cp, cmTextSave, icTextSave);
        tool_box_->AddGap(kGap);
        tool_box_->AddButton("Zpět"_cp, cmTextUndo, icTextUndo);
        tool_box_->AddButton("Znovu"_cp, cmTextRedo, icTextRedo);
        tool_box_->AddGap(kGap);
        tool_box_->AddButton("Najít"_cp, cmTextFind, icTextFind);
        tool_box_->AddButton("Nahradit"_cp, cmTextReplace, icTextReplace);
        tool_box_->SetReceiver(this);
        UpdateTools();
    }
    return *tool_box_;
}

void CTextView::EndToolBox() { tool_box_.reset(); }

void CTextView::UpdateTools() {
    const bool undo = CanUndo();
    const bool redo = CanRedo();
    if (tool_box_ != nullptr) {
        tool_box_->Enable(cmTextUndo, undo);
        tool_box_->Enable(cmTextRedo, redo);
    }
    if (step_receiver_ != nullptr && (undo != told_undo_ || redo != told_redo_)) {
        told_undo_ = undo;
        told_redo_ = redo;
        MakeEvent(*step_receiver_, ecNotice, kStepsChanged);
    }
}

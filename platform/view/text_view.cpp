// Where lines begin is found out when somebody asks for it: a text that is only written never pays for it.

#include "platform/view/text_view.h"

#include <algorithm>
#include <utility>

#include "platform/base/files.h"
#include "platform/view/text_history.h"
#include "platform/view/text_lines.h"
#include "platform/view/tool_box.h"

CTextView::CTextView() : lines_(std::make_unique<CTextLines>()), history_(std::make_unique<CTextHistory>()) {}

CTextView::~CTextView() = default;

std::size_t CTextView::MaxSize() {
    static const std::size_t kBound = std::min<std::size_t>(std::string().max_size(), CTextView::kMaxSize);
    return kBound;
}

void CTextView::InsertText(std::string_view text) {
    text = text.substr(0, MaxSize() - text_.size());
    if (text.empty()) {
        return;
    }
    const bool step_begins = history_->NoteAppend(text_.size());
    text_.append(text);
    anchor_ = cursor_ = text_.size();
    saved_ = false;
    if (step_begins) {
        UpdateTools();
    }
    Changed(TViewChange::kContent);
}

void CTextView::SetText(std::string_view text) {
    text = text.substr(0, MaxSize());
    if (text == text_) {
        if (cursor_ != 0 || anchor_ != 0) {
            MoveCursor(0, 0);
        }
        return;
    }
    // The new text may lie in the old one.
    std::string fresh(text);
    history_->NoteReplacement(std::exchange(text_, std::move(fresh)));
    lines_->Clear();
    anchor_ = cursor_ = 0;
    saved_ = false;
    UpdateTools();
    Changed(TViewChange::kContent);
}

void CTextView::FinishStep() {
    history_->FinishProgramStep(text_);
    UpdateTools();
}

void CTextView::SetHistoryKept(bool kept) {
    history_->Keep(kept);
    if (saved_) {
        history_->MarkSaved();
    }
    UpdateTools();
}

void CTextView::GetTextBlock(const char *&data, std::uint32_t &size) const {
    data = text_.data();
    size = static_cast<std::uint32_t>(text_.size());
}

bool CTextView::LoadFromFile(std::string_view path, std::string &error) {
    std::string content;
    if (!kq_base::CDisk::Current().Read(path, content, error)) {
        return false;
    }
    FinishStep();
    const bool begins = text_.empty() && !history_->CanStepBack();
    history_->NoteReplacement(std::exchange(text_, std::move(content)));
    if (begins) {
        history_->Clear();
    }
    lines_->Clear();
    anchor_ = cursor_ = 0;
    SetSaved(true);
    Changed(TViewChange::kContent);
    return true;
}

bool CTextView::ImportFile(std::string_view path, std::string &error) {
    std::string content;
    if (!kq_base::CDisk::Current().Read(path, content, error)) {
        return false;
    }
    FinishStep();
    SetText(content);
    FinishStep();
    saved_ = true;
    return true;
}

bool CTextView::SaveToFile(std::string_view path, std::string &error) {
    if (!kq_base::CDisk::Current().Save(path, text_, error)) {
        return false;
    }
    SetSaved(true);
    return true;
}

void CTextView::SetSaved(bool saved) {
    saved_ = saved;
    if (saved) {
        FinishStep();
        history_->MarkSaved();
    }
}

void CTextView::SetLineIndex(std::uint32_t line, std::uint32_t column) {
    const std::size_t found = std::min<std::size_t>(line, lines_->Count(text_) - 1);
    const std::size_t offset =
        lines_->StartOf(text_, found) + std::min<std::size_t>(column, lines_->LengthOf(text_, found));
    MoveCursor(offset, offset);
}

void CTextView::MoveCursor(std::size_t anchor, std::size_t cursor) {
    const bool selects = anchor_ != cursor_ || anchor != cursor;
    anchor_ = anchor;
    cursor_ = cursor;
    Changed(TViewChange::kCursor);
    if (selects) {
        Changed(TViewChange::kSelection);
    }
}

std::uint32_t CTextView::CursorLine() const { return static_cast<std::uint32_t>(lines_->LineOf(text_, cursor_)); }

std::uint32_t CTextView::CursorColumn() const {
    return static_cast<std::uint32_t>(cursor_ - lines_->StartOf(text_, lines_->LineOf(text_, cursor_)));
}

std::size_t CTextView::SelectionStart() const { return std::min(anchor_, cursor_); }

std::size_t CTextView::SelectionLength() const { return std::max(anchor_, cursor_) - SelectionStart(); }

std::size_t CTextView::LineCount() const { return lines_->Count(text_); }

bool CTextView::FindOffset(std::uint32_t line, std::uint32_t column, std::size_t &offset) const {
    if (line == 0 || line > lines_->Count(text_) || column == 0 || column - 1 > lines_->LengthOf(text_, line - 1)) {
        return false;
    }
    offset = lines_->StartOf(text_, line - 1) + column - 1;
    return true;
}

void CTextView::AddColoredId(std::string_view name, std::uint32_t color) {
    colored_ids_.push_back({kq_base::TText(name), color});
    Changed(TViewChange::kColors);
}

void CTextView::ClearColoredIdList() {
    colored_ids_.clear();
    Changed(TViewChange::kColors);
}

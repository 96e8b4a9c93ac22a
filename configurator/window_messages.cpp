// The message list: its rows and the way from a row to the text.

#include <algorithm>

#include "configurator/window_state.h"

namespace kq_pdt {

void CWindowSession::AddWarning(std::string_view text1, std::string_view text2, std::uint32_t line) {
    CConfiguratorSession::AddWarning(text1, text2, line);
    RowAdded();
}

void CWindowSession::AddError(std::string_view text1, std::string_view text2, std::uint32_t line) {
    CConfiguratorSession::AddError(text1, text2, line);
    RowAdded();
}

void CWindowSession::AddErrorAt(std::string_view text1, std::string_view text2, std::uint32_t line,
                                std::uint32_t column) {
    CConfiguratorSession::AddErrorAt(text1, text2, line, column);
    RowAdded();
}

void CWindowSession::ShowRow(const CMessageList::TRow &row) {
    message_list_.AppendRow(row.icon == CMessageList::TIcon::kError ? icError : icNotice, row.text.View());
}

void CWindowSession::RowAdded() {
    ShowRow(Messages().Rows().back());
    if (!reporting_) {
        ShowMessageList(true);
    }
}

void CWindowSession::ClearMessages() {
    CConfiguratorSession::ClearMessages();
    message_list_.Clear();
    current_message_ = 0;
}

void CWindowSession::RestoreMessages(std::size_t rows) {
    if (rows >= Messages().Rows().size()) {
        return;
    }
    CutMessages(rows);
    message_list_.Clear();
    for (const CMessageList::TRow &row : Messages().Rows()) {
        ShowRow(row);
    }
    current_message_ = std::min(current_message_, rows);
    message_list_.SelectRow(current_message_);
}

void CWindowSession::ShowMessageList(bool shown) {
    window_splitter_.ShowPane(CSplitterPane::TPane::kLower, shown);
    if (shown) {
        window_splitter_.PaintView();
        // The list is worth nothing in a pane that was squeezed to the foot.
        window_splitter_.SetSplitPosition(
            std::min(window_splitter_.SplitPosition(), window_.ClientRect().depth * 4 / 5));
    }
}

void CWindowSession::NextMessage() {
    const std::size_t count = Messages().Records().size();
    current_message_ = current_message_ < count ? current_message_ + 1 : std::min<std::size_t>(count, 1);
    message_list_.SelectRow(current_message_);
    message_list_.PaintView();
    GoToMessage();
}

void CWindowSession::ChooseMessage() {
    current_message_ = message_list_.SelectedRow();
    GoToMessage();
    // On the other tab the text isn't to be seen, so it couldn't take the keyboard.
    if (OnText()) {
        ParView().Select();
    }
}

void CWindowSession::GoToMessage() {
    if (current_message_ == 0 || current_message_ > Messages().Records().size() || !OnText()) {
        return;
    }
    const CMessageList::TMessageRecord &record = Messages().Records()[current_message_ - 1];
    if (record.HasPosition()) {
        ParView().SetLineIndex(record.line - 1, record.column == 0 ? 0 : record.column - 1);
        ParView().FitCursor();
    }
}

}  // namespace kq_pdt

#include "configurator/kq_pdt.h"
#include "configurator/window_state.h"

CConfiguratorWindow::CConfiguratorWindow() : state_(std::make_unique<TState>(*this)) {}

CConfiguratorWindow::~CConfiguratorWindow() { CConfiguratorWindow::Done(); }

std::uint32_t CConfiguratorWindow::Exec() {
    // Other codes 5, such as those of a window system, aren't the end as long as closing isn't confirmed.
    for (;;) {
        const std::uint32_t code = CWindow::Exec();
        if (code == kEndLoop || (code == kCloseLoop && state_->session.IsClosing())) {
            return code;
        }
    }
}

void CConfiguratorWindow::SetVisible(bool visible) {
    CWindow::SetVisible(visible);
    if (visible) {
        state_->session.WindowShown();
    }
}

void CConfiguratorWindow::SetSelect(bool selected) {
    state_->session.HideBubble();
    CWindow::SetSelect(selected);
}

void CConfiguratorWindow::ReceiveEvent(TEvent &event) {
    if (state_->session.HandleEvent(event)) {
        CWindow::ReceiveEvent(event);
    }
}

void CConfiguratorWindow::Done() {
    if (!state_->session.IsDone()) {
        state_->session.Done();
        kq_pdt::WindowEnded(*this);
        CWindow::Done();
    }
}

CTab &CConfiguratorWindow::Tabs() { return state_->session.Tabs(); }

CSheetView &CConfiguratorWindow::Sheet() { return state_->session.Sheet(); }

CSheetView &CConfiguratorWindow::Channels() { return state_->session.Channels(); }

CTextView &CConfiguratorWindow::ParView() { return state_->session.ParView(); }

const CTextView &CConfiguratorWindow::DmfView() const { return state_->session.DmfView(); }

CListBox &CConfiguratorWindow::Messages() { return state_->session.MessageList(); }

CSplitterPane &CConfiguratorWindow::WindowSplitter() { return state_->session.WindowSplitter(); }

CSplitterPane &CConfiguratorWindow::SheetSplitter() { return state_->session.SheetSplitter(); }

CToolBox &CConfiguratorWindow::SheetToolBox() { return state_->session.SheetToolBox(); }

CToolBox &CConfiguratorWindow::TextToolBox() { return state_->session.ParView().ToolBox(); }

std::string_view CConfiguratorWindow::StatusText() const { return state_->session.StatusLine().Text(); }

const CBubble *CConfiguratorWindow::Bubble() const { return state_->session.Sheet().Bubble(); }

CConfiguratorWindow::TMessagePosition CConfiguratorWindow::MessagePosition(std::size_t row) const {
    const auto &records = state_->session.Messages().Records();
    if (row == 0 || row > records.size() || !records[row - 1].HasPosition()) {
        return {};
    }
    return {records[row - 1].line, records[row - 1].column};
}

std::size_t CConfiguratorWindow::CurrentMessage() const { return state_->session.CurrentMessage(); }

bool CConfiguratorWindow::IsModified() const { return state_->session.IsModified(); }

bool CConfiguratorWindow::IsHighlighting() const { return state_->session.Channels().IsHighlighting(); }

std::string_view CConfiguratorWindow::ParPath() const { return state_->session.Opening().par_path.View(); }

std::string_view CConfiguratorWindow::DmfPath() const { return state_->session.Opening().dmf_path.View(); }

std::string_view CConfiguratorWindow::PdtPath() const { return state_->session.Opening().pdt_path.View(); }

std::string CConfiguratorWindow::CellBubble(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    return state_->session.Sheet().CellBubble(table, row, column);
}

std::string CConfiguratorWindow::CellReason(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    return state_->session.Sheet().CellReason(table, row, column);
}

std::string CConfiguratorWindow::RowProblem(std::uint32_t table, std::uint32_t row) {
    return state_->session.Sheet().RowProblem(table, row);
}

std::string CConfiguratorWindow::FirstProblem() { return state_->session.Sheet().FirstProblem(); }

CConfiguratorWindow::TTexts CConfiguratorWindow::TextsToSave() { return state_->session.TextsToSave(); }

std::uint64_t CConfiguratorWindow::ChangeCount() const { return state_->session.ChangeCount(); }

bool CConfiguratorWindow::UserUndo() { return state_->session.Undo(); }

bool CConfiguratorWindow::UserRedo() { return state_->session.Redo(); }

std::string CConfiguratorWindow::UndoName() const { return state_->session.UndoName(); }

std::string CConfiguratorWindow::RedoName() const { return state_->session.RedoName(); }

void CConfiguratorWindow::UserReplaceTexts(const TTexts &texts) { state_->session.ReplaceTexts(texts); }

bool CConfiguratorWindow::UserFind(std::string_view text, bool backwards) {
    return state_->session.Find(text, backwards);
}

bool CConfiguratorWindow::UserNextProblem() { return state_->session.NextProblem(); }

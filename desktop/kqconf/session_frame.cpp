#include "desktop/kqconf/session_frame.h"

#include <QAction>
#include <QMainWindow>
#include <QStatusBar>
#include <QTabWidget>

#include "desktop/kqconf/find_bar.h"
#include "desktop/kqconf/pane_sizes.h"
#include "desktop/peers/menu_peer.h"
#include "desktop/peers/text.h"
#include "desktop/peers/text_peer.h"
#include "desktop/peers/window_peer.h"

namespace kq_desktop {

CSessionFrame::CSessionFrame(CConfiguratorWindow &window, const TDriverFiles &files, std::uint32_t language)
    : window_(window),
      language_(language),
      notices_(std::make_unique<CNotices>(*static_cast<CWindowPeer *>(CQtPeer::Of(&window))->Notices())) {
    safety_ = std::make_unique<CSafetyNet>(window, files, *notices_, *MainWindow());
    AddFindBar();
    AddMenus();
    AddKeys();
    RestorePaneSizes(window);
    Refresh();
}

CSessionFrame::~CSessionFrame() { StorePaneSizes(window_); }

QMainWindow *CSessionFrame::MainWindow() const {
    return static_cast<CWindowPeer *>(CQtPeer::Of(&window_))->MainWindow();
}

void CSessionFrame::LeaveCell() {
    window_.Sheet().UserCommit();
    window_.Channels().UserCommit();
}

bool CSessionFrame::HandleCommand(std::uint32_t command) {
    switch (command) {
        case cmTextFind:
            OpenFind(false);
            return true;
        case cmTextReplace:
            OpenFind(true);
            return true;
        case cmSave:
        case cmApply:
            LeaveCell();
            ShowProblems();
            return !safety_->MayOverwrite();
        default:
            return false;
    }
}

void CSessionFrame::ShowMessages() {
    const auto &rows = window_.Messages().Rows();
    const std::string last(rows.empty() ? std::string_view() : rows.back().text.View());
    if (rows.size() != messages_ || last != last_message_) {
        messages_ = rows.size();
        last_message_ = last;
        static_cast<CTextPeer *>(CQtPeer::Of(&window_.ParView()))->ShowMarks();
    }
}

void CSessionFrame::ShowSteps() {
    const auto *menus = static_cast<CMenuPeer *>(CQtPeer::Of(window_.MenuBar()));
    const auto name = [menus](std::uint32_t command, const QString &text, const std::string &step) {
        if (QAction *action = menus->ActionOf(command)) {
            const QString shown = step.empty() ? text : QStringLiteral("%1: %2").arg(text, ToQt(step).toLower());
            if (action->text() != shown) {
                action->setText(shown);
            }
        }
    };
    name(cmUndo, QStringLiteral("&Zpět"), window_.UndoName());
    name(cmRedo, QStringLiteral("Z&novu"), window_.RedoName());
}

void CSessionFrame::ShowTabTips() {
    auto *tabs = static_cast<QTabWidget *>(CQtPeer::Of(&window_.Tabs())->Widget());
    constexpr int kSheet = 0;
    if (window_.Tabs().Tabs().front().enabled || !tabs->tabToolTip(kSheet).isEmpty()) {
        return;
    }
    QStringList reason;
    const auto &rows = window_.Messages().Rows();
    for (std::size_t row = 0; row < rows.size() && row < 2; ++row) {
        reason.append(ToQt(rows[row].text.View()));
    }
    tabs->setTabToolTip(kSheet, reason.join(QLatin1Char('\n')));
}

/// A row that wouldn't read back is said when the sheet is left or saved, without stopping anybody.
void CSessionFrame::ShowProblems() {
    const QString key = QStringLiteral("problems");
    const std::string problem = OnText() ? std::string() : window_.FirstProblem();
    if (problem.empty()) {
        notices_->Hide(key);
        return;
    }
    notices_->Show(
        key,
        QStringLiteral("Některé řádky se ze souboru nepřečtou tak, jak jsou v tabulce. První: %1").arg(ToQt(problem)),
        {{QStringLiteral("&Přejít na první"), [this] {
              window_.Tabs().UserActivate(CConfiguratorWindow::kSheetTab);
              window_.Sheet().ClearSelection();
              window_.UserNextProblem();
              static_cast<CView &>(window_.Sheet()).Select();
          }}});
}

/// Why the selected cell can't be used, in place of the status line's own text.
void CSessionFrame::ShowReason() {
    const CSheetView::TPosition &cell = window_.Sheet().Selection();
    const bool disabled =
        !OnText() && cell.table != 0 && window_.Sheet().ReadCell(cell.table, cell.row, cell.column).disabled;
    const QString reason = disabled ? ToQt(window_.CellReason(cell.table, cell.row, cell.column)) : QString();
    if (reason != reason_) {
        reason_ = reason;
        reason.isEmpty() ? MainWindow()->statusBar()->clearMessage() : MainWindow()->statusBar()->showMessage(reason);
    }
}

void CSessionFrame::Refresh() {
    if (CQtPeer::Of(&window_) == nullptr || CQtPeer::Of(&window_.ParView()) == nullptr) {
        return;
    }
    safety_->Refresh();
    MainWindow()->setWindowModified(safety_->HasUnsavedWork());
    ShowMessages();
    ShowSteps();
    ShowTabTips();
    ShowReason();
    if (tab_ != window_.Tabs().ActiveTabIndex()) {
        tab_ = window_.Tabs().ActiveTabIndex();
        (tab_ == CConfiguratorWindow::kTextTab ? static_cast<CView &>(window_.ParView()) : window_.Sheet()).Select();
    }
}

}  // namespace kq_desktop

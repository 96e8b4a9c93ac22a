#include "desktop/kqconf/session_frame.h"

#include <QAction>
#include <QMainWindow>
#include <QShortcut>
#include <QTabWidget>

#include "desktop/kqconf/commands.h"
#include "desktop/peers/menu_peer.h"
#include "desktop/peers/text.h"
#include "desktop/peers/text_peer.h"
#include "desktop/peers/window_peer.h"

namespace kq_desktop {

CSessionFrame::CSessionFrame(CConfiguratorWindow &window) : window_(window) {
    AddKeys();
    Refresh();
}

QMainWindow *CSessionFrame::MainWindow() const {
    return static_cast<CWindowPeer *>(CQtPeer::Of(&window_))->MainWindow();
}

bool CSessionFrame::HasUnsavedWork() const {
    const bool par = OnText() ? !window_.ParView().IsSaved() : window_.IsModified();
    return par || !window_.DmfView().IsSaved();
}

void CSessionFrame::AddKeys() {
    const auto add = [this](const QKeySequence &key, auto action) {
        auto *shortcut = new QShortcut(key, MainWindow());
        QObject::connect(shortcut, &QShortcut::activated, MainWindow(), action);
    };
    add(QKeySequence(Qt::Key_F8), [this] { GoToNext(); });
    add(QKeySequence(Qt::SHIFT | Qt::Key_F8), [this] { GoToPrevious(); });
    add(QKeySequence(Qt::CTRL | Qt::Key_1), [this] { window_.Tabs().UserActivate(CConfiguratorWindow::kSheetTab); });
    add(QKeySequence(Qt::CTRL | Qt::Key_2), [this] { window_.Tabs().UserActivate(CConfiguratorWindow::kTextTab); });
    // Deleting a row is a command of the tool box alone.
    add(QKeySequence(Qt::Key_Delete), [this] {
        if (!OnText()) {
            window_.SheetToolBox().UserPress(cmDelete);
        }
    });
}

void CSessionFrame::GoToNext() {
    if (OnText()) {
        MakeEvent(window_, ecKeyDown, CConfiguratorWindow::kNextMessageKey);
    } else {
        window_.UserNextProblem();
    }
}

void CSessionFrame::GoToPrevious() {
    const std::size_t count = window_.Messages().Rows().size();
    if (OnText() && count != 0) {
        const std::size_t current = window_.CurrentMessage();
        window_.Messages().UserChoose(current > 1 ? current - 1 : count);
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
    QString reason;
    if (!window_.Tabs().Tabs().front().enabled) {
        const auto &rows = window_.Messages().Rows();
        for (std::size_t row = 0; row < rows.size() && row < 2; ++row) {
            reason += (row == 0 ? QString() : QStringLiteral("\n")) + ToQt(rows[row].text.View());
        }
        if (tabs->tabToolTip(kSheet).isEmpty()) {
            tabs->setTabToolTip(kSheet, reason);
        }
    }
}

void CSessionFrame::Refresh() {
    if (CQtPeer::Of(&window_) == nullptr || CQtPeer::Of(&window_.ParView()) == nullptr) {
        return;
    }
    MainWindow()->setWindowModified(HasUnsavedWork());
    ShowMessages();
    ShowSteps();
    ShowTabTips();
}

}  // namespace kq_desktop

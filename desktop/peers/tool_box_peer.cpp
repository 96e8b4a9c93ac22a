#include "desktop/peers/tool_box_peer.h"

#include <QAction>
#include <QToolBar>
#include <QToolButton>

#include "desktop/peers/advice.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

CToolBoxPeer::CToolBoxPeer(CToolBox &view, CPeerAdvice &advice) : CQtPeer(advice), view_(view) {
    auto *bar = new QToolBar;
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setIconSize(QSize(20, 20));
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    if (IsInDialog()) {
        bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
    // What comes up where the window is too narrow for all buttons.
    if (auto *more = bar->findChild<QToolButton *>(QStringLiteral("qt_toolbar_ext_button"))) {
        more->setAccessibleName(QStringLiteral("Další nástroje"));
    }
    SetWidget(bar);
    Fill();
}

QToolBar *CToolBoxPeer::Bar() const { return static_cast<QToolBar *>(Widget()); }

bool CToolBoxPeer::IsInDialog() const { return view_.Parent() != nullptr && view_.Parent()->ModalOwner() != nullptr; }

void CToolBoxPeer::Fill() {
    Bar()->clear();
    for (const CToolBox::TItem &item : view_.Items()) {
        if (item.IsGap()) {
            Bar()->addSeparator();
            continue;
        }
        const QString name = item.text.empty() ? Advice().CommandName(item.command) : ToQt(item.text);
        QAction *action = Bar()->addAction(Icon(item.icon), name);
        const QList<QKeySequence> keys = Advice().Shortcuts(item.command);
        action->setToolTip(keys.isEmpty()
                               ? name
                               : QStringLiteral("%1 (%2)").arg(name, keys.first().toString(QKeySequence::NativeText)));
        action->setData(item.command);
        action->setEnabled(item.enabled);
        if (IsInDialog()) {
            // A dialog has no menu that would have the keys, and Tab goes to its buttons.
            action->setShortcuts(keys);
            Bar()->widgetForAction(action)->setFocusPolicy(Qt::StrongFocus);
        }
        QObject::connect(action, &QAction::triggered, Bar(), [this, command = item.command] {
            // The same code means something else in a dialog than in the main window.
            if (IsInDialog() || !Advice().HandleCommand(command)) {
                view_.UserPress(command);
            }
        });
    }
}

void CToolBoxPeer::ShowEnabled() {
    for (QAction *action : Bar()->actions()) {
        if (!action->isSeparator()) {
            action->setEnabled(view_.IsEnabled(action->data().toUInt()));
        }
    }
}

void CToolBoxPeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kContent) {
        Fill();
    } else if (notice.change == TViewChange::kEnabled) {
        ShowEnabled();
    }
}

}  // namespace kq_desktop

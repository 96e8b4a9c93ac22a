#include "desktop/peers/menu_peer.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "desktop/peers/advice.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

CMenuPeer::CMenuPeer(CMenuBar &view, CPeerAdvice &advice) : CQtPeer(advice), view_(view) {
    SetWidget(new QMenuBar);
    Fill();
}

QMenuBar *CMenuPeer::Bar() const { return static_cast<QMenuBar *>(Widget()); }

void CMenuPeer::Fill() {
    for (const auto &popup : view_.Menus()) {
        QMenu *menu = Bar()->addMenu(Advice().MenuText(ToQt(popup->Text())));
        for (const CPopUpMenu::TItem &item : popup->Items()) {
            QAction *action = menu->addAction(Icon(item.icon), Advice().MenuText(ToQt(item.text)));
            action->setData(item.command);
            action->setEnabled(item.enabled && item.command != 0);
            action->setShortcuts(Advice().Shortcuts(item.command));
            QObject::connect(action, &QAction::triggered, Bar(), [this, command = item.command] {
                if (!Advice().HandleCommand(command)) {
                    view_.UserChoose(command);
                }
            });
        }
    }
}

QAction *CMenuPeer::ActionOf(std::uint32_t command) const {
    for (const QAction *menu : Bar()->actions()) {
        for (QAction *action : menu->menu() != nullptr ? menu->menu()->actions() : QList<QAction *>()) {
            if (action->data().isValid() && action->data().toUInt() == command) {
                return action;
            }
        }
    }
    return nullptr;
}

void CMenuPeer::Refresh() {
    for (const auto &popup : view_.Menus()) {
        for (const CPopUpMenu::TItem &item : popup->Items()) {
            if (QAction *action = ActionOf(item.command)) {
                action->setText(Advice().MenuText(ToQt(item.text)));
                action->setEnabled(item.enabled && item.command != 0);
            }
        }
    }
}

void CMenuPeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kEnabled || notice.change == TViewChange::kContent) {
        Refresh();
    }
}

}  // namespace kq_desktop

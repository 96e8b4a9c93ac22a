#include "desktop/peers/tab_peer.h"

#include <QTabWidget>
#include <QVBoxLayout>

#include "desktop/peers/advice.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

CTabPeer::CTabPeer(CTab &view, CPeerAdvice &advice) : CQtPeer(advice), view_(view) {
    auto *tabs = new QTabWidget;
    tabs->setDocumentMode(true);
    SetWidget(tabs);
    const CSyncing syncing(syncing_);
    for (const CTab::TTab &tab : view.Tabs()) {
        auto *page = new QWidget;
        auto *layout = new QVBoxLayout(page);
        layout->setContentsMargins(0, 0, 0, 0);
        const int index = tabs->addTab(page, Icon(tab.icon), ToQt(tab.text));
        tabs->setTabEnabled(index, tab.enabled);
    }
    ShowActive();
    QObject::connect(tabs, &QTabWidget::currentChanged, tabs, [this](int index) { Clicked(index); });
}

QTabWidget *CTabPeer::Tabs() const { return static_cast<QTabWidget *>(Widget()); }

void CTabPeer::AddChild(CView &child, QWidget &widget) {
    for (std::size_t index = 0; index < view_.Tabs().size(); ++index) {
        if (view_.Tabs()[index].page == &child) {
            Tabs()->widget(static_cast<int>(index))->layout()->addWidget(&widget);
        }
    }
}

void CTabPeer::ShowActive() {
    const CSyncing syncing(syncing_);
    Tabs()->setCurrentIndex(static_cast<int>(view_.ActiveTabIndex()) - 1);
}

void CTabPeer::Clicked(int index) {
    if (!syncing_) {
        // Until the view agrees the former page stays: it may have questions first.
        ShowActive();
        Advice().LeavingTab();
        view_.UserActivate(static_cast<std::uint32_t>(index + 1));
    }
}

void CTabPeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kSelection) {
        ShowActive();
    } else if (notice.change == TViewChange::kEnabled && notice.first != 0) {
        const CSyncing syncing(syncing_);
        Tabs()->setTabEnabled(static_cast<int>(notice.first) - 1, view_.Tabs()[notice.first - 1].enabled);
        ShowActive();
    }
}

}  // namespace kq_desktop

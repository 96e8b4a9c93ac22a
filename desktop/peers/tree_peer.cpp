#include "desktop/peers/tree_peer.h"

#include <QKeyEvent>
#include <QTreeWidget>
#include <functional>
#include <utility>
#include <vector>

#include "desktop/peers/icons.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

namespace {

constexpr int kItemRole = Qt::UserRole + 1;

class CTreeWidget final : public QTreeWidget {
public:
    explicit CTreeWidget(std::function<void(QTreeWidgetItem *)> toggle) : toggle_(std::move(toggle)) {}

protected:
    void showEvent(QShowEvent *event) override {
        QTreeWidget::showEvent(event);
        // Who opens the window wants the tree, not the buttons before it.
        setFocus(Qt::OtherFocusReason);
    }
    void keyPressEvent(QKeyEvent *event) override {
        if (event->key() == Qt::Key_Space && currentItem() != nullptr) {
            toggle_(currentItem());
        } else {
            QTreeWidget::keyPressEvent(event);
        }
    }

private:
    std::function<void(QTreeWidgetItem *)> toggle_;
};

}  // namespace

CTreePeer::CTreePeer(CTreeViewerPane &view, CPeerAdvice &advice) : CQtPeer(advice), view_(view) {
    auto *tree = new CTreeWidget([this](QTreeWidgetItem *shown) { Toggle(shown); });
    tree->setHeaderHidden(true);
    tree->setAccessibleName(QStringLiteral("Položky k výběru"));
    QObject::connect(tree, &QTreeWidget::itemClicked, tree, [this](QTreeWidgetItem *shown) { Toggle(shown); });
    SetWidget(tree);
    Fill();
}

QTreeWidget *CTreePeer::Tree() const { return static_cast<QTreeWidget *>(Widget()); }

TTreeItem &CTreePeer::ItemOf(const QTreeWidgetItem &shown) {
    return *static_cast<TTreeItem *>(shown.data(0, kItemRole).value<void *>());
}

void CTreePeer::Fill() {
    shown_.clear();
    Tree()->clear();
    // Without recursion: a driver's tree may be deep.
    std::vector<TTreeItem *> waiting;
    for (const auto &item : view_.Items()) {
        waiting.push_back(item.get());
    }
    for (std::size_t next = 0; next < waiting.size(); ++next) {
        Append(*waiting[next]);
        for (const auto &child : waiting[next]->items) {
            waiting.push_back(child.get());
        }
    }
}

void CTreePeer::Append(TTreeItem &item) {
    auto *shown = new QTreeWidgetItem;
    shown->setText(0, ToQt(item.text));
    shown->setData(0, kItemRole, QVariant::fromValue(static_cast<void *>(&item)));
    ShowMark(*shown);
    shown_.emplace(&item, shown);
    const auto parent = shown_.find(item.parent);
    if (parent == shown_.end()) {
        Tree()->addTopLevelItem(shown);
        return;
    }
    parent->second->addChild(shown);
    parent->second->setExpanded(true);
}

void CTreePeer::ShowMark(QTreeWidgetItem &shown) const {
    const TTreeItem &item = ItemOf(shown);
    if (!item.Has(kTreeItemHasMark)) {
        return;
    }
    const bool tagged = item.Has(kTreeItemTagged);
    const bool exclusive = item.Has(kTreeItemExclusive);
    const QString name = QStringLiteral("%1-%2").arg(exclusive ? QStringLiteral("radio") : QStringLiteral("check"),
                                                     tagged ? QStringLiteral("on") : QStringLiteral("off"));
    shown.setIcon(0, LoadIcon(name));
    shown.setData(0, Qt::AccessibleDescriptionRole,
                  tagged ? QStringLiteral("zaškrtnuto") : QStringLiteral("nezaškrtnuto"));
}

void CTreePeer::Toggle(QTreeWidgetItem *shown) {
    TTreeItem &item = ItemOf(*shown);
    view_.UserTag(item, !item.Has(kTreeItemTagged));
}

void CTreePeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kContent) {
        Fill();
    } else if (notice.change == TViewChange::kRowsInserted) {
        Append(*view_.Siblings(*notice.item)[notice.first - 1]);
    } else if (notice.change == TViewChange::kRowsChanged) {
        ShowMark(*shown_.at(notice.item));
    }
}

}  // namespace kq_desktop

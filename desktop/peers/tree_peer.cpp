#include "desktop/peers/tree_peer.h"

#include <QKeyEvent>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <functional>
#include <utility>
#include <vector>

#include "desktop/peers/text.h"

namespace kq_desktop {

namespace {

constexpr int kItemRole = Qt::UserRole + 1;

class CTreeWidget final : public QTreeWidget {
public:
    explicit CTreeWidget(std::function<void(QTreeWidgetItem *)> toggle) : toggle_(std::move(toggle)) {}

protected:
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
    QObject::connect(tree, &QTreeWidget::itemClicked, tree, [this](QTreeWidgetItem *shown) { Toggle(shown); });
    SetWidget(tree);
    Fill();
}

QTreeWidget *CTreePeer::Tree() const { return static_cast<QTreeWidget *>(Widget()); }

TTreeItem &CTreePeer::ItemOf(const QTreeWidgetItem &shown) {
    return *static_cast<TTreeItem *>(shown.data(0, kItemRole).value<void *>());
}

void CTreePeer::Fill() {
    Tree()->clear();
    // Without recursion: a driver's tree may be deep.
    std::vector<std::pair<TTreeItem *, QTreeWidgetItem *>> waiting;
    for (const auto &item : view_.Items()) {
        waiting.emplace_back(item.get(), nullptr);
    }
    for (std::size_t next = 0; next < waiting.size(); ++next) {
        const auto [item, parent] = waiting[next];
        auto *shown = parent == nullptr ? new QTreeWidgetItem(Tree()) : new QTreeWidgetItem(parent);
        shown->setText(0, ToQt(item->text));
        shown->setData(0, kItemRole, QVariant::fromValue(static_cast<void *>(item)));
        ShowMark(*shown);
        for (const auto &child : item->items) {
            waiting.emplace_back(child.get(), shown);
        }
    }
    Tree()->expandAll();
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
    shown.setIcon(0, QIcon(QStringLiteral(":/kqconf/%1.svg").arg(name)));
    shown.setData(0, Qt::AccessibleDescriptionRole,
                  tagged ? QStringLiteral("zaškrtnuto") : QStringLiteral("nezaškrtnuto"));
}

void CTreePeer::ShowMarks() {
    for (QTreeWidgetItemIterator shown(Tree()); *shown != nullptr; ++shown) {
        ShowMark(**shown);
    }
}

void CTreePeer::Toggle(QTreeWidgetItem *shown) {
    TTreeItem &item = ItemOf(*shown);
    view_.UserTag(item, !item.Has(kTreeItemTagged));
}

void CTreePeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kRowsChanged) {
        ShowMarks();
    } else if (notice.change == TViewChange::kRowsInserted || notice.change == TViewChange::kContent) {
        Fill();
    }
}

}  // namespace kq_desktop

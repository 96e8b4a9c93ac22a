#pragma once

#include <unordered_map>

#include "desktop/peers/qt_peer.h"
#include "platform/view/tree_viewer.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace kq_desktop {

/// A tree of items, some with a mark to be set: a check mark, or a round one where only one of the siblings may have
/// it.
class CTreePeer final : public CQtPeer {
public:
    CTreePeer(CTreeViewerPane &view, CPeerAdvice &advice);

protected:
    void Show(const TViewNotice &notice) override;

private:
    QTreeWidget *Tree() const;
    void Fill();
    /// Shows an item after its siblings; its parent is shown already.
    void Append(TTreeItem &item);
    void ShowMark(QTreeWidgetItem &shown) const;
    void Toggle(QTreeWidgetItem *shown);
    static TTreeItem &ItemOf(const QTreeWidgetItem &shown);

    CTreeViewerPane &view_;
    std::unordered_map<const TTreeItem *, QTreeWidgetItem *> shown_;
};

}  // namespace kq_desktop

#include "platform/view/tree_viewer.h"

#include <algorithm>
#include <iterator>
#include <utility>

CTreeViewerPane::~CTreeViewerPane() {
    // An item that ended with its items would end them one inside the other.
    std::vector<std::unique_ptr<TTreeItem>> pending = std::move(items_);
    while (!pending.empty()) {
        const std::unique_ptr<TTreeItem> item = std::move(pending.back());
        pending.pop_back();
        std::move(item->items.begin(), item->items.end(), std::back_inserter(pending));
    }
}

TTreeItem &CTreeViewerPane::AddItem(TTreeItem *parent, std::string_view text) {
    auto &siblings = parent == nullptr ? items_ : parent->items;
    siblings.push_back(std::make_unique<TTreeItem>());
    TTreeItem &item = *siblings.back();
    item.text = text;
    item.parent = parent;
    Changed({.change = TViewChange::kRowsInserted, .first = siblings.size(), .count = 1, .item = &item});
    return item;
}

const std::vector<std::unique_ptr<TTreeItem>> &CTreeViewerPane::Siblings(const TTreeItem &item) const {
    return item.parent == nullptr ? items_ : item.parent->items;
}

void CTreeViewerPane::SetElementTag(TTreeItem &item, bool tagged, bool repaint) {
    if (item.Has(kTreeItemTagged) == tagged) {
        return;
    }
    if (tagged) {
        item.attributes |= kTreeItemTagged;
        tagged_.push_back(&item);
    } else {
        ClearTag(item);
    }
    if (repaint) {
        Changed({.change = TViewChange::kRowsChanged, .count = 1, .item = &item});
    }
}

bool CTreeViewerPane::UserTag(TTreeItem &item, bool tagged) {
    if (!IsEnabled() || !item.Has(kTreeItemHasMark)) {
        return false;
    }
    SetElementTag(item, tagged, true);
    return true;
}

void CTreeViewerPane::ClearTag(TTreeItem &item) {
    item.attributes &= ~std::uint32_t{kTreeItemTagged};
    std::erase(tagged_, &item);
}

void CTreeViewer::Init() {
    pane_ = MakePane();
    Register(*pane_);
}

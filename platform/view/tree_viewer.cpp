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

TTreeItem &CTreeViewerPane::AddItem(TTreeItem *parent, std::string_view text, std::uint32_t attributes,
                                    std::optional<std::uint32_t> key) {
    auto &siblings = parent == nullptr ? items_ : parent->items;
    siblings.push_back(std::make_unique<TTreeItem>());
    TTreeItem &item = *siblings.back();
    item.text = text;
    item.attributes = attributes;
    item.key = key;
    item.parent = parent;
    if (key) {
        by_key_.emplace(*key, &item);
    }
    Changed({.change = TViewChange::kRowsInserted, .first = siblings.size(), .count = 1, .item = &item});
    return item;
}

TTreeItem *CTreeViewerPane::FindItem(std::uint32_t key) const {
    const auto found = by_key_.find(key);
    return found == by_key_.end() ? nullptr : found->second;
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
        item.attributes &= ~std::uint32_t{kTreeItemTagged};
        std::erase(tagged_, &item);
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

void CTreeViewerPane::ClearSiblingTags(const TTreeItem &item, bool repaint) {
    std::vector<TTreeItem *> cleared;
    for (const auto &sibling : Siblings(item)) {
        if (sibling.get() != &item && sibling->Has(kTreeItemTagged)) {
            sibling->attributes &= ~std::uint32_t{kTreeItemTagged};
            cleared.push_back(sibling.get());
        }
    }
    if (cleared.empty()) {
        return;
    }
    std::erase_if(tagged_, [](const TTreeItem *tagged) { return !tagged->Has(kTreeItemTagged); });
    for (const TTreeItem *sibling : cleared) {
        if (repaint) {
            Changed({.change = TViewChange::kRowsChanged, .count = 1, .item = sibling});
        }
    }
}

void CTreeViewer::Init(const TRect &rect, const TParameters &parameters) {
    NewRect(rect);
    parameters_ = parameters;
    pane_ = MakePane();
    pane_->NewRect({0, 0, rect.width, rect.depth});
    Register(*pane_);
}

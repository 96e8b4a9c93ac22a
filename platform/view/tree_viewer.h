#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/view/view.h"

/// Bits of a tree item's attributes.
enum TTreeItemBit : std::uint32_t {
    kTreeItemTagged = 1U << 2U,      ///< its check mark is set
    kTreeItemHasMark = 1U << 7U,     ///< it has a check mark
    kTreeItemExclusive = 1U << 12U,  ///< checking it clears the marks of its siblings
};

struct TTreeItem {
    std::string text;
    std::uint32_t attributes = 0;
    std::optional<std::uint32_t> key;  ///< by which the program finds the item, if it can
    TTreeItem *parent = nullptr;  ///< null at the root
    std::vector<std::unique_ptr<TTreeItem>> items;

    bool Has(TTreeItemBit bit) const { return (attributes & bit) != 0; }
};

/// The pane of a tree viewer: the items themselves. Nothing here recurses; a tree may be as deep as memory allows.
class KQ_API CTreeViewerPane : public CView {
public:
    TViewKind Kind() const override { return TViewKind::kTreeViewer; }
    ~CTreeViewerPane() override;

    /// Appends an item below a parent; null is the root.
    TTreeItem &AddItem(TTreeItem *parent, std::string_view text);
    const std::vector<std::unique_ptr<TTreeItem>> &Items() const { return items_; }
    /// The items on one level with another, itself included.
    const std::vector<std::unique_ptr<TTreeItem>> &Siblings(const TTreeItem &item) const;
    /// The items whose mark is set, in the order in which it was.
    const std::vector<TTreeItem *> &TaggedItems() const { return tagged_; }
    /// Sets or clears an item's mark.
    virtual void SetElementTag(TTreeItem &item, bool tagged, bool repaint);
    /// A person clicks an item's mark; false if it has none.
    bool UserTag(TTreeItem &item, bool tagged);

protected:
    /// Takes an item's mark away and out of the tagged ones.
    void ClearTag(TTreeItem &item);

private:
    std::vector<std::unique_ptr<TTreeItem>> items_;
    std::vector<TTreeItem *> tagged_;
};

/// A tree with its pane; a subclass may have a pane of its own.
class KQ_API CTreeViewer : public CView {
public:
    /// Makes the pane.
    void Init();
    CTreeViewerPane &Pane() const { return *pane_; }

protected:
    virtual std::unique_ptr<CTreeViewerPane> MakePane() { return std::make_unique<CTreeViewerPane>(); }

private:
    std::unique_ptr<CTreeViewerPane> pane_;
};

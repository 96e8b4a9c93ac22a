#pragma once

#include <array>
#include <cstdint>
#include <map>
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
    TTreeItem *parent = nullptr;       ///< null at the root
    std::vector<std::unique_ptr<TTreeItem>> items;

    bool Has(TTreeItemBit bit) const { return (attributes & bit) != 0; }
};

/// The pane of a tree viewer: the items themselves. Nothing here recurses; a tree may be as deep as memory allows.
class KQ_API CTreeViewerPane : public CView {
public:
    TViewKind Kind() const override { return TViewKind::kTreeViewer; }
    ~CTreeViewerPane() override;

    /// Appends an item below a parent; null is the root. Attributes are bits of TTreeItemBit.
    TTreeItem &AddItem(TTreeItem *parent, std::string_view text, std::uint32_t attributes = 0,
                       std::optional<std::uint32_t> key = {});
    /// The item with a key, of several the first one that was added; null without one.
    TTreeItem *FindItem(std::uint32_t key) const;
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
    /// Takes the marks of all other items on an item's level away and out of the tagged ones.
    void ClearSiblingTags(const TTreeItem &item, bool repaint);

private:
    std::vector<std::unique_ptr<TTreeItem>> items_;
    std::map<std::uint32_t, TTreeItem *> by_key_;
    std::vector<TTreeItem *> tagged_;
};

/// A tree with its pane; a subclass may have a pane of its own.
class KQ_API CTreeViewer : public CView {
public:
    /// How the tree is shown: option bits and sizes, which are passed on to the peer.
    struct TParameters {
        std::array<std::uint32_t, 2> options = {};
        std::array<std::int32_t, 4> sizes = {};
    };

    /// Makes the pane, which fills the view.
    void Init(const TRect &rect, const TParameters &parameters);
    CTreeViewerPane &Pane() const { return *pane_; }
    const TParameters &Parameters() const { return parameters_; }

protected:
    virtual std::unique_ptr<CTreeViewerPane> MakePane() { return std::make_unique<CTreeViewerPane>(); }

private:
    TParameters parameters_;
    std::unique_ptr<CTreeViewerPane> pane_;
};

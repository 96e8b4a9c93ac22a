#pragma once

#include <cstdint>
#include <memory>

#include "platform/base/export.h"

/// An area of the screen or of a parent, in the units of the peer that shows it.
struct TRect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t depth = 0;

    friend bool operator==(const TRect &left, const TRect &right) = default;
};

/// What a view is, for those who make peers.
enum class TViewKind : std::uint8_t {
    kView,
    kWindow,
    kMenuBar,
    kToolBox,
    kSplitterPane,
    kTab,
    kListBox,
    kStaticText,
    kButton,
    kBubble,
    kDataContainer,
    kTreeViewer,
    kSheet,
    kText,
    kComboBox,
    kCountBox,
    kEditBox,
};

/// What changed in a view.
enum class TViewChange : std::uint8_t {
    kContent,       ///< text, entries or value, `first` is an item's command if just one item changed; of a sheet: any
                    ///< number of its tables and rows
    kSelection,     ///< the selected row, cell, entry, the active tab or the selection in a text
    kEnabled,       ///< the view, or the item whose command or tab is `first`, was enabled or disabled
    kVisible,       ///< the view, or the pane `first` (from 1), is shown or hidden
    kChildren,      ///< a child came or went
    kFocus,         ///< the view has the keyboard focus now; of a window: it came to the front or left it
    kArea,          ///< the rectangle, a window's maximised state, or a split position
    kCursor,        ///< the position of a text's cursor
    kFitCursor,     ///< the cursor is to be scrolled into sight
    kColors,        ///< words or their colours
    kText,          ///< a piece of a text was replaced: `first` is its offset, `removed` and `inserted` are lengths
    kRowsInserted,  ///< `count` rows from `first` on are new; of a tree: `item` is
    kRowsRemoved,   ///< `count` rows from `first` on are gone
    kRowsChanged,   ///< what is in these rows, or in the tree's `item`, is to be read again
    kCell,          ///< one cell of a sheet is to be read again
    kTable,         ///< a table of a sheet has other columns, or is gone
    kEditor,        ///< a sheet's cell editor was opened or closed
};

struct TTreeItem;

/// A change, with its position where the kind of change has one. Rows and columns count from 1.
struct TViewNotice {
    TViewChange change = TViewChange::kContent;
    std::uint32_t table = 0;
    std::uint64_t first = 0;
    std::uint64_t count = 0;
    std::uint32_t column = 0;
    std::uint64_t removed = 0;
    std::uint64_t inserted = 0;
    const TTreeItem *item = nullptr;

    friend bool operator==(const TViewNotice &left, const TViewNotice &right) = default;
};

class CView;

/// What shows a view: after each change it reads the view's state and draws. A view works the same without one.
class KQ_API CViewPeer {
public:
    virtual ~CViewPeer() = default;
    virtual void ViewChanged(CView &view, const TViewNotice &notice) = 0;
    /// An area of the view, in the view's own coordinates, has to be drawn anew.
    virtual void AreaInvalidated(CView &view, const TRect &area) = 0;
};

/// A window system: makes the peers.
class KQ_API CPeerFactory {
public:
    virtual ~CPeerFactory() = default;
    /// Called when a view becomes part of a window that is shown, parents before children. Null for a view that needs
    /// no peer.
    virtual std::unique_ptr<CViewPeer> MakePeer(CView &view) = 0;
};

/// Installs the factory, not owned, and gives the one before. Without one no view has a peer.
KQ_API CPeerFactory *SetPeerFactory(CPeerFactory *factory);

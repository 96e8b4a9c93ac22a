#pragma once

#include <cstdint>
#include <vector>

/// An area of the screen or of a parent, in the units of the peer that shows it.
struct TRect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t depth = 0;

    friend bool operator==(const TRect &left, const TRect &right) = default;
};

/// What changed in a view.
enum class TViewChange : std::uint8_t {
    kContent,    ///< text, entries, selection or value
    kCursor,     ///< the position of the cursor
    kFitCursor,  ///< the cursor is to be scrolled into sight
    kColors,     ///< words or their colours
    kArea,       ///< the rectangle
};

class CView;

/// What shows a view: after each change it reads the view's state and draws. A view works the same without one.
class CViewPeer {
public:
    virtual ~CViewPeer();
    virtual void ViewChanged(CView &view, TViewChange change) = 0;
    /// An area of the view, in the view's own coordinates, has to be drawn anew.
    virtual void AreaInvalidated(CView &view, const TRect &area) = 0;
};

/// The state that every view has: its area and its parent. A parent doesn't own its children; whichever of the two
/// ends first takes itself out of the other.
class CView {
public:
    CView() = default;
    CView(const CView &) = delete;
    CView &operator=(const CView &) = delete;
    /// The area that the view covered in its parent is drawn anew.
    virtual ~CView();

    const TRect &Rect() const { return rect_; }
    /// Moves the view within its parent.
    void NewRect(const TRect &rect);

    CView *Parent() const { return parent_; }
    /// Puts a view into this one, in front of the others; it leaves the parent that it had.
    void Register(CView &child);
    /// Takes a view out of this one and has the area that it covered drawn anew. Nothing if it isn't in here.
    void Forget(CView &child);
    /// The views in this one, the foremost last.
    const std::vector<CView *> &Children() const { return children_; }

    /// An area in this view's own coordinates has to be drawn anew.
    virtual void InvalidateRect(const TRect &area);

    /// The view's peer, not owned; null takes it away.
    void SetPeer(CViewPeer *peer) { peer_ = peer; }
    CViewPeer *Peer() const { return peer_; }

protected:
    /// Reports a change to the peer, if there is one.
    void Changed(TViewChange change);

private:
    TRect rect_;
    CView *parent_ = nullptr;
    std::vector<CView *> children_;
    CViewPeer *peer_ = nullptr;
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/base/export.h"
#include "platform/view/events.h"
#include "platform/view/peer.h"

/// The state that every view has: its area, its parent, whether it is visible and enabled. A parent doesn't own its
/// children; whichever of the two ends first takes itself out of the other.
class KQ_API CView : public CEventHandler {
public:
    CView() = default;
    /// The area that the view covered in its parent is drawn anew.
    ~CView() override;

    virtual TViewKind Kind() const { return TViewKind::kView; }

    const TRect &Rect() const { return rect_; }
    /// Moves the view within its parent.
    void NewRect(const TRect &rect);

    CView *Parent() const { return parent_; }
    /// The outermost parent; the view itself without one.
    CView &GetRoot();
    /// Puts a view into this one, in front of the others; it leaves the parent that it had.
    void Register(CView &child) { Insert(child, children_.size()); }
    /// The same, behind all others.
    void RegisterFirst(CView &child) { Insert(child, 0); }
    /// Takes a view out of this one and has the area that it covered drawn anew. Nothing if it isn't in here.
    void Forget(CView &child);
    /// The views in this one, the foremost last.
    const std::vector<CView *> &Children() const { return children_; }
    /// An area of this view in the coordinates of the root's surroundings.
    TRect ConvertToAbs(const TRect &area) const;

    /// A child is visible from the start, a window isn't.
    bool IsVisible() const { return visible_; }
    virtual void SetVisible(bool visible);
    bool IsEnabled() const { return enabled_; }
    void SetEnabled(bool enabled);

    /// Gives the view the keyboard focus.
    void Select();
    bool IsSelected() const;
    /// From now on the mouse's events go to this view first, wherever they happen; EndCaptureMouse ends that.
    void BeginCaptureMouse();
    void EndCaptureMouse();
    /// A person pressed a mouse button over the view: the view that captured the mouse sees the event, otherwise this
    /// one; then its parents up to the root, until one stops it.
    void UserMouse();

    /// An area in this view's own coordinates has to be drawn anew.
    virtual void InvalidateRect(const TRect &area);
    /// All of it has to.
    void PaintView() { InvalidateRect({0, 0, rect_.width, rect_.depth}); }

    /// Runs a loop for the view and gives the code that ended it.
    virtual std::uint32_t Exec() { return RunLoop(*this); }
    /// Shows the view and does the same while the owner is blocked.
    std::uint32_t RunModal(CView &owner);
    /// The window that this one blocks while RunModal runs; null otherwise.
    CView *ModalOwner() const { return modal_owner_; }

    CViewPeer *Peer() const { return peer_.get(); }
    /// Makes peers for the view and all that is in it, where they have none. What becomes part of a view with a peer
    /// gets its own without being asked for.
    void MakePeers();

protected:
    /// Reports a change to the peer, if there is one.
    void Changed(TViewChange change) { Changed(TViewNotice{.change = change}); }
    void Changed(const TViewNotice &notice);
    /// A child was taken out, or ends: whoever keeps a pointer to it forgets it.
    virtual void ChildForgotten(CView & /*child*/) {}

private:
    void Insert(CView &child, std::size_t position);
    void DropPeers();

    TRect rect_;
    CView *parent_ = nullptr;
    CView *modal_owner_ = nullptr;
    std::vector<CView *> children_;
    std::unique_ptr<CViewPeer> peer_;
    bool visible_ = true;
    bool enabled_ = true;
};

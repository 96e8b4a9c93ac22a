#include "platform/view/view.h"

#include <algorithm>
#include <utility>

namespace {

CPeerFactory *peer_factory = nullptr;
CView *selected_view = nullptr;
CView *capturing_view = nullptr;

}  // namespace

CPeerFactory *SetPeerFactory(CPeerFactory *factory) { return std::exchange(peer_factory, factory); }

CView::~CView() {
    EndCaptureMouse();
    if (selected_view == this) {
        selected_view = nullptr;
    }
    for (CView *child : children_) {
        child->parent_ = nullptr;
    }
    if (parent_ != nullptr) {
        parent_->Forget(*this);
    }
}

void CView::NewRect(const TRect &rect) {
    if (rect == rect_) {
        return;
    }
    rect_ = rect;
    Changed(TViewChange::kArea);
}

CView &CView::GetRoot() {
    CView *view = this;
    while (view->parent_ != nullptr) {
        view = view->parent_;
    }
    return *view;
}

void CView::Insert(CView &child, std::size_t position) {
    if (child.parent_ != nullptr) {
        child.parent_->Forget(child);
    }
    child.parent_ = this;
    children_.insert(children_.begin() + static_cast<std::ptrdiff_t>(std::min(position, children_.size())), &child);
    if (peer_ != nullptr) {
        child.MakePeers();
    }
    Changed(TViewChange::kChildren);
}

void CView::Forget(CView &child) {
    const auto found = std::find(children_.begin(), children_.end(), &child);
    if (found == children_.end()) {
        return;
    }
    children_.erase(found);
    child.parent_ = nullptr;
    child.DropPeers();
    ChildForgotten(child);
    InvalidateRect(child.rect_);
    Changed(TViewChange::kChildren);
}

TRect CView::ConvertToAbs(const TRect &area) const {
    TRect absolute = area;
    for (const CView *view = this; view != nullptr; view = view->parent_) {
        absolute.x += view->rect_.x;
        absolute.y += view->rect_.y;
    }
    return absolute;
}

void CView::SetVisible(bool visible) {
    if (visible != visible_) {
        visible_ = visible;
        Changed(TViewChange::kVisible);
    }
}

void CView::SetEnabled(bool enabled) {
    if (enabled != enabled_) {
        enabled_ = enabled;
        Changed(TViewChange::kEnabled);
    }
}

void CView::Select() {
    selected_view = this;
    Changed(TViewChange::kFocus);
}

bool CView::IsSelected() const { return selected_view == this; }

void CView::BeginCaptureMouse() { capturing_view = this; }

void CView::EndCaptureMouse() {
    if (capturing_view == this) {
        capturing_view = nullptr;
    }
}

void CView::UserMouse() {
    TEvent event{.event_class = ecMouse};
    CView *view = capturing_view != nullptr ? capturing_view : this;
    while (view != nullptr && !event.stopped) {
        CView *parent = view->parent_;
        view->ReceiveEvent(event);
        view = parent;
    }
}

void CView::InvalidateRect(const TRect &area) {
    if (peer_ != nullptr) {
        peer_->AreaInvalidated(*this, area);
    }
}

std::uint32_t CView::RunModal(CView &owner) {
    // Whoever shows it has to know already that it blocks its owner.
    modal_owner_ = &owner;
    SetVisible(true);
    if (CEventSource *source = EventSource()) {
        source->ModalBegan(*this);
    }
    const std::uint32_t code = Exec();
    if (CEventSource *source = EventSource()) {
        source->ModalEnded(*this, code);
    }
    modal_owner_ = nullptr;
    return code;
}

void CView::MakePeers() {
    if (peer_factory == nullptr) {
        return;
    }
    if (peer_ == nullptr) {
        peer_ = peer_factory->MakePeer(*this);
    }
    if (peer_ != nullptr) {
        // NOLINTNEXTLINE(modernize-loop-convert): a peer that is made may put further views in.
        for (std::size_t index = 0; index < children_.size(); ++index) {
            children_[index]->MakePeers();
        }
    }
}

void CView::DropPeers() {
    for (CView *child : children_) {
        child->DropPeers();
    }
    peer_.reset();
}

void CView::Changed(const TViewNotice &notice) {
    if (peer_ != nullptr) {
        peer_->ViewChanged(*this, notice);
    }
}

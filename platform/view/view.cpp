#include "platform/view/view.h"

#include <algorithm>

CViewPeer::~CViewPeer() = default;

CView::~CView() {
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

void CView::Register(CView &child) {
    if (child.parent_ != nullptr) {
        child.parent_->Forget(child);
    }
    child.parent_ = this;
    children_.push_back(&child);
}

void CView::Forget(CView &child) {
    const auto found = std::find(children_.begin(), children_.end(), &child);
    if (found == children_.end()) {
        return;
    }
    children_.erase(found);
    child.parent_ = nullptr;
    InvalidateRect(child.rect_);
}

void CView::InvalidateRect(const TRect &area) {
    if (peer_ != nullptr) {
        peer_->AreaInvalidated(*this, area);
    }
}

void CView::Changed(TViewChange change) {
    if (peer_ != nullptr) {
        peer_->ViewChanged(*this, change);
    }
}

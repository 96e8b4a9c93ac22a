#include "desktop/peers/qt_peer.h"

#include "desktop/peers/advice.h"
#include "desktop/peers/icons.h"

namespace kq_desktop {

CQtPeer::~CQtPeer() {
    if (widget_ != nullptr) {
        // It may be the one whose event is being handled.
        widget_->hide();
        widget_->deleteLater();
    }
}

CQtPeer *CQtPeer::Of(const CView *view) { return view != nullptr ? static_cast<CQtPeer *>(view->Peer()) : nullptr; }

void CQtPeer::AddChild(CView & /*child*/, QWidget &widget) { widget.setParent(widget_); }

void CQtPeer::ViewChanged(CView &view, const TViewNotice &notice) {
    if (widget_ == nullptr) {
        return;
    }
    if (notice.change == TViewChange::kVisible && notice.first == 0 && notice.table == 0) {
        widget_->setVisible(view.IsVisible());
    } else if (notice.change == TViewChange::kEnabled && notice.first == 0) {
        widget_->setEnabled(view.IsEnabled());
    } else if (notice.change == TViewChange::kFocus && view.IsSelected()) {
        FocusWidget()->setFocus(Qt::OtherFocusReason);
    }
    Show(notice);
}

void CQtPeer::AreaInvalidated(CView & /*view*/, const TRect & /*area*/) {
    if (widget_ != nullptr) {
        widget_->update();
    }
}

QIcon CQtPeer::Icon(std::uint32_t number) const {
    const QString name = advice_.IconName(number);
    return name.isEmpty() ? QIcon() : LoadIcon(name);
}

}  // namespace kq_desktop

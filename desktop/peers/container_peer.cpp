#include "desktop/peers/container_peer.h"

#include <QVBoxLayout>

namespace kq_desktop {

CContainerPeer::CContainerPeer(CView & /*view*/, CPeerAdvice &advice) : CQtPeer(advice) {
    auto *widget = new QWidget;
    auto *layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    SetWidget(widget);
}

void CContainerPeer::AddChild(CView &child, QWidget &widget) {
    const bool leaf = child.Kind() == TViewKind::kStaticText || child.Kind() == TViewKind::kButton;
    static_cast<QVBoxLayout *>(Widget()->layout())->addWidget(&widget, leaf ? 0 : 1);
}

}  // namespace kq_desktop

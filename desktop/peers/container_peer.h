#pragma once

#include "desktop/peers/qt_peer.h"

namespace kq_desktop {

/// A view that only holds others: they lie one below the other, the last takes the room that is left.
class CContainerPeer final : public CQtPeer {
public:
    CContainerPeer(CView &view, CPeerAdvice &advice);

    void AddChild(CView &child, QWidget &widget) override;
};

}  // namespace kq_desktop

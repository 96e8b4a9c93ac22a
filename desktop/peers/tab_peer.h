#pragma once

#include "desktop/peers/qt_peer.h"
#include "platform/view/panes.h"

class QTabWidget;

namespace kq_desktop {

/// Pages under tabs. A click only asks the view, which may refuse.
class CTabPeer final : public CQtPeer {
public:
    CTabPeer(CTab &view, CPeerAdvice &advice);

    void AddChild(CView &child, QWidget &widget) override;

protected:
    void Show(const TViewNotice &notice) override;

private:
    QTabWidget *Tabs() const;
    void ShowActive();
    void Clicked(int index);

    CTab &view_;
    bool syncing_ = false;
};

}  // namespace kq_desktop

#pragma once

#include "desktop/peers/qt_peer.h"
#include "platform/view/tool_box.h"

class QToolBar;

namespace kq_desktop {

/// A row of buttons with icons; its names are what is shown when the mouse rests on one.
class CToolBoxPeer final : public CQtPeer {
public:
    CToolBoxPeer(CToolBox &view, CPeerAdvice &advice);

protected:
    void Show(const TViewNotice &notice) override;

private:
    QToolBar *Bar() const;
    bool IsInDialog() const;
    void Fill();
    void ShowEnabled();

    CToolBox &view_;
};

}  // namespace kq_desktop

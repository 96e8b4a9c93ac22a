#pragma once

#include <cstdint>

#include "desktop/peers/qt_peer.h"
#include "platform/view/menu_bar.h"

class QAction;
class QMenuBar;

namespace kq_desktop {

/// The menus of a window. They are made once; later only texts and enabling change.
class CMenuPeer final : public CQtPeer {
public:
    CMenuPeer(CMenuBar &view, CPeerAdvice &advice);

    /// The action of a command; null without one.
    QAction *ActionOf(std::uint32_t command) const;
    /// A person chooses a command whose item is enabled; for whoever has another way to it.
    bool Choose(std::uint32_t command) { return view_.UserChoose(command); }

protected:
    void Show(const TViewNotice &notice) override;

private:
    QMenuBar *Bar() const;
    void Fill();
    void Refresh();

    CMenuBar &view_;
};

}  // namespace kq_desktop

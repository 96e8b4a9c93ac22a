#pragma once

#include "desktop/peers/qt_peer.h"
#include "platform/view/window.h"

class QMainWindow;
class QVBoxLayout;

namespace kq_desktop {

/// A window: menus, the docked tool box, the views of its client area, the status line. Closing it by the frame only
/// asks the window to close.
class CWindowPeer final : public CQtPeer {
public:
    CWindowPeer(CWindow &view, CPeerAdvice &advice);
    ~CWindowPeer() override;
    CWindowPeer(const CWindowPeer &) = delete;
    CWindowPeer &operator=(const CWindowPeer &) = delete;

    void AddChild(CView &child, QWidget &widget) override;
    QMainWindow *MainWindow() const;
    /// A place for the program's own notices above the client area.
    QVBoxLayout *Notices() const { return notices_; }

protected:
    void Show(const TViewNotice &notice) override;

private:
    void ShowArea();
    void ShowElapsed();
    void ShowTitle();
    void ShowState();
    void ShowModality();
    void FrameChanged();

    CWindow &view_;
    QVBoxLayout *notices_ = nullptr;
    QVBoxLayout *client_ = nullptr;
    bool syncing_ = false;
};

}  // namespace kq_desktop

#pragma once

#include <QPointer>
#include <cstddef>
#include <string>

#include "configurator/kq_pdt.h"

class QMainWindow;
class QMenu;

namespace kq_desktop {

class CMenuPeer;
class CTextPeer;
class CWindowPeer;

/// What the program adds to the configurator's window while it is up: its own menu, keys, and all that follows the
/// state of the window as a whole.
class CSessionFrame {
public:
    explicit CSessionFrame(CConfiguratorWindow &window);

    /// Brings what is shown in step with the window.
    void Refresh();
    /// True if there is work that is in no file: the configurator would ask, or the driver map isn't as in its file.
    bool HasUnsavedWork() const;
    QMainWindow *MainWindow() const;

private:
    void AddKeys();
    void GoToNext();
    void GoToPrevious();
    void ShowMessages();
    void ShowSteps();
    void ShowTabTips();
    bool OnText() const { return window_.Tabs().ActiveTabIndex() == CConfiguratorWindow::kTextTab; }

    CConfiguratorWindow &window_;
    std::size_t messages_ = 0;
    std::string last_message_;
};

}  // namespace kq_desktop

#pragma once

#include <QObject>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "configurator/kq_pdt.h"
#include "desktop/kqconf/notices.h"
#include "desktop/kqconf/safety_net.h"

class QMainWindow;
class QMenu;

namespace kq_desktop {

class CFindBar;
class CTextEditor;

/// What the program adds to the configurator's window while it is up: menus and keys of its own, the find bar, bars
/// with notices, and all that follows the state of the window as a whole.
///
/// The members lie in two files: session_frame.cpp (what is shown) and session_actions.cpp (menus and keys).
class CSessionFrame {
public:
    CSessionFrame(CConfiguratorWindow &window, const TDriverFiles &files, std::uint32_t language);
    ~CSessionFrame();
    CSessionFrame(const CSessionFrame &) = delete;
    CSessionFrame &operator=(const CSessionFrame &) = delete;

    /// Called when another file is to be opened, or none: the window has to close first.
    std::function<void(const QString &path)> open_file;
    /// Called when the template's texts are to be in another language: the window has to open anew.
    std::function<void(std::uint32_t language)> change_language;

    /// Brings what is shown in step with the window.
    void Refresh();
    /// Carries a command out if that is the program's business.
    bool HandleCommand(std::uint32_t command);
    /// The active tab is about to be left.
    void LeavingTab() { ShowProblems(); }
    QMainWindow *MainWindow() const;
    CSafetyNet &Safety() { return *safety_; }

private:
    // session_actions.cpp
    void AddMenus();
    void AddFileMenu(QMenu &menu);
    void AddEditActions(QMenu &menu);
    void AddHelpActions(QMenu &menu);
    void FillRecent(QMenu &menu);
    void AddLanguages(QMenu &menu);
    void AddKeys();
    void SizeLowerPane(int by);
    void Activate(std::uint32_t tab);
    void AskForFile();
    void GoToLine();
    void GoToNext();
    void GoToPrevious();
    void ShowShortcuts();
    void ShowAbout();
    void OpenFind(bool replace);
    void AddFindBar();
    bool Find(const QString &text, const CTextView::TFindOptions &options);

    // session_frame.cpp
    void ShowMessages();
    void ShowSteps();
    void ShowTabTips();
    void ShowProblems();
    void ShowReason();
    void LeaveCell();
    bool OnText() const { return window_.Tabs().ActiveTabIndex() == CConfiguratorWindow::kTextTab; }

    CConfiguratorWindow &window_;
    std::uint32_t language_;
    std::unique_ptr<CNotices> notices_;
    std::unique_ptr<CSafetyNet> safety_;
    CFindBar *find_bar_ = nullptr;
    std::size_t messages_ = 0;
    std::string last_message_;
    std::uint32_t tab_ = 0;
    QString reason_;
};

}  // namespace kq_desktop

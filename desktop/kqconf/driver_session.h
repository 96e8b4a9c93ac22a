#pragma once

#include <memory>

#include "configurator/kq_pdt.h"
#include "desktop/kqconf/driver_files.h"
#include "desktop/kqconf/host.h"
#include "desktop/kqconf/session_frame.h"

namespace kq_desktop {

class CQtEventSource;
class CWindowAdvice;

/// One driver in the configurator's window, from the opening to the end of the window.
class CDriverSession {
public:
    CDriverSession(CWindowAdvice &advice, CQtEventSource &events);
    ~CDriverSession();
    CDriverSession(const CDriverSession &) = delete;
    CDriverSession &operator=(const CDriverSession &) = delete;

    /// Opens the files and shows the window. False if a file couldn't be opened, which the person has seen.
    bool Open(const TDriverFiles &files, std::uint32_t language, const QString &modules);
    /// Runs the window until it ends. Gives the file to be opened next; empty for none.
    QString Run();

    CConfiguratorWindow &Window() { return *window_; }
    CSessionFrame &Frame() { return *frame_; }

private:
    void OpenNext(const QString &path);

    CWindowAdvice &advice_;
    CQtEventSource &events_;
    std::unique_ptr<CDesktopHost> host_;
    CAbstractDriverConfigurator *configurator_ = nullptr;
    std::unique_ptr<CConfiguratorWindow> window_;
    std::unique_ptr<CSessionFrame> frame_;
    QString next_;
};

}  // namespace kq_desktop

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
    /// Runs the window until it ends. Gives what is to be opened next; without a file nothing.
    TNamedFiles Run();
    /// The language of the template's texts, which the person may have changed for what is opened next.
    std::uint32_t Language() const { return language_; }

    CConfiguratorWindow &Window() { return *window_; }
    CSessionFrame &Frame() { return *frame_; }

private:
    /// Ends the window for others, unless the person wants to go on with it.
    bool OpenNext(const TNamedFiles &files);

    CWindowAdvice &advice_;
    CQtEventSource &events_;
    std::unique_ptr<CDesktopHost> host_;
    CAbstractDriverConfigurator *configurator_ = nullptr;
    std::unique_ptr<CConfiguratorWindow> window_;
    std::unique_ptr<CSessionFrame> frame_;
    std::uint32_t language_ = 0;
    TNamedFiles next_;
};

}  // namespace kq_desktop

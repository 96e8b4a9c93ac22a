#pragma once

#include "desktop/kqconf/driver_files.h"
#include "desktop/kqconf/options.h"
#include "desktop/kqconf/window_advice.h"
#include "desktop/peers/event_source.h"
#include "desktop/peers/message_boxes.h"
#include "desktop/peers/peer_factory.h"

namespace kq_desktop {

/// The program between start and end: one window after the other.
class CProgram {
public:
    explicit CProgram(TOptions options);

    /// Gives the exit code.
    int Run();

private:
    bool RunDriver(const TDriverFiles &files, QString &error);

    TOptions options_;
    std::uint32_t language_ = 0;
    CWindowAdvice advice_;
    CQtPeerFactory factory_{advice_};
    CQtEventSource events_;
    CMessageBoxes boxes_;
};

}  // namespace kq_desktop

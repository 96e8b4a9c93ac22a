#pragma once

#include <deque>

#include "platform/view/message_box.h"
#include "platform/view/settings.h"
#include "tools/session/event_recorder.h"
#include "tools/session/script_host.h"
#include "tools/session/watched_disk.h"

/// What surrounds the window of a session: host, disk, settings, work area, clock and the person who answers boxes.
/// All of it is in place while this object lives; then what was there before is again.
class CSurroundings {
public:
    CSurroundings();
    ~CSurroundings();
    CSurroundings(const CSurroundings &) = delete;
    CSurroundings &operator=(const CSurroundings &) = delete;

    CEventRecorder &Recorder() { return recorder_; }
    CScriptHost &Host() { return host_; }
    CWatchedDisk &Disk() { return disk_; }
    CMemorySettings &Settings() { return settings_; }

    /// The answer for one of the next boxes that offer more than OK.
    void QueueAnswer(TBoxAnswer answer) { answers_.push_back(answer); }

private:
    TBoxAnswer Answer(const TMessageBox &box);

    CEventRecorder recorder_;
    CScriptHost host_{recorder_};
    CWatchedDisk disk_{recorder_};
    CMemorySettings settings_;
    std::deque<TBoxAnswer> answers_;

    CSettingsStore *former_settings_ = nullptr;
    TMessageBoxHandler former_handler_;
    std::int32_t former_width_ = 0;
    std::int32_t former_depth_ = 0;
};

#pragma once

#include <array>
#include <chrono>
#include <csignal>

/// As long as it lives, Ctrl-C, a request to end and a hang-up (SIGINT, SIGTERM, SIGHUP) don't end the program but are
/// remembered here; a signal that was ignored before stays ignored. A second Ctrl-C or request ends the program at
/// once; a hang-up never does, since a terminal that goes away may send several. To write where nobody reads (SIGPIPE)
/// is a failure of that write and no more, also after this object's end, since what is left of the output follows it.
/// Only one object may live at a time.
class CInterrupt {
public:
    CInterrupt();
    ~CInterrupt();
    CInterrupt(const CInterrupt &) = delete;
    CInterrupt &operator=(const CInterrupt &) = delete;

    static bool Came();
    /// Waits up to a moment, or until a signal comes. False if one came.
    static bool WaitUntil(std::chrono::steady_clock::time_point moment);

private:
    std::array<struct sigaction, 3> before_{};  // of the signals in the order of kSignals
};

#pragma once

#include <chrono>
#include <csignal>

/// As long as it lives, Ctrl-C and a request to end (SIGINT, SIGTERM) don't end the program but are remembered here.
/// A second one ends it at once. Only one object may live at a time.
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
    struct sigaction before_int_ = {};
    struct sigaction before_term_ = {};
};

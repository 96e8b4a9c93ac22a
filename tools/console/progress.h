#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "tools/console/console.h"

/// Work that goes on: once it has lasted a while, a line on the terminal says so and how long it has lasted, and goes
/// away with this object. Nothing is shown where standard error is no terminal. While the object lives nothing else may
/// be written to standard error.
class CProgress {
public:
    static constexpr std::chrono::milliseconds kDelay{1000};

    CProgress(TConsole &console, std::string work, std::chrono::milliseconds delay = kDelay);
    ~CProgress();
    CProgress(const CProgress &) = delete;
    CProgress &operator=(const CProgress &) = delete;

private:
    void Show();

    TConsole &console_;
    std::string work_;
    std::chrono::milliseconds delay_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool over_ = false;
    std::thread thread_;
};

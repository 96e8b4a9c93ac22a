#include "tools/console/progress.h"

CProgress::CProgress(TConsole &console, std::string work, std::chrono::milliseconds delay)
    : console_(console), work_(std::move(work)), delay_(delay) {
    if (console_.terminal) {
        thread_ = std::thread(&CProgress::Show, this);
    }
}

CProgress::~CProgress() {
    if (thread_.joinable()) {
        {
            const std::lock_guard lock(mutex_);
            over_ = true;
        }
        ended_.notify_one();
        thread_.join();
    }
}

void CProgress::Show() {
    const auto start = std::chrono::steady_clock::now();
    bool shown = false;
    std::unique_lock lock(mutex_);
    while (!ended_.wait_for(lock, delay_, [this] { return over_; })) {
        const auto lasted = std::chrono::steady_clock::now() - start;
        console_.err << '\r' << work_ << " ... " << std::chrono::duration_cast<std::chrono::seconds>(lasted).count()
                     << " s" << std::flush;
        shown = true;
    }
    if (shown) {
        console_.err << "\r\x1b[K" << std::flush;
    }
}

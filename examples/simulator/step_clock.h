#pragma once

#include <chrono>
#include <cstdint>

namespace simulator {

/// Counts steps: by time while it runs, and by hand. It is stopped at first.
class CStepClock {
public:
    using TClock = std::chrono::steady_clock;

    explicit CStepClock(std::uint32_t step_milliseconds = 1) : step_(step_milliseconds) {}

    void Start() {
        if (!running_) {
            since_ = TClock::now();
            running_ = true;
        }
    }
    void Stop() {
        steps_ = Steps();
        running_ = false;
    }
    void Step() { ++steps_; }
    /// Back to 0, running on if it runs.
    void Reset() {
        steps_ = 0;
        since_ = TClock::now();
    }
    std::uint64_t Steps() const {
        return running_ ? steps_ + static_cast<std::uint64_t>((TClock::now() - since_) / step_) : steps_;
    }

private:
    std::chrono::milliseconds step_;
    bool running_ = false;
    std::uint64_t steps_ = 0;  ///< up to since_
    TClock::time_point since_;
};

}  // namespace simulator

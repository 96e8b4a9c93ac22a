#include "tools/driver/interrupt.h"

#include <algorithm>
#include <thread>

namespace {

volatile std::sig_atomic_t came = 0;

void Remember(int) { came = 1; }

/// How long a signal may go unnoticed during a wait.
constexpr std::chrono::milliseconds kGlance{20};

}  // namespace

CInterrupt::CInterrupt() {
    came = 0;
    struct sigaction action = {};
    action.sa_handler = Remember;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &before_int_);
    sigaction(SIGTERM, &action, &before_term_);
}

CInterrupt::~CInterrupt() {
    sigaction(SIGINT, &before_int_, nullptr);
    sigaction(SIGTERM, &before_term_, nullptr);
}

bool CInterrupt::Came() { return came != 0; }

bool CInterrupt::WaitUntil(std::chrono::steady_clock::time_point moment) {
    while (!Came()) {
        const auto now = std::chrono::steady_clock::now();
        if (now >= moment) {
            return true;
        }
        std::this_thread::sleep_for(std::min<std::chrono::steady_clock::duration>(kGlance, moment - now));
    }
    return false;
}

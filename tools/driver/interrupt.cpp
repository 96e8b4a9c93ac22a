#include "tools/driver/interrupt.h"

#include <algorithm>
#include <thread>

namespace {

volatile std::sig_atomic_t came = 0;

void Remember(int) { came = 1; }

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

/// How long a signal may go unnoticed during a wait.
constexpr std::chrono::milliseconds kGlance{20};

}  // namespace

CInterrupt::CInterrupt() {
    came = 0;
    std::signal(SIGPIPE, SIG_IGN);
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        const int signal = kSignals[index];
        struct sigaction action = {};
        action.sa_handler = Remember;
        action.sa_flags = SA_RESTART | (signal != SIGHUP ? static_cast<int>(SA_RESETHAND) : 0);
        sigemptyset(&action.sa_mask);
        sigaction(signal, nullptr, &before_[index]);
        if (before_[index].sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

CInterrupt::~CInterrupt() {
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        sigaction(kSignals[index], &before_[index], nullptr);
    }
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

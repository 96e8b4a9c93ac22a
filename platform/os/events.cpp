// A thread is an event that its end signals. A handle holds a share of it, and so do the thread and everyone who waits,
// so that closing a handle pulls nothing away from under anybody.

#include "platform/os/events.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>

namespace kq_os {

namespace {

class CSignal {
public:
    CSignal(bool manual_reset, bool signalled) : manual_reset_(manual_reset), signalled_(signalled) {}

    void Set() {
        const std::lock_guard lock(mutex_);
        signalled_ = true;
        changed_.notify_all();
    }
    void Reset() {
        const std::lock_guard lock(mutex_);
        signalled_ = false;
    }
    bool Wait(std::uint32_t milliseconds) {
        const auto come = [this] { return signalled_; };
        std::unique_lock lock(mutex_);
        if (milliseconds == kInfinite) {
            changed_.wait(lock, come);
        } else if (!changed_.wait_for(lock, std::chrono::milliseconds(milliseconds), come)) {
            return false;
        }
        signalled_ = manual_reset_;
        return true;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool manual_reset_;
    bool signalled_;
};

/// What a handle points to.
struct TObject {
    std::shared_ptr<CSignal> signal;
    bool event;
};

TObject *ObjectOf(HANDLE handle) { return static_cast<TObject *>(handle); }

bool IsEvent(HANDLE handle) { return handle != nullptr && ObjectOf(handle)->event; }

}  // namespace

HANDLE CreateEventA(bool manual_reset, bool signalled) {
    try {
        return std::make_unique<TObject>(TObject{std::make_shared<CSignal>(manual_reset, signalled), true}).release();
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

bool SetEvent(HANDLE event) {
    if (!IsEvent(event)) {
        return false;
    }
    ObjectOf(event)->signal->Set();
    return true;
}

bool ResetEvent(HANDLE event) {
    if (!IsEvent(event)) {
        return false;
    }
    ObjectOf(event)->signal->Reset();
    return true;
}

HANDLE CreateThread(TThreadStart start, void *parameter) {
    if (start == nullptr) {
        return nullptr;
    }
    try {
        auto ended = std::make_shared<CSignal>(true, false);
        auto object = std::make_unique<TObject>(TObject{ended, false});
        std::thread([start, parameter, ended] {
            start(parameter);
            ended->Set();
        }).detach();
        return object.release();
    } catch (const std::bad_alloc &) {
        return nullptr;
    } catch (const std::system_error &) {
        return nullptr;
    }
}

std::uint32_t WaitForSingleObject(HANDLE handle, std::uint32_t milliseconds) {
    if (handle == nullptr) {
        return kWaitFailed;
    }
    const std::shared_ptr<CSignal> signal = ObjectOf(handle)->signal;
    return signal->Wait(milliseconds) ? kWaitObject0 : kWaitTimeout;
}

bool CloseHandle(HANDLE handle) {
    const std::unique_ptr<TObject> object(ObjectOf(handle));
    return object != nullptr;
}

}  // namespace kq_os

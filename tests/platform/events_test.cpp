#include "platform/os/events.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>

namespace {

using namespace kq_os;

constexpr std::uint32_t kShort = 20;
constexpr std::uint32_t kLong = 20000;

TEST(Events, ManualResetStaysAndAutomaticLetsOneThrough) {
    for (const bool manual : {true, false}) {
        for (const bool signalled : {true, false}) {
            HANDLE event = CreateEventA(manual, signalled);
            EXPECT_EQ(WaitForSingleObject(event, 0), signalled ? kWaitObject0 : kWaitTimeout);
            EXPECT_TRUE(SetEvent(event));
            EXPECT_TRUE(SetEvent(event)) << "twice is as good as once";
            EXPECT_EQ(WaitForSingleObject(event, kInfinite), kWaitObject0);
            EXPECT_EQ(WaitForSingleObject(event, kShort), manual ? kWaitObject0 : kWaitTimeout);
            EXPECT_TRUE(SetEvent(event));
            EXPECT_TRUE(ResetEvent(event));
            EXPECT_EQ(WaitForSingleObject(event, 0), kWaitTimeout);
            EXPECT_TRUE(CloseHandle(event));
        }
    }
}

TEST(Events, NullIsRefused) {
    EXPECT_FALSE(SetEvent(nullptr));
    EXPECT_FALSE(ResetEvent(nullptr));
    EXPECT_FALSE(CloseHandle(nullptr));
    EXPECT_EQ(WaitForSingleObject(nullptr, kInfinite), kWaitFailed);
    EXPECT_EQ(CreateThread(nullptr, nullptr), nullptr);
}

/// A worker that comes back when it is cancelled, as a driver's search does.
struct TWorker {
    HANDLE cancel = CreateEventA(true, false);
    HANDLE started = CreateEventA(false, false);
    std::atomic<bool> cancelled{false};

    static std::uint32_t Run(void *parameter) {
        auto &worker = *static_cast<TWorker *>(parameter);
        SetEvent(worker.started);
        worker.cancelled = WaitForSingleObject(worker.cancel, kLong) == kWaitObject0;
        return 0;
    }
};

TEST(Events, ThreadIsSignalledByItsEndOnly) {
    TWorker worker;
    HANDLE thread = CreateThread(TWorker::Run, &worker);
    ASSERT_NE(thread, nullptr);
    ASSERT_EQ(WaitForSingleObject(worker.started, kLong), kWaitObject0);
    EXPECT_EQ(WaitForSingleObject(thread, kShort), kWaitTimeout);
    EXPECT_FALSE(SetEvent(thread)) << "a thread is no event";
    const auto before = std::chrono::steady_clock::now();
    SetEvent(worker.cancel);
    EXPECT_EQ(WaitForSingleObject(thread, kLong), kWaitObject0);
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(kLong / 2));
    EXPECT_TRUE(worker.cancelled);
    for (HANDLE handle : {thread, worker.cancel, worker.started}) {
        EXPECT_TRUE(CloseHandle(handle));
    }
}

TEST(Events, OneSignalWakesAllWhoWait) {
    constexpr std::size_t kWorkers = 8;
    std::array<TWorker, kWorkers> workers;
    HANDLE cancel = CreateEventA(true, false);
    std::array<HANDLE, kWorkers> threads{};
    for (std::size_t at = 0; at < kWorkers; ++at) {
        CloseHandle(workers[at].cancel);
        workers[at].cancel = cancel;
        threads[at] = CreateThread(TWorker::Run, &workers[at]);
        ASSERT_EQ(WaitForSingleObject(workers[at].started, kLong), kWaitObject0);
    }
    SetEvent(cancel);
    for (std::size_t at = 0; at < kWorkers; ++at) {
        EXPECT_EQ(WaitForSingleObject(threads[at], kLong), kWaitObject0);
        EXPECT_TRUE(workers[at].cancelled);
        CloseHandle(threads[at]);
        CloseHandle(workers[at].started);
    }
    CloseHandle(cancel);
}

}  // namespace

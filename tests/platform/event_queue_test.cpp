#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/view/events.h"
#include "platform/view/view.h"

namespace {

/// Does whatever a test gives it.
class CHandler : public CView {
public:
    explicit CHandler(std::function<void(TEvent &)> act) : act_(std::move(act)) {}
    void ReceiveEvent(TEvent &event) override { act_(event); }

private:
    std::function<void(TEvent &)> act_;
};

/// A person who does one thing after the other whenever nothing waits.
class CPerson : public CEventSource {
public:
    CPerson() : former_(SetEventSource(this)) {}
    CPerson(const CPerson &) = delete;
    CPerson &operator=(const CPerson &) = delete;
    ~CPerson() override { SetEventSource(former_); }
    void Wait(CView &window) override {
        windows.push_back(&window);
        ASSERT_LT(next_, actions.size()) << "the loop should have ended";
        actions[next_++]();
    }

    std::vector<std::function<void()>> actions;
    std::vector<CView *> windows;

private:
    std::size_t next_ = 0;
    CEventSource *former_;
};

TEST(EventQueue, FirstInFirstOutWithThoseOnTheWay) {
    std::string log;
    CHandler second([&log](TEvent &event) { log += "s" + std::to_string(event.code); });
    CHandler first([&](TEvent &event) {
        log += "f" + std::to_string(event.code);
        if (event.code == 1) {
            MakeEvent(second, ecCommand, 8);
            Send(second, ecNotice, 9);
        }
    });
    MakeEvent(first, ecCommand, 1, 77);
    MakeEvent(second, ecCommand, kCloseLoop);
    MakeEvent(first, ecCommand, 3);
    EXPECT_EQ(log, "");
    ProcessEvents();
    EXPECT_EQ(log, "f1s9s5f3s8");
}

TEST(EventQueue, WhoEndedGetsNothing) {
    std::string log;
    auto gone = std::make_unique<CHandler>([&log](TEvent &) { log += "gone"; });
    CHandler ending([&](TEvent &) { gone.reset(); });
    CHandler last([&log](TEvent &) { log += "last"; });
    MakeEvent(ending, ecCommand, 1);
    MakeEvent(*gone, ecCommand, 1);
    RegisterTimer(*gone, 1);
    MakeEvent(last, ecCommand, 1);
    ProcessEvents();
    EXPECT_EQ(log, "last");
    EXPECT_EQ(NextTimerIn(), 0xFFFFFFFF);
    std::unique_ptr<CHandler> self;
    self = std::make_unique<CHandler>([&self](TEvent &) { std::exchange(self, nullptr).reset(); });
    MakeEvent(*self, ecCommand, 1);
    ProcessEvents();
    EXPECT_EQ(self, nullptr);
}

TEST(EventQueue, ThreadsPostInTheirOrder) {
    constexpr std::uint32_t kThreads = 4;
    constexpr std::uint32_t kEvents = 5000;
    std::vector<std::uint32_t> next(kThreads, 0);
    std::uint32_t count = 0;
    CHandler window([&](TEvent &event) {
        if (event.code == kEndLoop) {
            return;
        }
        EXPECT_EQ(event.parameter, next[event.code - 100]++);
        if (++count == kThreads * kEvents) {
            MakeEvent(window, ecCommand, kEndLoop);
        }
    });
    std::vector<std::thread> threads;
    for (std::uint32_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([thread, &window] {
            for (std::uint32_t number = 0; number < kEvents; ++number) {
                MakeEvent(window, ecCommand, 100 + thread, number);
            }
        });
    }
    EXPECT_EQ(RunLoop(window), kEndLoop) << "it waits for what threads post";
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(next, std::vector<std::uint32_t>(kThreads, kEvents));
}

TEST(EventQueue, AThreadWakesTheSource) {
    class CWaiting : public CEventSource {
    public:
        void Wait(CView & /*window*/) override { WaitForEvent(); }
        void Wake() override { ++wakes; }
        int wakes = 0;  // guarded by the queue: nobody posts while it is read
    } source;
    CEventSource *const former = SetEventSource(&source);
    CHandler window([](TEvent &) {});
    std::thread thread([&window] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        MakeEvent(window, ecCommand, kCloseLoop);
    });
    EXPECT_EQ(RunLoop(window), kCloseLoop);
    thread.join();
    EXPECT_EQ(source.wakes, 1);
    EXPECT_EQ(SetEventSource(former), &source);
}

TEST(EventQueue, TheInnermostLoopTakesAll) {
    CPerson person;
    std::string log;
    CHandler inner([&log](TEvent &event) { log += "i" + std::to_string(event.code); });
    CHandler outer([&](TEvent &event) {
        log += "o" + std::to_string(event.code);
        if (event.code == 1) {
            EXPECT_EQ(LoopWindow(), &outer);
            const std::uint32_t code = inner.RunModal(outer);
            log += "=" + std::to_string(code);
            EXPECT_EQ(LoopWindow(), &outer);
            EXPECT_EQ(inner.ModalOwner(), nullptr);
        } else if (event.code == kCloseLoop && log.find("again") == std::string::npos) {
            log += "again";
            StopEvent(event);
        }
    });
    person.actions = {
        [&] { MakeEvent(outer, ecCommand, 1); },
        [&] {
            EXPECT_EQ(inner.ModalOwner(), &outer);
            MakeEvent(outer, ecCommand, 2);
            MakeEvent(inner, ecKeyDown, kEndLoop);
            MakeEvent(inner, ecCommand, kEndLoop);
            MakeEvent(outer, ecCommand, 3);
        },
        [&] { MakeEvent(outer, ecCommand, kCloseLoop); },
        [&] { MakeEvent(outer, ecNotice, kCloseLoop); },
    };
    EXPECT_EQ(outer.Exec(), kCloseLoop);
    EXPECT_EQ(log, "o1o2i4i4=4o3o5againo5") << "a key is no command, and a code that is stopped ends nothing";
    EXPECT_EQ(person.windows, (std::vector<CView *>{&outer, &inner, &outer, &outer}));
    EXPECT_EQ(LoopWindow(), nullptr);
}

TEST(Timers, FollowTheManualClock) {
    UseManualTimers(true);
    std::string log;
    CHandler slow([&log](TEvent &event) { log += event.Is(ecTimer) ? 's' : '?'; });
    CHandler once([&](TEvent &) {
        log += 'o';
        ForgetTimer(once);
        RegisterTimer(slow, 1000);
    });
    RegisterTimer(slow, 1000);
    RegisterTimer(once, 300);
    EXPECT_EQ(NextTimerIn(), 300U);
    struct TRow {
        std::uint32_t advance;
        std::string_view log;
        std::uint32_t next;
    };
    for (const TRow &row :
         {TRow{299, "", 1}, {1, "o", 1000}, {999, "o", 1}, {1, "os", 1000}, {0, "os", 1000}, {5000, "oss", 1000}}) {
        AdvanceTimers(row.advance);
        EXPECT_EQ(log, row.log);
        EXPECT_EQ(NextTimerIn(), row.next);
    }
    {
        CHandler brief([&log](TEvent &) { log += 'b'; });
        RegisterTimer(brief, 0);
        AdvanceTimers(1);
    }
    AdvanceTimers(10);
    EXPECT_EQ(log, "ossb");
    ForgetTimer(slow);
    EXPECT_EQ(NextTimerIn(), 0xFFFFFFFF);
    UseManualTimers(false);
    CHandler window([&window](TEvent &event) {
        if (event.Is(ecTimer)) {
            MakeEvent(window, ecCommand, kEndLoop);
        }
    });
    RegisterTimer(window, 5);
    EXPECT_EQ(RunLoop(window), kEndLoop) << "a loop without a source waits for timers";
}

TEST(Mouse, GoesToWhoCapturedItThenToTheParents) {
    std::string log;
    CHandler root([&log](TEvent &) { log += 'r'; });
    CHandler child([&log](TEvent &) { log += 'c'; });
    CHandler stopping([&log](TEvent &event) {
        log += 's';
        StopEvent(event);
    });
    root.Register(child);
    root.Register(stopping);
    child.UserMouse();
    stopping.BeginCaptureMouse();
    child.UserMouse();
    stopping.EndCaptureMouse();
    child.UserMouse();
    EXPECT_EQ(log, "crscr");
}

}  // namespace

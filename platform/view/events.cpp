#include "platform/view/events.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace {

using TClock = std::chrono::steady_clock;

struct TPosted {
    CEventHandler *target = nullptr;
    TEvent event;
};

struct TTimer {
    CEventHandler *handler = nullptr;
    std::uint32_t period = 0;
    std::uint64_t due = 0;
};

/// What waits to be handed out. The mutex guards the queue and the source; the rest is the user interface thread's.
struct TState {
    std::mutex mutex;
    std::condition_variable posted;
    std::deque<TPosted> queue;
    CEventSource *source = nullptr;

    std::vector<TTimer> timers;
    bool manual_clock = false;
    std::uint64_t manual_now = 0;
    std::vector<CView *> loops;

    std::uint64_t Now() const {
        if (manual_clock) {
            return manual_now;
        }
        return static_cast<std::uint64_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(TClock::now().time_since_epoch()).count());
    }
};

/// Never ends: views that live as long as the process still look here.
TState &State() {
    static TState &state = *new TState;
    return state;
}

std::optional<TPosted> TakeEvent() {
    TState &state = State();
    const std::scoped_lock lock(state.mutex);
    if (state.queue.empty()) {
        return std::nullopt;
    }
    const TPosted posted = state.queue.front();
    state.queue.pop_front();
    return posted;
}

bool EndsLoop(const TEvent &event) {
    return event.Is(ecCommand | ecNotice) && (event.code == kEndLoop || event.code == kCloseLoop) && !event.stopped;
}

/// Each timer that is due sends once. A handler may register and forget timers meanwhile.
void SendDueTimers() {
    TState &state = State();
    const std::uint64_t now = state.Now();
    for (;;) {
        const auto due = std::find_if(state.timers.begin(), state.timers.end(),
                                      [now](const TTimer &timer) { return timer.due <= now; });
        if (due == state.timers.end()) {
            return;
        }
        due->due = now + due->period;
        Send(*due->handler, ecTimer, 0);
    }
}

class CLoopGuard {
public:
    explicit CLoopGuard(CView &window) { State().loops.push_back(&window); }
    ~CLoopGuard() { State().loops.pop_back(); }
    CLoopGuard(const CLoopGuard &) = delete;
    CLoopGuard &operator=(const CLoopGuard &) = delete;
};

}  // namespace

CEventHandler::~CEventHandler() {
    ForgetTimer(*this);
    TState &state = State();
    const std::scoped_lock lock(state.mutex);
    std::erase_if(state.queue, [this](const TPosted &posted) { return posted.target == this; });
}

void MakeEvent(CEventHandler &target, std::uint16_t event_class, std::uint32_t code, std::uint32_t parameter) {
    TState &state = State();
    const std::scoped_lock lock(state.mutex);
    state.queue.push_back({&target, {.event_class = event_class, .code = code, .parameter = parameter}});
    state.posted.notify_one();
    if (state.source != nullptr) {
        state.source->Wake();
    }
}

void Send(CEventHandler &target, std::uint16_t event_class, std::uint32_t code, std::uint32_t parameter) {
    TEvent event{.event_class = event_class, .code = code, .parameter = parameter};
    target.ReceiveEvent(event);
}

CEventSource *SetEventSource(CEventSource *source) {
    const std::scoped_lock lock(State().mutex);
    return std::exchange(State().source, source);
}

CEventSource *EventSource() {
    const std::scoped_lock lock(State().mutex);
    return State().source;
}

void WaitForEvent() {
    TState &state = State();
    const std::uint32_t limit = NextTimerIn();
    std::unique_lock lock(state.mutex);
    const auto ready = [&state] { return !state.queue.empty(); };
    if (limit == 0xFFFFFFFF || state.manual_clock) {
        state.posted.wait(lock, ready);
    } else {
        state.posted.wait_for(lock, std::chrono::milliseconds(limit), ready);
    }
}

void ProcessEvents() {
    SendDueTimers();
    while (auto posted = TakeEvent()) {
        posted->target->ReceiveEvent(posted->event);
    }
}

std::uint32_t RunLoop(CView &window) {
    const CLoopGuard guard(window);
    for (;;) {
        SendDueTimers();
        if (auto posted = TakeEvent()) {
            posted->target->ReceiveEvent(posted->event);
            if (EndsLoop(posted->event)) {
                return posted->event.code;
            }
        } else if (State().source != nullptr) {
            State().source->Wait(window);
        } else {
            WaitForEvent();
        }
    }
}

CView *LoopWindow() { return State().loops.empty() ? nullptr : State().loops.back(); }

void RegisterTimer(CEventHandler &handler, std::uint32_t milliseconds) {
    ForgetTimer(handler);
    const std::uint32_t period = std::max<std::uint32_t>(milliseconds, 1);
    State().timers.push_back({&handler, period, State().Now() + period});
}

void ForgetTimer(CEventHandler &handler) {
    std::erase_if(State().timers, [&handler](const TTimer &timer) { return timer.handler == &handler; });
}

std::uint32_t NextTimerIn() {
    const TState &state = State();
    const std::uint64_t now = state.Now();
    std::uint64_t next = 0xFFFFFFFF;
    for (const TTimer &timer : state.timers) {
        next = std::min(next, timer.due > now ? timer.due - now : 0);
    }
    return static_cast<std::uint32_t>(next);
}

void UseManualTimers(bool manual) {
    State().manual_clock = manual;
    for (TTimer &timer : State().timers) {
        timer.due = State().Now() + timer.period;
    }
}

void AdvanceTimers(std::uint32_t milliseconds) {
    State().manual_now += milliseconds;
    SendDueTimers();
}

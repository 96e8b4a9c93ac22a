#pragma once

#include <cstdint>

#include "platform/base/export.h"

/// Events, the queue in which they wait, and the loops that hand them out. One thread, the user interface thread, takes
/// events and works with views; any thread may post.

/// Classes of events, as bits. The numbers are part of the interface.
enum TEventClass : std::uint16_t {
    ecKeyDown = 0x1,
    ecKey = 0x4,
    ecMouse = 0x80,
    ecCommand = 0x1000,
    ecNotice = 0x2000,
    ecTimer = 0x8000,
};

/// Codes of commands that end a loop.
inline constexpr std::uint32_t kEndLoop = 4;
inline constexpr std::uint32_t kCloseLoop = 5;
/// A person asked to close a window.
inline constexpr std::uint32_t kCloseRequest = 0x21;

struct TEvent {
    std::uint16_t event_class = 0;
    std::uint32_t code = 0;
    std::uint32_t parameter = 0;
    bool stopped = false;

    bool Is(unsigned classes) const { return (event_class & classes) != 0; }
};

/// What takes events.
class KQ_API CEventHandler {
public:
    CEventHandler() = default;
    CEventHandler(const CEventHandler &) = delete;
    CEventHandler &operator=(const CEventHandler &) = delete;
    /// Events that wait for the handler and its timers are dropped. No other thread may post to it any more.
    virtual ~CEventHandler();
    virtual void ReceiveEvent(TEvent & /*event*/) {}
};

/// Posts an event at the end of the queue; from any thread.
KQ_API void MakeEvent(CEventHandler &target, std::uint16_t event_class, std::uint32_t code,
                      std::uint32_t parameter = 0);
/// Whoever comes after the present handler leaves the event alone.
inline void StopEvent(TEvent &event) { event.stopped = true; }
/// Hands an event to a handler at once.
KQ_API void Send(CEventHandler &target, std::uint16_t event_class, std::uint32_t code, std::uint32_t parameter = 0);

class CView;

/// Where a loop turns to when no event waits: a window system, or whoever does by program what a person does.
class KQ_API CEventSource {
public:
    virtual ~CEventSource() = default;
    /// Called by the innermost loop, which the window runs. Lets a person do one thing, or waits until an event may
    /// have been posted (WaitForEvent). Returning early does no harm.
    virtual void Wait(CView &window) = 0;
    /// An event was posted; called on the thread that posted it. The source ends its waiting.
    virtual void Wake() {}
    /// A window begins to run while its owner is blocked (CView::RunModal), before it takes its first event.
    virtual void ModalBegan(CView & /*window*/) {}
    /// That window ended with a code. It still has all that it showed.
    virtual void ModalEnded(CView & /*window*/, std::uint32_t /*code*/) {}
};

/// Installs the source of events and gives the one before; null is none: a loop then waits for posted events alone.
KQ_API CEventSource *SetEventSource(CEventSource *source);
KQ_API CEventSource *EventSource();
/// Waits until an event is in the queue or a timer is due.
KQ_API void WaitForEvent();
/// Hands out the timers that are due and all events in the queue, first in first out, also those posted meanwhile.
/// An event that would end a loop ends none here.
KQ_API void ProcessEvents();
/// Runs a loop for a window: hands out events until one of the codes 4 and 5 of a command has been seen by its handler
/// and wasn't stopped; gives that code. The innermost loop takes all events, whoever they are for.
KQ_API std::uint32_t RunLoop(CView &window);
/// The window of the innermost loop; null without a loop.
KQ_API CView *LoopWindow();

/// From now on a handler gets an event of class ecTimer every so many milliseconds, until ForgetTimer. One timer a
/// handler; registering again starts it anew.
KQ_API void RegisterTimer(CEventHandler &handler, std::uint32_t milliseconds);
KQ_API void ForgetTimer(CEventHandler &handler);
/// Milliseconds until the next timer is due, 0 if one is; 0xFFFFFFFF without a timer.
KQ_API std::uint32_t NextTimerIn();
/// Replaces the timers' clock by one that only AdvanceTimers moves, or takes the system's again.
KQ_API void UseManualTimers(bool manual);
/// Moves the manual clock on and hands out what is due.
KQ_API void AdvanceTimers(std::uint32_t milliseconds);

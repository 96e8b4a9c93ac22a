#pragma once

#include <cstdint>

#include "platform/base/export.h"

/// Events and threads under the names that the runtime's other systems give the operations: what a host and its drivers
/// tell each other across threads. A handle belongs to whoever made it, who gives it back once; any number of threads
/// may wait on one. All operations take null and answer that nothing could be done.
namespace kq_os {

/// An event or a thread, null for none.
using HANDLE = void *;

/// A wait without a limit.
inline constexpr std::uint32_t kInfinite = 0xFFFFFFFF;

/// How a wait ended: what was waited for has come; the time was over; the handle was null.
inline constexpr std::uint32_t kWaitObject0 = 0;
inline constexpr std::uint32_t kWaitTimeout = 0x102;
inline constexpr std::uint32_t kWaitFailed = 0xFFFFFFFF;

/// Makes an event, signalled or not; null if memory is short. One with manual reset stays signalled until ResetEvent;
/// any other lets one wait through and is reset by that.
KQ_API HANDLE CreateEventA(bool manual_reset, bool signalled);
/// Signals an event: its waits end. False for a handle that is no event.
KQ_API bool SetEvent(HANDLE event);
KQ_API bool ResetEvent(HANDLE event);

/// What a thread runs; the result isn't kept.
using TThreadStart = std::uint32_t (*)(void *parameter);

/// Starts a thread, whose handle is signalled once it has ended. Null if the system has none to give. Closing the
/// handle leaves the thread alone.
KQ_API HANDLE CreateThread(TThreadStart start, void *parameter);

/// Waits until the event is signalled or the thread has ended, for some milliseconds at most; 0 only asks.
KQ_API std::uint32_t WaitForSingleObject(HANDLE handle, std::uint32_t milliseconds);

/// Gives a handle back. A wait that is under way on it goes on.
KQ_API bool CloseHandle(HANDLE handle);

}  // namespace kq_os

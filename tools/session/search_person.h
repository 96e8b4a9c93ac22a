#pragma once

#include <cstdint>
#include <vector>

#include "platform/view/window.h"
#include "tools/session/event_recorder.h"

/// The person at the two windows of a device search, who does what the script said beforehand.
class CSearchPerson {
public:
    explicit CSearchPerson(CEventRecorder &recorder) : recorder_(recorder) {}

    /// At the window that shows the progress: presses its button at once, or waits.
    void CancelSearches(bool cancel) { cancel_ = cancel; }
    /// At the window that shows what was found: gives check marks to the items of these keys and confirms, or closes.
    void ConfirmItems(std::vector<std::uint32_t> keys);
    void CloseResults() { confirm_ = false; }

    void WindowBegan(CView &window);
    /// Nothing waits to be handled.
    void Act(CView &window);
    void WindowEnded(CView &window, std::uint32_t code);

private:
    void AnswerResult(CWindow &window) const;

    CEventRecorder &recorder_;
    bool cancel_ = false;
    bool confirm_ = false;
    std::vector<std::uint32_t> keys_;
    bool answered_ = false;  ///< the window that runs
};

#pragma once

#include <QTimer>
#include <functional>

#include "platform/view/events.h"

namespace kq_desktop {

/// Lets Qt take part in the toolkit's loops: while no event of the toolkit waits, Qt hands out what a person does.
/// It is in place while it lives.
class CQtEventSource final : public CEventSource {
public:
    CQtEventSource();
    ~CQtEventSource() override;
    CQtEventSource(const CQtEventSource &) = delete;
    CQtEventSource &operator=(const CQtEventSource &) = delete;

    /// Called whenever all events have been handled and nobody did anything yet: what is shown may be brought in step.
    std::function<void()> idle;

    void Wait(CView &window) override;
    void Wake() override;

private:
    CEventSource *former_;
    QTimer timer_;
};

}  // namespace kq_desktop

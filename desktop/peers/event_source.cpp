#include "desktop/peers/event_source.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

#include "platform/view/view.h"

namespace kq_desktop {

CQtEventSource::CQtEventSource() : former_(SetEventSource(this)) { timer_.setSingleShot(true); }

CQtEventSource::~CQtEventSource() { SetEventSource(former_); }

void CQtEventSource::Wait(CView & /*window*/) {
    if (idle) {
        idle();
    }
    constexpr std::uint32_t kNoTimer = 0xFFFFFFFF;
    if (const std::uint32_t next = NextTimerIn(); next != kNoTimer) {
        timer_.start(static_cast<int>(next));
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    // Qt by itself ends widgets only when a loop of its own returns, and there is none.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void CQtEventSource::Wake() {
    if (QAbstractEventDispatcher *dispatcher = QCoreApplication::eventDispatcher()) {
        dispatcher->wakeUp();
    }
}

}  // namespace kq_desktop

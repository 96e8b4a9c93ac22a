#include "configurator/search_progress.h"

#include <algorithm>

#include "configurator/geometry.h"
#include "configurator/texts.h"
#include "platform/base/wide_text.h"

namespace kq_pdt {

namespace {

constexpr std::uint32_t kStyle = 0x802;
constexpr std::int32_t kWidth = 130;
constexpr std::int32_t kDepth = 140;
constexpr TRect kButtonRect = {10, 90, 80, 25};
constexpr std::int32_t kTop = 10;
constexpr std::int32_t kLineGap = 10;
/// Left and right of the widest line, together.
constexpr std::int32_t kMargins = 30;
/// From the button's left edge to the middle of the window.
constexpr std::int32_t kButtonToMiddle = 45;

/// What the worker posts and what the button does.
constexpr std::uint32_t kFound = 0x4B0;
constexpr std::uint32_t kNothing = CSearchProgress::kNothingFound;
constexpr std::uint32_t kCancelSearch = 0x4B2;

}  // namespace

CSearchProgress::CSearchProgress(const CWindow &owner, const TSearchEntries &driver, std::string_view path)
    : driver_(driver), path_(path), button_(texts::kCancel, kCancelSearch) {
    Init(CentredOver(owner, kWidth, kDepth), kStyle, texts::kSearchDevices, nullptr, nullptr);
    for (CStaticText &line : lines_) {
        Register(line);
    }
    button_.NewRect(kButtonRect);
    button_.SetReceiver(this);
    Register(button_);
    ShowLines({"", std::string(texts::kSearching), ""});
}

CSearchProgress::~CSearchProgress() {
    WaitForWorker();
    kq_os::CloseHandle(cancel_event_);
}

bool CSearchProgress::Start() {
    // The person may cancel before the thread has taken its first step.
    cancel_event_ = kq_os::CreateEventA(true, false);
    worker_ = cancel_event_ == nullptr ? nullptr : kq_os::CreateThread(Work, this);
    return worker_ != nullptr;
}

std::uint32_t CSearchProgress::Work(void *parameter) {
    auto &progress = *static_cast<CSearchProgress *>(parameter);
    const bool found = progress.Search();
    MakeEvent(progress, ecCommand, found ? kFound : kNothing);
    return 0;
}

bool CSearchProgress::Search() const {
    if (driver_.load_wide != nullptr) {
        KQPathW path = {};
        kq_base::Widen(path_, path.text);
        return driver_.load_wide(path, AddSearchItemW, ShowSearchProgressW, cancel_event_) != 0;
    }
    if (driver_.load != nullptr) {
        KQPath path = {};
        path_.copy(path.text, path_.size());
        return driver_.load(path, AddSearchItem, ShowSearchProgress, cancel_event_) != 0;
    }
    return false;
}

void CSearchProgress::ShowLines(const TSearchLines &lines) {
    if (cancelled_) {
        return;
    }
    for (std::size_t index = 0; index < lines_.size(); ++index) {
        lines_[index].SetText(lines[index]);
    }
    LayOut();
}

void CSearchProgress::LayOut() {
    TRect area = Rect();
    for (const CStaticText &line : lines_) {
        area.width = std::max(area.width, GetTextW(line.Text()) + kMargins);
    }
    NewRect(area);
    const std::int32_t middle = area.width / 2;
    std::int32_t y = kTop;
    for (CStaticText &line : lines_) {
        const std::int32_t width = GetTextW(line.Text());
        line.NewRect({middle - width / 2, y, width, GetTextD()});
        y += GetTextD() + kLineGap;
    }
    button_.NewRect({middle - kButtonToMiddle, kButtonRect.y, kButtonRect.width, kButtonRect.depth});
    PaintView();
}

void CSearchProgress::Cancel() {
    button_.SetEnabled(false);
    ShowLines({"", std::string(texts::kSearchIsEnding), ""});
    cancelled_ = true;
    kq_os::SetEvent(cancel_event_);
}

void CSearchProgress::ReceiveEvent(TEvent &event) {
    if (event.Is(ecCommand | ecNotice)) {
        switch (event.code) {
            case kFound:
            case kNothing:
                ended_ = true;
                nothing_found_ = event.code == kNothing;
                StopEvent(event);
                MakeEvent(*this, ecCommand, kCloseLoop);
                break;
            case kCloseRequest:
            case kCancelSearch:
                Cancel();
                break;
            default:
                break;
        }
    }
    CWindow::ReceiveEvent(event);
}

std::uint32_t CSearchProgress::Exec() {
    // A code that is meant to end another window ends the base loop as well. The driver is still at work then.
    do {
        CWindow::Exec();
    } while (!ended_);
    WaitForWorker();
    if (cancelled_) {
        return kCloseLoop;
    }
    return nothing_found_ ? kNothingFound : kEndLoop;
}

void CSearchProgress::WaitForWorker() {
    if (worker_ != nullptr) {
        kq_os::WaitForSingleObject(worker_, kq_os::kInfinite);
        kq_os::CloseHandle(worker_);
        worker_ = nullptr;
    }
}

}  // namespace kq_pdt

#include "tools/session/surroundings.h"

#include <utility>

#include "platform/view/events.h"
#include "platform/view/window.h"

namespace {

constexpr std::int32_t kWorkWidth = 1920;
constexpr std::int32_t kWorkDepth = 1080;

TBoxAnswer LastButton(TBoxButtons buttons) {
    switch (buttons) {
        case TBoxButtons::kYesNo:
            return TBoxAnswer::kNo;
        case TBoxButtons::kYesNoCancel:
            return TBoxAnswer::kCancel;
        case TBoxButtons::kOk:
            break;
    }
    return TBoxAnswer::kOk;
}

}  // namespace

CSurroundings::CSurroundings() {
    former_settings_ = SetSettingsStore(&settings_);
    former_handler_ = SetMessageBoxHandler([this](const TMessageBox &box) { return Answer(box); });
    GetWorkArea(former_width_, former_depth_);
    SetWorkArea(kWorkWidth, kWorkDepth);
    UseManualTimers(true);
}

CSurroundings::~CSurroundings() {
    UseManualTimers(false);
    SetWorkArea(former_width_, former_depth_);
    SetMessageBoxHandler(std::move(former_handler_));
    SetSettingsStore(former_settings_);
}

TBoxAnswer CSurroundings::Answer(const TMessageBox &box) {
    TBoxAnswer answer = LastButton(box.buttons);
    const bool has_cancel = box.buttons == TBoxButtons::kYesNoCancel;
    if (box.buttons != TBoxButtons::kOk && !answers_.empty() &&
        (answers_.front() != TBoxAnswer::kCancel || has_cancel)) {
        answer = answers_.front();
        answers_.pop_front();
    }
    recorder_.Box(box, answer);
    return answer;
}

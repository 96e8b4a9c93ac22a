#include "platform/view/message_box.h"

#include <utility>

namespace {

TMessageBoxHandler &Handler() {
    static TMessageBoxHandler handler;
    return handler;
}

}  // namespace

TMessageBoxHandler SetMessageBoxHandler(TMessageBoxHandler handler) {
    return std::exchange(Handler(), std::move(handler));
}

TBoxAnswer DoMessageBox2(const TMessageBox &box) {
    if (Handler()) {
        return Handler()(box);
    }
    switch (box.buttons) {
        case TBoxButtons::kYesNo:
            return TBoxAnswer::kNo;
        case TBoxButtons::kYesNoCancel:
            return TBoxAnswer::kCancel;
        default:
            return TBoxAnswer::kOk;
    }
}

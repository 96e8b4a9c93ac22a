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

EBoxAnswer DoMessageBox2(const TMessageBox &box) {
    if (Handler()) {
        return Handler()(box);
    }
    switch (box.buttons) {
        case EBoxButtons::yesNo:
            return EBoxAnswer::no;
        case EBoxButtons::yesNoCancel:
            return EBoxAnswer::cancel;
        default:
            return EBoxAnswer::ok;
    }
}

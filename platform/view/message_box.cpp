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
        case EBoxButtons::YesNo:
            return EBoxAnswer::No;
        case EBoxButtons::YesNoCancel:
            return EBoxAnswer::Cancel;
        default:
            return EBoxAnswer::Ok;
    }
}

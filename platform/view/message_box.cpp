#include "platform/view/message_box.h"

#include <utility>

namespace {

TMessageBoxHandler &Handler() {
    static TMessageBoxHandler handler;
    return handler;
}

int boxes_shown = 0;

class CShown {
public:
    CShown() { ++boxes_shown; }
    ~CShown() { --boxes_shown; }
    CShown(const CShown &) = delete;
    CShown &operator=(const CShown &) = delete;
};

}  // namespace

TMessageBoxHandler SetMessageBoxHandler(TMessageBoxHandler handler) {
    return std::exchange(Handler(), std::move(handler));
}

TBoxAnswer DoMessageBox2(const TMessageBox &box) {
    // The handler may be replaced while it waits.
    if (const TMessageBoxHandler handler = Handler()) {
        const CShown shown;
        return handler(box);
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

bool IsMessageBoxShown() { return boxes_shown > 0; }

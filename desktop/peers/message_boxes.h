#pragma once

#include "platform/view/message_box.h"

namespace kq_desktop {

/// Lets Qt show the toolkit's message boxes, while it lives.
class CMessageBoxes {
public:
    CMessageBoxes();
    ~CMessageBoxes();
    CMessageBoxes(const CMessageBoxes &) = delete;
    CMessageBoxes &operator=(const CMessageBoxes &) = delete;

private:
    TMessageBoxHandler former_;
};

}  // namespace kq_desktop

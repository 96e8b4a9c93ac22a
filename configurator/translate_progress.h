#pragma once

#include "platform/view/labels.h"
#include "platform/view/window.h"

namespace kq_pdt {

/// The notice in front of a window's middle while its text is translated. It runs no loop: it is shown as long as it
/// lives.
class CTranslateProgress final : public CWindow {
public:
    /// Shows the notice in the view that holds the window; nothing without one, as when the window is the outermost.
    explicit CTranslateProgress(const CWindow &window);

    void ReceiveEvent(TEvent &event) override;

private:
    CStaticText text_;
};

}  // namespace kq_pdt

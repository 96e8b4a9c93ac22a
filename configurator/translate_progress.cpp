#include "configurator/translate_progress.h"

#include "configurator/geometry.h"
#include "configurator/texts.h"

namespace kq_pdt {

CTranslateProgress::CTranslateProgress(const CWindow &window) : text_(texts::kTranslating) {
    constexpr std::uint32_t kStyle = 0x840;
    constexpr std::int32_t kWidth = 200;
    constexpr std::int32_t kDepth = 70;
    if (window.Parent() == nullptr) {
        return;
    }
    Init(CentredOver(window, kWidth, kDepth), kStyle, texts::kTranslateTitle, nullptr, nullptr);
    const TRect client = ClientRect();
    const std::int32_t text_width = GetTextW(texts::kTranslating);
    text_.NewRect({client.x + (client.width - text_width) / 2, client.y + (client.depth - GetTextD()) / 2, text_width,
                   GetTextD()});
    Register(text_);
    window.Parent()->Register(*this);
    SetVisible(true);
    PaintView();
}

void CTranslateProgress::ReceiveEvent(TEvent &event) {
    if (event.Is(ecCommand) && event.code == kCloseRequest) {
        StopEvent(event);
        MakeEvent(*this, ecCommand, kCloseLoop);
    }
    CWindow::ReceiveEvent(event);
}

}  // namespace kq_pdt

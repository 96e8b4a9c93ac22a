#include "platform/view/window.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

/// Units above and below the words of a menu bar.
constexpr std::int32_t kMenuMargin = 4;
constexpr std::int32_t kCharacterWidth = 7;
constexpr std::int32_t kCharacterDepth = 16;

struct TScreen {
    std::int32_t width = 1920;
    std::int32_t depth = 1080;
    TTextMeasure text_width = nullptr;
    std::int32_t text_depth = kCharacterDepth;
};

TScreen &Screen() {
    static TScreen screen;
    return screen;
}

}  // namespace

CWindow::CWindow() { CView::SetVisible(false); }

void CWindow::Init(const TRect &rect, std::uint32_t style, std::string_view title, CMenuBar *menu_bar, CView *status) {
    style_ = style;
    NewRect(rect);
    SetTitle(title);
    menu_bar_ = menu_bar;
    status_ = status;
    for (CView *child : {static_cast<CView *>(menu_bar), status}) {
        if (child != nullptr) {
            Register(*child);
        }
    }
}

void CWindow::Done() { SetVisible(false); }

void CWindow::SetTitle(std::string_view title) {
    if (title != title_) {
        title_ = title;
        Changed(TViewChange::kContent);
    }
}

TRect CWindow::ClientRect() const {
    TRect client{0, 0, Rect().width, Rect().depth};
    if (maximized_) {
        GetWorkArea(client.width, client.depth);
    }
    if (menu_bar_ != nullptr) {
        client.y += GetTextD() + 2 * kMenuMargin;
    }
    if (docked_ != nullptr) {
        client.y += docked_->GetMinD();
    }
    client.depth -= client.y;
    if (status_ != nullptr) {
        client.depth -= status_->Rect().depth;
    }
    client.depth = std::max(client.depth, 0);
    return client;
}

void CWindow::SetWinIcon(std::uint32_t small_icon, std::uint32_t large_icon) {
    small_icon_ = small_icon;
    large_icon_ = large_icon;
    Changed(TViewChange::kContent);
}

void CWindow::Maximize() {
    if (!std::exchange(maximized_, true)) {
        Changed(TViewChange::kArea);
    }
}

void CWindow::Restore() {
    if (std::exchange(maximized_, false)) {
        Changed(TViewChange::kArea);
    }
}

void CWindow::Dock(CToolBox *tool_box) {
    CToolBox *before = std::exchange(docked_, tool_box);
    if (before == tool_box) {
        return;
    }
    if (before != nullptr) {
        Forget(*before);
    }
    if (tool_box != nullptr) {
        Register(*tool_box);
    }
}

void CWindow::SetSelect(bool selected) {
    if (std::exchange(select_, selected) != selected) {
        Changed(TViewChange::kFocus);
    }
}

void CWindow::SetVisible(bool visible) {
    if (visible) {
        // All peers exist before the window's one is asked to show it.
        MakePeers();
    }
    CView::SetVisible(visible);
}

void CWindow::UserMove(const TRect &rect) {
    if (!maximized_) {
        NewRect(rect);
    }
}

void CWindow::UserMaximize(bool maximized) {
    if (maximized) {
        Maximize();
    } else {
        Restore();
    }
}

void CWindow::UserClose() { MakeEvent(*this, ecCommand, kCloseRequest); }

void CWindow::ChildForgotten(CView &child) {
    if (menu_bar_ == &child) {
        menu_bar_ = nullptr;
    }
    if (status_ == &child) {
        status_ = nullptr;
    }
    if (docked_ == &child) {
        docked_ = nullptr;
    }
}

void GetWorkArea(std::int32_t &width, std::int32_t &depth) {
    width = Screen().width;
    depth = Screen().depth;
}

void SetWorkArea(std::int32_t width, std::int32_t depth) {
    Screen().width = width;
    Screen().depth = depth;
}

std::int32_t GetTextW(std::string_view text) {
    if (Screen().text_width != nullptr) {
        return Screen().text_width(text);
    }
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max() / kCharacterWidth;
    return static_cast<std::int32_t>(std::min(text.size(), kMost)) * kCharacterWidth;
}

std::int32_t GetTextD() { return Screen().text_depth; }

void SetTextMeasure(TTextMeasure width, std::int32_t depth) {
    Screen().text_width = width;
    Screen().text_depth = width == nullptr ? kCharacterDepth : depth;
}

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/view/menu_bar.h"
#include "platform/view/tool_box.h"
#include "platform/view/view.h"

/// A window: a title, a menu bar, a docked tool box, a status view at its foot, and between them the client area.
/// Style numbers are passed on to the peer; nothing here depends on them.
class KQ_API CWindow : public CView {
public:
    CWindow();

    TViewKind Kind() const override { return TViewKind::kWindow; }

    /// Menu bar and status view may be null. They aren't owned and become children.
    void Init(const TRect &rect, std::uint32_t style, std::string_view title, CMenuBar *menu_bar, CView *status);
    /// Ends what the window shows. The base one hides it.
    virtual void Done();

    const std::string &Title() const { return title_; }
    void SetTitle(std::string_view title);
    std::uint32_t Style() const { return style_; }
    CMenuBar *MenuBar() const { return menu_bar_; }
    CView *StatusView() const { return status_; }
    /// The area for the views in the window, in its own coordinates; of a maximised window, in the work area.
    TRect ClientRect() const;
    /// The numbers of the icons that stand for the window.
    void SetWinIcon(std::uint32_t small_icon, std::uint32_t large_icon);
    std::uint32_t SmallIcon() const { return small_icon_; }
    std::uint32_t LargeIcon() const { return large_icon_; }

    /// Rect() stays the one that it had before.
    void Maximize();
    void Restore();
    bool IsMaximized() const { return maximized_; }

    /// The tool box under the menu bar, not owned; null undocks. It becomes a child while it is docked.
    void Dock(CToolBox *tool_box);
    CToolBox *DockedToolBox() const { return docked_; }

    /// The window comes to the front, or leaves it.
    virtual void SetSelect(bool selected);
    bool IsSelect() const { return select_; }
    /// A window that becomes visible gets peers, with all that is in it.
    void SetVisible(bool visible) override;

    /// What a person does to the window's frame: moves or sizes it, maximises or restores it, asks to close it (the
    /// command kCloseRequest).
    /// A maximised window isn't moved.
    void UserMove(const TRect &rect);
    void UserMaximize(bool maximized);
    void UserClose();
    void UserSelect(bool selected) { SetSelect(selected); }

protected:
    void ChildForgotten(CView &child) override;

private:
    std::string title_;
    std::uint32_t style_ = 0;
    CMenuBar *menu_bar_ = nullptr;
    CView *status_ = nullptr;
    CToolBox *docked_ = nullptr;
    std::uint32_t small_icon_ = 0;
    std::uint32_t large_icon_ = 0;
    bool maximized_ = false;
    bool select_ = false;
};

/// The size of the screen without what the system keeps for itself. 1920 by 1080 until somebody sets it.
KQ_API void GetWorkArea(std::int32_t &width, std::int32_t &depth);
KQ_API void SetWorkArea(std::int32_t width, std::int32_t depth);
/// The size of a text in the default font, for laying out; a fixed number of units a character until a window system
/// sets its own measure.
KQ_API std::int32_t GetTextW(std::string_view text);
KQ_API std::int32_t GetTextD();
/// Null takes the fixed measure again.
using TTextMeasure = std::int32_t (*)(std::string_view text);
KQ_API void SetTextMeasure(TTextMeasure width, std::int32_t depth);

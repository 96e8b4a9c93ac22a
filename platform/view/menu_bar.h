#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/view/view.h"

class CMenuBar;

/// A menu that opens from a menu bar: a list of items, each with a command.
class KQ_API CPopUpMenu {
public:
    struct TItem {
        std::string text;
        std::uint32_t command = 0;  ///< 0 is no command: such an item can't be chosen
        std::uint32_t icon = 0;     ///< an icon's number, 0 for none
        bool enabled = true;
    };

    explicit CPopUpMenu(std::string_view text) : text_(text) {}

    const std::string &Text() const { return text_; }
    void AddItem(std::string_view text, std::uint32_t command, std::uint32_t icon = 0);
    const std::vector<TItem> &Items() const { return items_; }

private:
    friend class CMenuBar;

    std::string text_;
    std::vector<TItem> items_;
    CMenuBar *bar_ = nullptr;
};

/// The menus of a window. An item that is chosen posts its command, of class ecCommand, to the receiver.
class KQ_API CMenuBar : public CView {
public:
    TViewKind Kind() const override { return TViewKind::kMenuBar; }

    /// Appends an empty menu.
    CPopUpMenu &AddMenu(std::string_view text);
    const std::vector<std::unique_ptr<CPopUpMenu>> &Menus() const { return menus_; }
    /// All items with a command are enabled or disabled.
    void Enable(std::uint32_t command) { EnableItems(command, true); }
    void Disable(std::uint32_t command) { EnableItems(command, false); }
    using CView::IsEnabled;
    /// True if there is an item with the command that is enabled.
    bool IsEnabled(std::uint32_t command) const;
    /// Gives an item another text, such as the name of the step that it would undo. Nothing without such an item.
    void SetItemText(std::uint32_t command, std::string_view text);

    /// Who gets the commands, not owned; without one they are dropped.
    void SetReceiver(CEventHandler *receiver) { receiver_ = receiver; }
    /// A person chooses an item; false if there is none with the command, or it or the bar is
    /// disabled.
    bool UserChoose(std::uint32_t command);

private:
    friend class CPopUpMenu;

    /// Lets an action change all items with a command; true if it changed one.
    template <typename TAction>
    bool ForItems(std::uint32_t command, TAction action);
    void EnableItems(std::uint32_t command, bool enabled);

    std::vector<std::unique_ptr<CPopUpMenu>> menus_;
    CEventHandler *receiver_ = nullptr;
};

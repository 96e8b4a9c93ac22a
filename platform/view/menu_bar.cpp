#include "platform/view/menu_bar.h"

#include <algorithm>

void CPopUpMenu::AddItem(std::string_view text, std::uint32_t command, std::uint32_t icon) {
    items_.push_back({.text = std::string(text), .command = command, .icon = icon, .enabled = true});
    if (bar_ != nullptr) {
        bar_->Changed(TViewChange::kContent);
    }
}

CPopUpMenu &CMenuBar::AddMenu(std::string_view text) {
    menus_.push_back(std::make_unique<CPopUpMenu>(text));
    menus_.back()->bar_ = this;
    Changed(TViewChange::kContent);
    return *menus_.back();
}

template <typename TAction>
bool CMenuBar::ForItems(std::uint32_t command, TAction action) {
    bool changed = false;
    for (const auto &menu : menus_) {
        for (CPopUpMenu::TItem &item : menu->items_) {
            changed |= item.command == command && command != 0 && action(item);
        }
    }
    return changed;
}

void CMenuBar::EnableItems(std::uint32_t command, bool enabled) {
    if (ForItems(command, [enabled](auto &item) { return std::exchange(item.enabled, enabled) != enabled; })) {
        Changed({.change = TViewChange::kEnabled, .first = command});
    }
}

bool CMenuBar::IsEnabled(std::uint32_t command) const {
    return std::any_of(menus_.begin(), menus_.end(), [command](const auto &menu) {
        const auto &items = menu->Items();
        return std::any_of(items.begin(), items.end(), [command](const CPopUpMenu::TItem &item) {
            return item.command == command && command != 0 && item.enabled;
        });
    });
}

void CMenuBar::SetItemText(std::uint32_t command, std::string_view text) {
    if (ForItems(command, [text](auto &item) { return std::exchange(item.text, text) != text; })) {
        Changed({.change = TViewChange::kContent, .first = command});
    }
}

bool CMenuBar::UserChoose(std::uint32_t command) {
    if (!IsEnabled() || !IsEnabled(command)) {
        return false;
    }
    if (receiver_ != nullptr) {
        MakeEvent(*receiver_, ecCommand, command);
    }
    return true;
}

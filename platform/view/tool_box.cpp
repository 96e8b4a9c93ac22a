#include "platform/view/tool_box.h"

#include <algorithm>
#include <utility>

namespace {

/// An icon of 16 units with its frame.
constexpr std::int32_t kButtonDepth = 24;

}  // namespace

void CToolBox::AddButton(std::string_view text, std::uint32_t command, std::uint32_t icon) {
    items_.push_back({.text = std::string(text), .command = command, .icon = icon, .gap = 0, .enabled = true});
    Changed(TViewChange::kContent);
}

void CToolBox::AddGap(std::uint32_t width) {
    items_.push_back({.text = {}, .command = 0, .icon = 0, .gap = width, .enabled = true});
    Changed(TViewChange::kContent);
}

void CToolBox::SetItems(std::vector<TItem> items) {
    items_ = std::move(items);
    Changed(TViewChange::kContent);
}

void CToolBox::Enable(std::uint32_t command, bool enabled) {
    bool changed = false;
    for (TItem &item : items_) {
        if (item.command == command && !item.IsGap()) {
            changed |= std::exchange(item.enabled, enabled) != enabled;
        }
    }
    if (changed) {
        Changed({.change = TViewChange::kEnabled, .first = command});
    }
}

bool CToolBox::IsEnabled(std::uint32_t command) const {
    return std::any_of(items_.begin(), items_.end(), [command](const TItem &item) {
        return item.command == command && !item.IsGap() && item.enabled;
    });
}

std::int32_t CToolBox::GetMinD() const {
    return std::all_of(items_.begin(), items_.end(), [](const TItem &item) { return item.IsGap(); }) ? 0 : kButtonDepth;
}

bool CToolBox::UserPress(std::uint32_t command) {
    if (!IsEnabled() || !IsEnabled(command)) {
        return false;
    }
    if (receiver_ != nullptr) {
        MakeEvent(*receiver_, ecCommand, command);
    }
    return true;
}

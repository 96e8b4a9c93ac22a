// A pointer to a view in a pane is set before the view is registered, so that a peer that hears of the new child reads
// where it lies.

#include "platform/view/panes.h"

#include <algorithm>
#include <utility>

void CSplitterPane::SetPane(TPane pane, CView &view) {
    const auto index = static_cast<std::size_t>(pane);
    CView *before = std::exchange(panes_.at(index), &view);
    if (before == &view) {
        return;
    }
    if (before != nullptr) {
        Forget(*before);
    }
    view.SetVisible(shown_.at(index));
    Register(view);
}

void CSplitterPane::ShowPane(TPane pane, bool shown) {
    const auto index = static_cast<std::size_t>(pane);
    if (std::exchange(shown_.at(index), shown) == shown) {
        return;
    }
    if (panes_.at(index) != nullptr) {
        panes_.at(index)->SetVisible(shown);
    }
    Changed({.change = TViewChange::kVisible, .first = index + 1});
}

void CSplitterPane::SetSplitPosition(std::int32_t position) {
    position = std::max(position, 0);
    if (std::exchange(split_, position) != position) {
        Changed(TViewChange::kArea);
    }
}

void CSplitterPane::UserSplit(std::int32_t position) { SetSplitPosition(std::min(position, Rect().depth)); }

void CSplitterPane::ChildForgotten(CView &child) {
    std::replace(panes_.begin(), panes_.end(), &child, static_cast<CView *>(nullptr));
}

void CTab::AppendTab(std::string_view text, std::uint32_t icon) {
    tabs_.push_back({.text = std::string(text), .icon = icon, .page = nullptr, .enabled = true});
    Changed(TViewChange::kContent);
}

void CTab::RegisterToTabIndex(std::uint32_t tab, CView &page) {
    if (tab == 0 || tab > tabs_.size()) {
        return;
    }
    CView *before = std::exchange(tabs_[tab - 1].page, &page);
    if (before == &page) {
        return;
    }
    if (before != nullptr) {
        Forget(*before);
    }
    page.SetVisible(tab == active_);
    Register(page);
}

void CTab::SetDisableTabIndex(std::uint32_t tab, bool disabled) {
    if (tab != 0 && tab <= tabs_.size() && std::exchange(tabs_[tab - 1].enabled, !disabled) == disabled) {
        Changed({.change = TViewChange::kEnabled, .first = tab});
    }
}

bool CTab::SetActiveTabIndex(std::uint32_t tab) {
    if (tab == 0 || tab > tabs_.size()) {
        return false;
    }
    if (tab == active_) {
        return true;
    }
    if (!tabs_[tab - 1].enabled || !MayActivate(tab)) {
        return false;
    }
    // What was asked may itself have changed the tab.
    const std::uint32_t before = std::exchange(active_, tab);
    if (before != 0 && before != tab && tabs_[before - 1].page != nullptr) {
        tabs_[before - 1].page->SetVisible(false);
    }
    if (tabs_[tab - 1].page != nullptr) {
        tabs_[tab - 1].page->SetVisible(true);
    }
    Changed({.change = TViewChange::kSelection, .first = tab});
    return true;
}

void CTab::ChildForgotten(CView &child) {
    for (TTab &tab : tabs_) {
        if (tab.page == &child) {
            tab.page = nullptr;
        }
    }
}

void CDataContainer::SetContent(CView &view) {
    CView *before = std::exchange(content_, &view);
    if (before == &view) {
        return;
    }
    if (before != nullptr) {
        Forget(*before);
    }
    Register(view);
}

void CDataContainer::ChildForgotten(CView &child) {
    if (content_ == &child) {
        content_ = nullptr;
    }
}

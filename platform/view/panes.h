#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/view/view.h"

/// Views that hold others: two panes beside each other, pages under tabs, a container that scrolls.

/// An upper and a lower pane with a split between them. A pane that is hidden leaves all room to the other.
class KQ_API CSplitterPane : public CView {
public:
    enum class TPane : std::uint8_t { kUpper, kLower };

    TViewKind Kind() const override { return TViewKind::kSplitterPane; }

    /// Puts a view into a pane in place of the one before, not owned; it becomes a child, visible if the pane is shown.
    void SetPane(TPane pane, CView &view);
    CView *Pane(TPane pane) const { return panes_.at(static_cast<std::size_t>(pane)); }
    void ShowPane(TPane pane, bool shown);
    bool IsPaneShown(TPane pane) const { return shown_.at(static_cast<std::size_t>(pane)); }
    /// The distance of the split from the top, at least 0.
    std::int32_t SplitPosition() const { return split_; }
    void SetSplitPosition(std::int32_t position);
    /// A person moves the split, which stays within the view.
    void UserSplit(std::int32_t position);

protected:
    void ChildForgotten(CView &child) override;

private:
    std::array<CView *, 2> panes_ = {};
    std::array<bool, 2> shown_ = {true, true};
    std::int32_t split_ = 0;
};

/// Pages under tabs, of which one is shown. Tabs count from 1.
class KQ_API CTab : public CView {
public:
    struct TTab {
        std::string text;
        std::uint32_t icon = 0;
        CView *page = nullptr;
        bool enabled = true;
    };

    TViewKind Kind() const override { return TViewKind::kTab; }

    void AppendTab(std::string_view text, std::uint32_t icon);
    const std::vector<TTab> &Tabs() const { return tabs_; }
    /// Puts a view on a tab's page in place of the one before, not owned; it becomes a child that is visible while its
    /// tab is active. Nothing for a tab that doesn't exist.
    void RegisterToTabIndex(std::uint32_t tab, CView &page);
    /// Disables a tab, or enables it again.
    void SetDisableTabIndex(std::uint32_t tab, bool disabled);
    /// The active tab, 0 before the first one is.
    std::uint32_t ActiveTabIndex() const { return active_; }
    /// Makes a tab active if MayActivate agrees. True if it is the active one now. The active one is so at once,
    /// without a question; a disabled one, or one that doesn't exist, is never asked about.
    bool SetActiveTabIndex(std::uint32_t tab);
    /// A person clicks a tab.
    bool UserActivate(std::uint32_t tab) { return SetActiveTabIndex(tab); }

protected:
    /// Asked before the active tab changes.
    virtual bool MayActivate(std::uint32_t /*tab*/) { return true; }
    void ChildForgotten(CView &child) override;

private:
    std::vector<TTab> tabs_;
    std::uint32_t active_ = 0;
};

/// A view that holds another one and scrolls it.
class KQ_API CDataContainer : public CView {
public:
    TViewKind Kind() const override { return TViewKind::kDataContainer; }

    /// Puts a view inside in place of the one before, not owned; it becomes a child.
    void SetContent(CView &view);
    CView *Content() const { return content_; }

protected:
    void ChildForgotten(CView &child) override;

private:
    CView *content_ = nullptr;
};

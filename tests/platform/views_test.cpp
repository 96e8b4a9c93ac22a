#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/view/labels.h"
#include "platform/view/list_box.h"
#include "platform/view/panes.h"
#include "platform/view/tree_viewer.h"
#include "platform/view/window.h"
#include "tests/support/recording_peers.h"

namespace {

using enum TViewChange;
using TNotices = std::vector<TViewNotice>;

/// Records the codes of the events that it gets.
class CReceiver : public CEventHandler {
public:
    void ReceiveEvent(TEvent &event) override {
        EXPECT_EQ(event.event_class, ecCommand);
        codes.push_back(event.code);
    }
    std::vector<std::uint32_t> Take() {
        EXPECT_TRUE(codes.empty()) << "posted, not sent";
        ProcessEvents();
        return std::exchange(codes, {});
    }
    std::vector<std::uint32_t> codes;
};

using TCodes = std::vector<std::uint32_t>;

TEST(MenuBar, ChoosesWhatIsEnabled) {
    CRecordingFactory factory;
    CReceiver receiver;
    CMenuBar bar;
    bar.MakePeers();
    CPopUpMenu &first = bar.AddMenu("First");
    first.AddItem("Undo", 7);
    first.AddItem("-", 0);
    bar.AddMenu("Second").AddItem("Undo too", 7, 1006);
    EXPECT_EQ(factory.Take(), TNotices(5, {.change = kContent}));
    EXPECT_TRUE(bar.UserChoose(7)) << "without a receiver the command is dropped";
    bar.SetReceiver(&receiver);
    EXPECT_TRUE(bar.UserChoose(7));
    EXPECT_FALSE(bar.UserChoose(0) || bar.UserChoose(8));
    EXPECT_EQ(receiver.Take(), TCodes{7});
    bar.Disable(7);
    bar.Disable(7);
    bar.Disable(0);
    EXPECT_FALSE(bar.IsEnabled(7) || bar.UserChoose(7) || first.Items()[0].enabled);
    EXPECT_TRUE(first.Items()[1].enabled);
    bar.Enable(7);
    bar.SetItemText(7, "Undo typing");
    bar.SetItemText(7, "Undo typing");
    bar.SetItemText(8, "none");
    EXPECT_EQ(bar.Menus()[1]->Items()[0].text, "Undo typing");
    EXPECT_EQ(factory.Take(), (TNotices{{.change = kEnabled, .first = 7},
                                        {.change = kEnabled, .first = 7},
                                        {.change = kContent, .first = 7}}));
    bar.SetEnabled(false);
    EXPECT_FALSE(bar.UserChoose(7));
    EXPECT_EQ(receiver.Take(), TCodes{});
}

TEST(ToolBox, PressesWhatIsEnabled) {
    CRecordingFactory factory;
    CReceiver receiver;
    CToolBox tools;
    tools.MakePeers();
    tools.SetReceiver(&receiver);
    tools.AddGap(8);
    EXPECT_EQ(tools.GetMinD(), 0);
    tools.AddButton("Save", 5, 1013);
    EXPECT_GT(tools.GetMinD(), 0);
    EXPECT_TRUE(tools.UserPress(5));
    EXPECT_FALSE(tools.UserPress(0) || tools.UserPress(6));
    EXPECT_EQ(receiver.Take(), TCodes{5});
    factory.Take();
    tools.Enable(5, false);
    tools.Enable(5, false);
    tools.Enable(0, false);
    EXPECT_FALSE(tools.IsEnabled(5) || tools.UserPress(5));
    EXPECT_EQ(factory.Take(), (TNotices{{.change = kEnabled, .first = 5}}));
    tools.SetItems({{.text = "Add", .command = 6}});
    EXPECT_TRUE(tools.UserPress(6));
    EXPECT_EQ(receiver.Take(), TCodes{6});
}

TEST(SplitterPane, HidesPanesAndMovesTheSplit) {
    CRecordingFactory factory;
    CSplitterPane splitter;
    CView upper;
    splitter.NewRect({0, 0, 100, 200});
    splitter.SetPane(CSplitterPane::TPane::kUpper, upper);
    splitter.ShowPane(CSplitterPane::TPane::kLower, false);
    auto lower = std::make_unique<CView>();
    splitter.SetPane(CSplitterPane::TPane::kLower, *lower);
    EXPECT_FALSE(lower->IsVisible());
    splitter.MakePeers();
    splitter.ShowPane(CSplitterPane::TPane::kLower, true);
    splitter.ShowPane(CSplitterPane::TPane::kLower, true);
    EXPECT_TRUE(lower->IsVisible() && upper.IsVisible());
    EXPECT_EQ(factory.Take(), (TNotices{{.change = kVisible}, {.change = kVisible, .first = 2}}));
    for (const auto &[asked, position] : {std::pair{50, 50}, {50, 50}, {-1, 0}, {201, 200}}) {
        splitter.UserSplit(asked);
        EXPECT_EQ(splitter.SplitPosition(), position);
    }
    EXPECT_EQ(factory.Take(), TNotices(3, {.change = kArea}));
    lower.reset();
    EXPECT_EQ(splitter.Pane(CSplitterPane::TPane::kLower), nullptr);
    CView other;
    splitter.SetPane(CSplitterPane::TPane::kUpper, other);
    EXPECT_EQ(upper.Parent(), nullptr);
    EXPECT_EQ(splitter.Children(), std::vector<CView *>{&other});
}

class CAskingTab : public CTab {
public:
    std::vector<std::uint32_t> asked;
    bool answer = true;

protected:
    bool MayActivate(std::uint32_t tab) override {
        asked.push_back(tab);
        return answer;
    }
};

TEST(Tab, AsksBeforeItChanges) {
    CRecordingFactory factory;
    CAskingTab tabs;
    CView first;
    CView second;
    tabs.AppendTab("First", 1);
    tabs.AppendTab("Second", 2);
    tabs.RegisterToTabIndex(1, first);
    tabs.RegisterToTabIndex(2, second);
    tabs.RegisterToTabIndex(3, second);
    EXPECT_FALSE(first.IsVisible() || second.IsVisible()) << "none is active yet";
    tabs.MakePeers();
    EXPECT_TRUE(tabs.SetActiveTabIndex(2));
    EXPECT_EQ(factory.Take(), (TNotices{{.change = kVisible}, {.change = kSelection, .first = 2}}));
    EXPECT_TRUE(tabs.UserActivate(2));
    EXPECT_FALSE(tabs.UserActivate(0) || tabs.UserActivate(3));
    EXPECT_EQ(tabs.asked, TCodes{2}) << "nobody is asked about the active tab, nor about none";
    tabs.answer = false;
    EXPECT_FALSE(tabs.UserActivate(1));
    EXPECT_EQ(tabs.ActiveTabIndex(), 2U);
    tabs.answer = true;
    tabs.SetDisableTabIndex(1, true);
    EXPECT_FALSE(tabs.SetActiveTabIndex(1));
    EXPECT_EQ(tabs.asked, (TCodes{2, 1}));
    EXPECT_EQ(factory.Take(), (TNotices{{.change = kEnabled, .first = 1}}));
    tabs.SetDisableTabIndex(1, false);
    EXPECT_TRUE(tabs.SetActiveTabIndex(1));
    EXPECT_TRUE(first.IsVisible() && !second.IsVisible());
}

TEST(ListBox, ReportsRowsAndChoices) {
    CRecordingFactory factory;
    CReceiver receiver;
    CListBox list;
    list.MakePeers();
    list.SetReceiver(&receiver);
    list.AppendRow(1004, "one");
    list.AppendRow(1005, std::string(300, 'x'));
    EXPECT_EQ(list.Rows()[1].text.Length(), 255U);
    EXPECT_TRUE(list.UserChoose(2));
    EXPECT_TRUE(list.UserChoose(2)) << "choosing it again is told again";
    EXPECT_FALSE(list.UserChoose(3));
    EXPECT_EQ(list.SelectedRow(), 2U);
    EXPECT_TRUE(list.UserChoose(0));
    EXPECT_EQ(receiver.Take(), TCodes(3, CListBox::kRowChosen));
    list.SelectRow(1);
    list.SelectRow(3);
    EXPECT_EQ(list.SelectedRow(), 0U);
    EXPECT_EQ(receiver.Take(), TCodes{}) << "the program's choice isn't a person's";
    list.SelectRow(1);
    factory.Take();
    list.Clear();
    list.Clear();
    EXPECT_EQ(factory.Take(), (TNotices{{.change = kSelection}, {.change = kRowsRemoved, .first = 1, .count = 2}}));
}

TEST(Button, PostsItsCommand) {
    CReceiver receiver;
    CButton button("Stop", 9);
    button.SetReceiver(&receiver);
    EXPECT_TRUE(button.UserPress());
    button.SetEnabled(false);
    EXPECT_FALSE(button.UserPress());
    EXPECT_EQ(receiver.Take(), TCodes{9});
}

TEST(Window, LaysOutWhatItHas) {
    CRecordingFactory factory;
    CWindow window;
    CMenuBar menu_bar;
    CView status;
    status.NewRect({0, 0, 0, 20});
    window.Init({10, 20, 400, 300}, 0x4F, "Title", &menu_bar, &status);
    EXPECT_FALSE(window.IsVisible());
    const TRect bare = window.ClientRect();
    EXPECT_EQ(bare.y + bare.depth, 280);
    {
        CToolBox tools;
        tools.AddButton("Save", 5, 1013);
        window.Dock(&tools);
        EXPECT_EQ(window.ClientRect(), (TRect{0, bare.y + tools.GetMinD(), 400, bare.depth - tools.GetMinD()}));
        EXPECT_TRUE(factory.made.empty());
        window.SetVisible(true);
        EXPECT_EQ(factory.made, (std::vector<CView *>{&window, &menu_bar, &status, &tools}));
        EXPECT_EQ(factory.Take(), (TNotices{{.change = kVisible}})) << "the peers exist when it is shown";
        CToolBox others;
        window.Dock(&others);
        EXPECT_EQ(tools.Parent(), nullptr);
        EXPECT_EQ(tools.Peer(), nullptr);
        window.Dock(&tools);
    }
    EXPECT_EQ(window.DockedToolBox(), nullptr);
    EXPECT_EQ(window.ClientRect(), bare);
    window.UserMaximize(true);
    window.UserMove({0, 0, 1, 1});
    EXPECT_EQ(window.Rect(), (TRect{10, 20, 400, 300}));
    EXPECT_EQ(window.ClientRect().width, 1920);
    window.UserMaximize(false);
    window.UserMove({0, 0, 5, 5});
    EXPECT_EQ(window.ClientRect().depth, 0) << "no room is left";
    window.Done();
    EXPECT_FALSE(window.IsVisible());
}

TEST(Window, AsksToCloseByACommand) {
    class CClosing : public CWindow {
    public:
        void ReceiveEvent(TEvent &event) override { code = event.code; }
        std::uint32_t code = 0;
    } window;
    window.UserClose();
    ProcessEvents();
    EXPECT_EQ(window.code, kCloseRequest);
}

TEST(TextMeasure, CanBeReplaced) {
    EXPECT_EQ(GetTextW("abcd"), 4 * GetTextW("x"));
    SetTextMeasure([](std::string_view text) { return static_cast<std::int32_t>(text.size()); }, 3);
    EXPECT_EQ(GetTextW("abcd"), 4);
    EXPECT_EQ(GetTextD(), 3);
    SetTextMeasure(nullptr, 0);
    EXPECT_EQ(GetTextD(), 16);
}

/// Exclusive items clear the marks of their siblings.
class CExclusivePane : public CTreeViewerPane {
public:
    void SetElementTag(TTreeItem &item, bool tagged, bool repaint) override {
        if (item.Has(kTreeItemExclusive)) {
            ClearSiblingTags(item, repaint);
        }
        CTreeViewerPane::SetElementTag(item, tagged, repaint);
    }
};

class CExclusiveTree : public CTreeViewer {
protected:
    std::unique_ptr<CTreeViewerPane> MakePane() override { return std::make_unique<CExclusivePane>(); }
};

TEST(TreeViewer, MarksItems) {
    CRecordingFactory factory;
    CExclusiveTree viewer;
    viewer.Init({0, 0, 10, 10}, {});
    viewer.MakePeers();
    CTreeViewerPane &tree = viewer.Pane();
    TTreeItem &root = tree.AddItem(nullptr, "root");
    TTreeItem &first = tree.AddItem(&root, "first");
    TTreeItem &second = tree.AddItem(&root, "second");
    EXPECT_EQ(factory.Take().back(), (TViewNotice{.change = kRowsInserted, .first = 2, .count = 1, .item = &second}));
    EXPECT_FALSE(tree.UserTag(first, true)) << "it has no mark";
    for (TTreeItem *item : {&root, &first, &second}) {
        item->attributes |= kTreeItemHasMark;
    }
    second.attributes |= kTreeItemExclusive;
    EXPECT_TRUE(tree.UserTag(root, true) && tree.UserTag(first, true) && tree.UserTag(first, true));
    EXPECT_EQ(tree.TaggedItems(), (std::vector{&root, &first}));
    EXPECT_TRUE(tree.UserTag(second, true));
    EXPECT_EQ(tree.TaggedItems(), (std::vector{&root, &second}));
    EXPECT_FALSE(first.Has(kTreeItemTagged));
    factory.Take();
    EXPECT_TRUE(tree.UserTag(root, false));
    EXPECT_EQ(factory.Take(), (TNotices{{.change = kRowsChanged, .count = 1, .item = &root}}));
    EXPECT_EQ(tree.TaggedItems(), std::vector{&second});
}

TEST(TreeViewer, MayBeAMillionItemsDeep) {
    CTreeViewerPane tree;
    TTreeItem *item = nullptr;
    for (int depth = 0; depth < 1000000; ++depth) {
        item = &tree.AddItem(item, "x");
    }
    EXPECT_EQ(&tree.Siblings(*item), &item->parent->items);
}

}  // namespace

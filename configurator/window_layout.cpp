// The views of the window, from the outside in.

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>
#include <vector>

#include "configurator/texts.h"
#include "configurator/window_state.h"

namespace kq_pdt {

namespace {

constexpr std::uint32_t kWindowStyle = 0x4F;
constexpr std::uint32_t kToolGap = 8;
constexpr std::int32_t kChannelsTitleDepth = 25;
constexpr std::int32_t kChannelsTitleX = 5;
constexpr std::int32_t kChannelsTitleY = 2;
/// Buttons of the text view's own tool box that have no place here: files are loaded and saved by the session.
constexpr std::array<std::uint32_t, 3> kDroppedTextTools = {cmTextNew, cmTextOpen, cmTextSave};

void AddSessionButtons(CToolBox &tools) {
    tools.AddButton(texts::kApply, cmApply, icApply);
    tools.AddButton(texts::kClose, cmClose, icClose);
    tools.AddGap(kToolGap);
    tools.AddButton(texts::kSave, cmSave, icSave);
}

}  // namespace

void CWindowSession::BuildMenu() {
    CPopUpMenu &configuration = menu_bar_.AddMenu(texts::kConfigurationMenu);
    configuration.AddItem(texts::kApply, cmApply, icApply);
    configuration.AddItem(texts::kSave, cmSave, icSave);
    configuration.AddItem(texts::kClose, cmClose, icClose);
    CPopUpMenu &tools = menu_bar_.AddMenu(texts::kToolsMenu);
    tools.AddItem(texts::kSearchDevices, cmSearchDevices, icSearchDevices);
    tools.AddItem(texts::kRepairDmf, cmRepairDmf);
    menu_bar_.AddMenu(texts::kHelpMenu).AddItem(texts::kDriverHelp, cmDriverHelp, icDriverHelp);
    CPopUpMenu &edit = menu_bar_.AddMenu(texts::kEditMenu);
    edit.AddItem(texts::kUndo, cmUndo, icTextUndo);
    edit.AddItem(texts::kRedo, cmRedo, icTextRedo);
    menu_bar_.SetReceiver(&window_);
    if (!HasDeviceSearch()) {
        menu_bar_.Disable(cmSearchDevices);
    }
}

void CWindowSession::BuildViews() {
    window_.Init(opening_.rect, kWindowStyle, std::string(texts::kWindowTitle).append(opening_.name.View()), &menu_bar_,
                 &status_line_);
    const TRect client = window_.ClientRect();
    const std::int32_t split = client.depth * 4 / 5;
    window_splitter_.NewRect(client);
    window_splitter_.SetSplitPosition(split);
    tabs_.NewRect({0, 0, client.width, split});
    message_list_.NewRect({0, split, client.width, client.depth - split});
    message_list_.SetReceiver(&window_);
    tabs_.AppendTab(texts::kSheetTab, icSheetTab);
    tabs_.AppendTab(texts::kTextTab, icTextTab);
    // Nothing is to be translated yet, so the tab asks nobody.
    tabs_.SetActiveTabIndex(CConfiguratorWindow::kTextTab);
    tabs_.SetSession(this);
    BuildSheetPage();
    BuildTextPage();
    window_splitter_.SetPane(CSplitterPane::TPane::kUpper, tabs_);
    window_splitter_.SetPane(CSplitterPane::TPane::kLower, message_list_);
    window_splitter_.ShowPane(CSplitterPane::TPane::kLower, false);
    window_.Register(window_splitter_);
}

void CWindowSession::BuildSheetPage() {
    const TRect page = {0, 0, tabs_.Rect().width, tabs_.Rect().depth};
    const std::int32_t split = page.depth * 2 / 3;
    const std::int32_t lower = page.depth - split;
    sheet_splitter_.NewRect(page);
    sheet_splitter_.SetSplitPosition(split);
    sheet_scroller_.NewRect({0, 0, page.width, split});
    sheet_scroller_.SetContent(sheet_);
    sheet_.SetNeighbour(channels_);
    channels_.SetNeighbour(sheet_);
    channels_strip_.NewRect({0, split, page.width, lower});
    channels_title_.NewRect(
        {kChannelsTitleX, kChannelsTitleY, page.width - kChannelsTitleX, kChannelsTitleDepth - kChannelsTitleY});
    channels_scroller_.NewRect({0, kChannelsTitleDepth, page.width, std::max(lower - kChannelsTitleDepth, 0)});
    channels_scroller_.SetContent(channels_);
    channels_strip_.Register(channels_title_);
    channels_strip_.Register(channels_scroller_);
    sheet_splitter_.SetPane(CSplitterPane::TPane::kUpper, sheet_scroller_);
    sheet_splitter_.SetPane(CSplitterPane::TPane::kLower, channels_strip_);
    tabs_.RegisterToTabIndex(CConfiguratorWindow::kSheetTab, sheet_splitter_);
}

void CWindowSession::BuildTextPage() {
    text_container_.NewRect({0, 0, tabs_.Rect().width, tabs_.Rect().depth});
    text_container_.SetContent(ParView());
    ParView().SetStepReceiver(&window_);
    tabs_.RegisterToTabIndex(CConfiguratorWindow::kTextTab, text_container_);
}

void CWindowSession::BuildToolBoxes() {
    AddSessionButtons(sheet_tools_);
    sheet_tools_.AddGap(kToolGap);
    sheet_tools_.AddButton(texts::kInsert, cmInsert, icInsert);
    sheet_tools_.AddButton(texts::kAdd, cmAdd, icAdd);
    sheet_tools_.AddButton(texts::kDelete, cmDelete, icDelete);
    sheet_tools_.SetReceiver(&window_);
    UpdateToolButtons(false, false, false);

    CToolBox &text_tools = ParView().ToolBox();
    std::vector<CToolBox::TItem> own = text_tools.Items();
    std::erase_if(own, [](const CToolBox::TItem &item) {
        return std::find(kDroppedTextTools.begin(), kDroppedTextTools.end(), item.command) != kDroppedTextTools.end();
    });
    text_tools.SetItems({});
    AddSessionButtons(text_tools);
    std::vector<CToolBox::TItem> merged = text_tools.Items();
    std::move(own.begin(), own.end(), std::back_inserter(merged));
    text_tools.SetItems(std::move(merged));
    text_tools.SetReceiver(&window_);
}

}  // namespace kq_pdt

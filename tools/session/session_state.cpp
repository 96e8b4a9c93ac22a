#include "tools/session/session_state.h"

#include <algorithm>
#include <map>

#include "tools/session/script.h"
#include "tools/session/sheet_state.h"

namespace {

TJson DockedJson(CConfiguratorWindow &window) {
    const CToolBox *const docked = window.DockedToolBox();
    if (docked == nullptr) {
        return nullptr;
    }
    return docked == &window.SheetToolBox() ? "sheet" : "text";
}

TJson WindowState(CConfiguratorWindow &window) {
    using enum CSplitterPane::TPane;
    const TRect &rect = window.Rect();
    TJson tabs = TJson::array();
    for (const CTab::TTab &tab : window.Tabs().Tabs()) {
        tabs.push_back({{"text", TextJson(tab.text)}, {"enabled", tab.enabled}});
    }
    return {{"open", true},
            {"title", TextJson(window.Title())},
            {"rectangle", {rect.x, rect.y, rect.width, rect.depth}},
            {"maximised", window.IsMaximized()},
            {"tab", window.Tabs().ActiveTabIndex()},
            {"tabs", std::move(tabs)},
            {"modified", window.IsModified()},
            {"saved", window.ParView().IsSaved()},
            {"messagesShown", window.WindowSplitter().IsPaneShown(kLower)},
            {"channelsShown", window.SheetSplitter().IsPaneShown(kLower)},
            {"status", TextJson(window.StatusText())},
            {"bubble", window.Bubble() == nullptr ? TJson(nullptr) : TextJson(window.Bubble()->Text())},
            {"docked", DockedJson(window)}};
}

template <class Item>
TJson CommandJson(const Item &item) {
    return {{"text", TextJson(item.text)}, {"command", item.command}, {"enabled", item.enabled}};
}

TJson MenuState(CConfiguratorWindow &window) {
    TJson menus = TJson::array();
    if (window.MenuBar() != nullptr) {
        for (const auto &menu : window.MenuBar()->Menus()) {
            TJson items = TJson::array();
            for (const CPopUpMenu::TItem &item : menu->Items()) {
                items.push_back(CommandJson(item));
            }
            menus.push_back({{"text", TextJson(menu->Text())}, {"items", std::move(items)}});
        }
    }
    return menus;
}

TJson ToolsState(CConfiguratorWindow &window) {
    TJson tools = TJson::array();
    for (const CToolBox::TItem &item : window.SheetToolBox().Items()) {
        if (!item.IsGap()) {
            tools.push_back(CommandJson(item));
        }
    }
    return tools;
}

TJson MessagesState(CConfiguratorWindow &window) {
    constexpr std::uint32_t kNoLine = 0xFFFFFFFF;
    const auto number_or_null = [](std::uint32_t number) { return number == 0 ? TJson(nullptr) : TJson(number); };
    TJson rows = TJson::array();
    for (const CListBox::TRow &row : window.Messages().Rows()) {
        const auto position = window.MessagePosition(rows.size() + 1);
        rows.push_back({{"severity", row.icon == icError ? "error" : "warning"},
                        {"text", TextJson(row.text.View())},
                        {"line", number_or_null(position.line == kNoLine ? 0 : position.line)},
                        {"column", number_or_null(position.column)}});
    }
    return {
        {"rows", std::move(rows)}, {"selected", window.Messages().SelectedRow()}, {"current", window.CurrentMessage()}};
}

TJson TextState(CConfiguratorWindow &window) {
    const CTextView &view = window.ParView();
    const bool shown = window.Tabs().ActiveTabIndex() == CConfiguratorWindow::kTextTab;
    std::map<std::string_view, std::uint32_t> colors;
    for (const CTextView::TColoredId &word : view.ColoredIds()) {
        colors[word.name.View()] = word.color;
    }
    TJson words = TJson::array();
    for (const auto &[word, color] : colors) {
        words.push_back(TJson::array({TextJson(word), color}));
    }
    return {{"text", TextJson(view.Text())},
            {"line", shown ? TJson(view.CursorLine() + 1) : TJson(nullptr)},
            {"column", shown ? TJson(view.CursorColumn() + 1) : TJson(nullptr)},
            {"words", std::move(words)},
            {"numberColor", NumberOrNull(view.number_color)}};
}

TJson DmfState(CConfiguratorWindow &window) { return TextJson(window.DmfView().Text()); }

TJson PartState(CConfiguratorWindow &window, const std::string &part) {
    static const std::map<std::string_view, TJson (*)(CConfiguratorWindow &)> readers = {
        {"window", WindowState}, {"menu", MenuState},         {"tools", ToolsState},
        {"sheet", SheetState},   {"channels", ChannelsState}, {"messages", MessagesState},
        {"editor", EditorState}, {"text", TextState},         {"dmf", DmfState}};
    return readers.at(part)(window);
}

}  // namespace

TJson SessionState(CConfiguratorWindow *window, const std::vector<std::string> &parts) {
    if (window == nullptr) {
        return {{"window", {{"open", false}}}};
    }
    TJson state = TJson::object();
    for (const std::string &part : kStateParts) {
        if (parts.empty() || std::find(parts.begin(), parts.end(), part) != parts.end()) {
            state[part] = PartState(*window, part);
        }
    }
    return state;
}

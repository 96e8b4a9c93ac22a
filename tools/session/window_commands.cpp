#include "tools/session/window_commands.h"

#include <algorithm>
#include <optional>

#include "platform/view/controls.h"

namespace {

constexpr TRefusal kDone = {};
constexpr TRefusal kNoItem = "there is no such item, or it is disabled";
constexpr TRefusal kNoSheet = "tab 1 isn't active";
constexpr TRefusal kNoText = "tab 2 isn't active";
constexpr TRefusal kNoEditor = "no editor is open";
constexpr TRefusal kNotFound = "there is none";

TRefusal Unless(bool done, TRefusal reason) { return done ? kDone : reason; }

template <class Item>
std::optional<std::uint32_t> EnabledCommand(const std::vector<Item> &items, std::string_view text) {
    const auto found = std::find_if(items.begin(), items.end(), [text](const Item &item) {
        return item.command != 0 && item.enabled && item.text == text;
    });
    return found == items.end() ? std::nullopt : std::optional(found->command);
}

}  // namespace

void CWindowCommands::LeaveCell() {
    window_.Sheet().UserCommit();
    window_.Channels().UserCommit();
}

TRefusal CWindowCommands::Menu(std::string_view text) {
    CMenuBar *const bar = window_.MenuBar();
    if (bar != nullptr) {
        for (const auto &menu : bar->Menus()) {
            if (const auto command = EnabledCommand(menu->Items(), text)) {
                LeaveCell();
                return Unless(bar->UserChoose(*command), kNoItem);
            }
        }
    }
    return kNoItem;
}

TRefusal CWindowCommands::Tool(std::string_view text) {
    CToolBox *const box = window_.DockedToolBox();
    const auto command = box == nullptr ? std::nullopt : EnabledCommand(box->Items(), text);
    if (!command) {
        return kNoItem;
    }
    LeaveCell();
    return Unless(box->UserPress(*command), kNoItem);
}

TRefusal CWindowCommands::Tab(std::uint32_t tab) {
    CTab &tabs = window_.Tabs();
    if (tabs.ActiveTabIndex() != tab && !tabs.Tabs().at(tab - 1).enabled) {
        return "the tab is disabled";
    }
    LeaveCell();
    tabs.UserActivate(tab);
    return Unless(tabs.ActiveTabIndex() == tab, "the tab didn't change");
}

void CWindowCommands::NextMessage() {
    LeaveCell();
    MakeEvent(window_, ecKeyDown, CConfiguratorWindow::kNextMessageKey);
}

TRefusal CWindowCommands::Message(std::uint32_t row) {
    if (row > window_.Messages().Rows().size()) {
        return "there is no such message";
    }
    LeaveCell();
    return Unless(window_.Messages().UserChoose(row), "there is no such message");
}

TRefusal CWindowCommands::Undo() { return Unless(window_.UserUndo(), kNotFound); }

TRefusal CWindowCommands::Redo() { return Unless(window_.UserRedo(), kNotFound); }

TRefusal CWindowCommands::Find(std::string_view text) { return Unless(window_.UserFind(text, false), kNotFound); }

TRefusal CWindowCommands::NextProblem() { return Unless(window_.UserNextProblem(), kNotFound); }

CSheetView *CWindowCommands::ShownTable(const TPlace &place) {
    using enum CSplitterPane::TPane;
    return window_.SheetSplitter().IsPaneShown(place.channels ? kLower : kUpper)
               ? &(place.channels ? window_.Channels() : window_.Sheet())
               : nullptr;
}

CSheetView *CWindowCommands::EditedTable() {
    for (CSheetView *table : {&window_.Sheet(), &window_.Channels()}) {
        if (table->CellEditor() != nullptr) {
            return table;
        }
    }
    return nullptr;
}

TRefusal CWindowCommands::Select(const TPlace &place) {
    if (window_.Tabs().ActiveTabIndex() != CConfiguratorWindow::kSheetTab) {
        return kNoSheet;
    }
    CSheetView *const table = ShownTable(place);
    CSheetView::TPosition position;
    if (table == nullptr || !FindPosition(*table, place, position)) {
        return "there is no such cell";
    }
    table->UserMouse();
    return Unless(table->UserSelect(position.table, position.row, position.column), "the cell is gone");
}

TRefusal CWindowCommands::Edit(const TPlace &place) {
    if (window_.Tabs().ActiveTabIndex() != CConfiguratorWindow::kSheetTab) {
        return kNoSheet;
    }
    LeaveCell();
    CSheetView *const table = ShownTable(place);
    CSheetView::TPosition position;
    if (table == nullptr || !FindPosition(*table, place, position)) {
        return "there is no such cell";
    }
    return Unless(table->UserEdit(position.table, position.row, position.column), "the cell can't be edited");
}

TRefusal CWindowCommands::Type(std::string_view text) {
    CSheetView *const table = EditedTable();
    if (table == nullptr) {
        return kNoEditor;
    }
    CView *const editor = table->CellEditor();
    switch (editor->Kind()) {
        case TViewKind::kEditBox:
            return Unless(static_cast<CEditBox *>(editor)->UserType(text), "the text can't be typed");
        case TViewKind::kCountBox:
            return Unless(static_cast<CIntegerCountBox *>(editor)->UserType(text),
                          "this is no number, or out of range");
        case TViewKind::kComboBox:
            return Unless(static_cast<CComboBox *>(editor)->UserType(text), "the list takes no other text");
        default:
            return kNoEditor;
    }
}

TRefusal CWindowCommands::Choose(std::uint32_t entry) {
    CSheetView *const table = EditedTable();
    if (table == nullptr || table->CellEditor()->Kind() != TViewKind::kComboBox) {
        return "no list is open";
    }
    return Unless(static_cast<CComboBox *>(table->CellEditor())->UserSelect(entry), "there is no such entry");
}

TRefusal CWindowCommands::Commit() {
    CSheetView *const table = EditedTable();
    return Unless(table != nullptr && table->UserCommit(), kNoEditor);
}

TRefusal CWindowCommands::Cancel() {
    CSheetView *const table = EditedTable();
    return Unless(table != nullptr && table->UserCancel(), kNoEditor);
}

TRefusal CWindowCommands::Enter(std::string_view text) {
    CSheetView *const table = EditedTable();
    if (table != nullptr && table->CellEditor()->Kind() == TViewKind::kComboBox) {
        const auto &list = static_cast<const CComboBox &>(*table->CellEditor());
        for (std::uint32_t entry = 1; entry <= list.EntryCount(); ++entry) {
            if (list.Entry(entry) == text) {
                return Choose(entry);
            }
        }
    }
    return Type(text);
}

TRefusal CWindowCommands::Set(const TPlace &place, std::string_view text) {
    // These are several things that a person does, so what each sets off comes before the next.
    TRefusal refusal = Edit(place);
    ProcessEvents();
    if (!refusal.empty()) {
        return refusal;
    }
    refusal = Enter(text);
    ProcessEvents();
    if (refusal.empty()) {
        return Commit();
    }
    Cancel();
    return refusal;
}

TRefusal CWindowCommands::Replace(std::uint32_t line, std::uint32_t column, std::uint32_t count,
                                  std::string_view text) {
    if (window_.Tabs().ActiveTabIndex() != CConfiguratorWindow::kTextTab) {
        return kNoText;
    }
    return Unless(window_.ParView().UserReplace(line, column, count, text), "there is no such piece of text");
}

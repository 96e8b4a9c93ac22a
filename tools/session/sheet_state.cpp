#include "tools/session/sheet_state.h"

#include "platform/view/controls.h"
#include "tools/session/place.h"
#include "tools/session/session_state.h"

namespace {

constexpr std::uint32_t kFirstTable = 1;

bool OnSheetTab(CConfiguratorWindow &window) {
    return window.Tabs().ActiveTabIndex() == CConfiguratorWindow::kSheetTab;
}

TJson CellJson(CConfiguratorWindow &window, const CSheetView::TPosition &at) {
    CSheetView &sheet = window.Sheet();
    const CSheetView::TCell cell = sheet.ReadCell(at.table, at.row, at.column);
    return {{"text", cell.disabled ? TJson(nullptr) : TextJson(cell.text.View())},
            {"editable", sheet.IsCellEditable(at.table, at.row, at.column)},
            {"disabled", cell.disabled},
            {"bubble", TextJson(window.CellBubble(at.table, at.row, at.column))},
            {"reason", TextOrNullIfEmpty(window.CellReason(at.table, at.row, at.column))}};
}

// Recurses as deep as tables nest: sections, keys, values.
TJson TableJson(CConfiguratorWindow &window, std::uint32_t table) {
    CSheetView &sheet = window.Sheet();
    TJson columns = TJson::array();
    const auto count = static_cast<std::uint32_t>(sheet.Columns(table).size());
    for (std::uint32_t column = 1; column <= count; ++column) {
        columns.push_back(
            TJson::array({TextJson(sheet.Columns(table)[column - 1].text.View()), sheet.ColumnWidth(table, column)}));
    }
    TJson rows = TJson::array();
    const std::uint32_t shown = sheet.ShownRowCount(table);
    for (std::uint32_t row = 1; row <= shown; ++row) {
        TJson cells = TJson::array();
        for (std::uint32_t column = 1; column <= count; ++column) {
            cells.push_back(CellJson(window, {table, row, column}));
        }
        const std::uint32_t below = sheet.SubTable(table, row);
        rows.push_back({{"cells", std::move(cells)},
                        {"problem", TextOrNullIfEmpty(window.RowProblem(table, row))},
                        {"table", below == 0 ? TJson(nullptr) : TableJson(window, below)}});
    }
    const CSheetView::TPosition &selection = sheet.Selection();
    const bool selected = selection.table == table;
    return {{"columns", std::move(columns)},
            {"addable", (sheet.TableStyle(table) & CSheetView::kStyleAppendsAtOnce) != 0},
            {"selected", selected ? TJson::array({selection.row, selection.column}) : TJson(nullptr)},
            {"rows", std::move(rows)}};
}

TJson ChannelCellJson(CSheetView &channels, std::uint32_t row, std::uint32_t column) {
    const CSheetView::TCell cell = channels.ReadCell(kFirstTable, row, column);
    return {{"text", TextJson(cell.text.View())},
            {"editable", channels.IsCellEditable(kFirstTable, row, column)},
            {"color", NumberOrNull(cell.color)},
            {"background", NumberOrNull(cell.background)}};
}

void DescribeCombo(const CComboBox &combo, TJson &json) {
    json["kind"] = "combo";
    json["text"] = TextJson(combo.Text());
    TJson entries = TJson::array();
    for (std::size_t entry = 1; entry <= combo.EntryCount(); ++entry) {
        entries.push_back(TextJson(combo.Entry(entry)));
    }
    json["entries"] = std::move(entries);
    json["selected"] = combo.Selected();
    json["free"] = combo.Mode() == CComboBox::TMode::kFreeText;
}

TJson EditorJson(CSheetView &table, std::string place) {
    TJson json = {{"place", std::move(place)}};
    const CView &editor = *table.CellEditor();
    if (editor.Kind() == TViewKind::kComboBox) {
        DescribeCombo(static_cast<const CComboBox &>(editor), json);
    } else if (editor.Kind() == TViewKind::kCountBox) {
        json["kind"] = "count";
        json["text"] = std::to_string(static_cast<const CIntegerCountBox &>(editor).Value());
    } else {
        json["kind"] = "edit";
        json["text"] = TextJson(static_cast<const CEditBox &>(editor).Text());
    }
    return json;
}

}  // namespace

TJson SheetState(CConfiguratorWindow &window) {
    return OnSheetTab(window) ? TableJson(window, kFirstTable) : TJson(nullptr);
}

TJson ChannelsState(CConfiguratorWindow &window) {
    if (!OnSheetTab(window)) {
        return nullptr;
    }
    CSheetView &channels = window.Channels();
    TJson columns = TJson::array();
    for (const CSheetView::TColumn &column : channels.Columns(kFirstTable)) {
        columns.push_back(TextJson(column.text.View()));
    }
    TJson rows = TJson::array();
    const std::uint32_t count = channels.RowCount(kFirstTable);
    for (std::uint32_t row = 1; row <= count; ++row) {
        TJson cells = TJson::array();
        for (std::uint32_t column = 1; column <= columns.size(); ++column) {
            cells.push_back(ChannelCellJson(channels, row, column));
        }
        rows.push_back({{"cells", std::move(cells)}});
    }
    return {{"columns", std::move(columns)},
            {"selected", channels.GetSelRow()},
            {"highlight", window.IsHighlighting()},
            {"rows", std::move(rows)}};
}

TJson EditorState(CConfiguratorWindow &window) {
    CSheetView &sheet = window.Sheet();
    CSheetView &channels = window.Channels();
    if (sheet.CellEditor() != nullptr) {
        return EditorJson(sheet, PlaceText(sheet, sheet.EditorPosition()));
    }
    if (channels.CellEditor() != nullptr) {
        return EditorJson(channels, "channels " + PlaceText(channels, channels.EditorPosition()));
    }
    return nullptr;
}

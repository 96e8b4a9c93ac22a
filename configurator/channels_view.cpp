#include "configurator/channels_view.h"

#include <array>
#include <string_view>

#include "configurator/texts.h"
#include "model/sheet_data.h"

namespace kq_pdt {

namespace {

constexpr std::uint32_t kTableStyle = 0x14D;
constexpr std::uint32_t kTypeColumn = 3;
constexpr std::uint32_t kDirectionColumn = 4;
/// Text in the sheet's own colour.
constexpr std::uint32_t kNoBackground = 0xFFFFFFFF;

constexpr std::array kTypes = {std::string_view("string"),    std::string_view("boolean"),
                               std::string_view("shortcard"), std::string_view("cardinal"),
                               std::string_view("longcard"),  std::string_view("shortint"),
                               std::string_view("integer"),   std::string_view("longint"),
                               std::string_view("shortreal"), std::string_view("real")};
constexpr std::array kDirections = {std::string_view("input"), std::string_view("output"),
                                    std::string_view("bidirectional")};

}  // namespace

CChannelsView::CChannelsView(CParSheetData &data, CReportWindow &window, CSheetHistory &history)
    : data_(data), window_(window), history_(history) {
    Describe();
}

void CChannelsView::Describe() {
    DeleteTable(kTable);
    if (known_rows_ == 0) {
        DescribeTable(kTable, kTableStyle, "E");
        DescribeColumn(kTable, texts::kNoChannels, 4, 180, 500, 500);
    } else {
        DescribeTable(kTable, kTableStyle, "C");
        for (const std::string_view text : {texts::kFirstColumn, texts::kLastColumn, texts::kTypeColumn,
                                            texts::kDirectionColumn, texts::kCommentColumn}) {
            DescribeColumn(kTable, text, 1, 160, 40, 146);
        }
    }
}

void CChannelsView::RebuildColumns() {
    const std::uint32_t rows = data_.Ranges().RowCount();
    const bool changes_form = (rows == 0) != (known_rows_ == 0);
    known_rows_ = rows;
    if (changes_form) {
        Describe();
        PrepareSheet();
    }
}

void CChannelsView::SetHighlight(bool highlight) {
    highlight_ = highlight;
    Changed(TViewChange::kContent);
}

void CChannelsView::SelectFirstUndefined() {
    std::uint32_t row = 0;
    if (data_.Ranges().FirstUndefinedRow(row)) {
        SelTableCell(kTable, row + 1, 1);
    }
}

std::uint32_t CChannelsView::DS_GetRowCount(std::uint32_t table) {
    return table == kTable ? data_.Ranges().RowCount() : 0;
}

void CChannelsView::DS_ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column, TCell &cell) {
    if (table != kTable || row == 0) {
        return;
    }
    std::uint32_t color = 0;
    std::uint32_t background = kNoBackground;
    if (data_.Ranges().GetCellText(row - 1, column, cell.text, color, background, highlight_)) {
        cell.color = color;
        if (background != kNoBackground) {
            cell.background = background;
        }
    }
}

bool CChannelsView::DS_IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    return table == kTable && row != 0 && data_.Ranges().IsCellEditable(row - 1, column);
}

bool CChannelsView::DS_OpenCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *&editor) {
    if (!DS_IsCellEditable(table, row, column) || (column != kTypeColumn && column != kDirectionColumn)) {
        return false;
    }
    editor_ = std::make_unique<CComboBox>(CComboBox::TMode::kList);
    const kq_base::TText present = ReadCell(table, row, column).text;
    const auto add = [&](std::string_view word) {
        editor_->AppendEntry(word);
        if (present == word) {
            editor_->Select(editor_->EntryCount());
        }
    };
    if (column == kTypeColumn) {
        for (const std::string_view word : kTypes) {
            add(word);
        }
    } else {
        for (const std::string_view word : kDirections) {
            add(word);
        }
    }
    editor = editor_.get();
    return true;
}

void CChannelsView::DS_CloseCellEditor(std::uint32_t /*table*/, std::uint32_t row, std::uint32_t column,
                                       CView * /*editor*/, bool cancelled) {
    const std::unique_ptr<CComboBox> editor = std::move(editor_);
    if (cancelled) {
        return;
    }
    window_.PostCommand(cmCellCommitted, 0);
    const std::string text(editor->Text());
    if (!text.empty() && ReadCell(kTable, row, column).text != text) {
        history_.Do(texts::kStepChannel, [this, row, column, text] { SetCell(row, column, text); });
    }
}

void CChannelsView::SetCell(std::uint32_t row, std::uint32_t column, const std::string &text) {
    bool bad_channel = false;
    data_.BeginEdit();
    data_.Ranges().SetCellText(row - 1, column, text);
    data_.EndEdit(bad_channel);
    Changed({.change = TViewChange::kCell, .table = kTable, .first = row, .column = column});
}

}  // namespace kq_pdt

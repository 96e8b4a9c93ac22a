#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "configurator/editor_content.h"
#include "configurator/sheet_history.h"
#include "configurator/sheet_tables.h"
#include "model/report_window.h"
#include "model/sheet_edit.h"
#include "platform/view/controls.h"
#include "platform/view/labels.h"
#include "platform/view/sheet_view.h"

namespace kq_pdt {

/// The parameter sheet of tab 1: the model's tables (CSheetTables) in the sheet of the toolkit. What a person does here
/// goes to the model through CSheetEdit, and each step that was taken can be taken back (CSheetHistory).
///
/// The members lie in three files: par_sheet_view.cpp (tables, selection, deleting, bubbles), par_sheet_editor.cpp
/// (cell editors and adding) and par_sheet_search.cpp (finding, problems and reasons).
class CParSheetView final : public CSheetView {
public:
    CParSheetView(CParSheetData &data, CReportWindow &window, CSheetHistory &history);
    ~CParSheetView() override;

    /// Lays the sheet out anew, with table 1 alone and no selection.
    void Rebuild();
    void PrepareSheet() override;
    /// Lays the sheet out without a table.
    void ReloadTable(std::uint32_t table);
    /// Deletes the selected row, if it can be deleted; that counts as a change.
    void DeleteSelectedRow();
    void ReadColumnSettings() { RegistryReadSettings(kSettingsPath); }
    void StoreColumnSettings() const { RegistryWriteSettings(kSettingsPath); }
    /// Sets the tool buttons by what is selected.
    void UpdateButtons();
    /// Takes a shown bubble down.
    void HideBubble();
    const CBubble *Bubble() const { return bubble_.get(); }

    /// What a cell's template says to its user, why it is disabled, and why a row wouldn't read back; empty where
    /// there is nothing to say.
    std::string CellBubble(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    std::string CellReason(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    std::string RowProblem(std::uint32_t table, std::uint32_t row);
    /// Selects the next cell whose text holds a text in any case, or the next row that wouldn't read back, after the
    /// selected one in the order in which rows are shown and round again; false if there is none.
    bool FindText(std::string_view text, bool backwards);
    bool SelectNextProblem();
    /// What is wrong with the first row that wouldn't read back; empty if there is none.
    std::string FirstProblem();

    void ReceiveEvent(TEvent &event) override;

protected:
    void DS_Notify(std::uint32_t kind, std::uint32_t table, std::uint32_t row) override;
    std::uint32_t DS_GetRowCount(std::uint32_t table) override;
    void DS_ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column, TCell &cell) override;
    std::uint32_t DS_OpenNode(std::uint32_t table, std::uint32_t row) override;
    bool DS_HasNode(std::uint32_t table, std::uint32_t row) override;
    bool DS_FindNode(std::uint32_t table, std::uint32_t &owner, std::uint32_t &row) override;
    std::uint32_t DS_GetTableStyle(std::uint32_t table, std::uint32_t described) override;
    void DS_ReadColumn(std::uint32_t table, std::uint32_t column, TColumn &described) override;
    bool DS_AppendRow(std::uint32_t table) override;
    bool DS_IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column) override;
    bool DS_HasEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column) override;
    bool DS_OpenCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *&editor) override;
    void DS_CloseCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *editor,
                            bool cancelled) override;
    bool DS_CanCommitEditor() override;

private:
    static constexpr std::string_view kSettingsPath = "\\driver config tool\\Sheet";

    enum class TBubbleState : std::uint8_t { kNone, kTimer, kShown };

    void Describe(std::uint32_t table);
    void ShowBubble();
    void OpenAddList(std::uint32_t table);
    void CommitCell(std::uint32_t table, std::uint32_t row, std::uint32_t column, const CView &editor);
    std::string WrittenTexts();
    bool AddRow(std::uint32_t table, std::size_t choice);

    CParSheetData &data_;
    CReportWindow &window_;
    CSheetHistory &history_;
    CSheetEdit edit_;
    CSheetTables tables_;
    std::unique_ptr<CComboBox> add_list_;
    std::optional<CEditorContent> opened_;  ///< what the editor held when it opened
    bool deleting_ = false;                 ///< the editor's node is about to go
    std::string bubble_text_;
    TBubbleState bubble_state_ = TBubbleState::kNone;
    std::unique_ptr<CBubble> bubble_;
};

}  // namespace kq_pdt

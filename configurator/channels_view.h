#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "configurator/sheet_history.h"
#include "model/report_window.h"
#include "platform/view/controls.h"
#include "platform/view/sheet_view.h"

namespace kq_pdt {

class CParSheetData;

/// The table of all channels on tab 1, one row a range. Types and directions that the template leaves open can be
/// edited; that is a step of the history.
class CChannelsView final : public CSheetView {
public:
    static constexpr std::uint32_t kTable = 1;

    CChannelsView(CParSheetData &data, CReportWindow &window, CSheetHistory &history);

    /// Brings the columns in step with the table: one that says so without ranges, five with them.
    void RebuildColumns();
    /// Undefined cells are shown in warning colours.
    void SetHighlight(bool highlight);
    bool IsHighlighting() const { return highlight_; }
    /// Selects the first row whose type or direction isn't known.
    void SelectFirstUndefined();

protected:
    std::uint32_t DS_GetRowCount(std::uint32_t table) override;
    void DS_ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column, TCell &cell) override;
    bool DS_IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column) override;
    bool DS_OpenCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *&editor) override;
    void DS_CloseCellEditor(std::uint32_t table, std::uint32_t row, std::uint32_t column, CView *editor,
                            bool cancelled) override;
    /// A type or direction that something else has fixed since the editor opened isn't overwritten.
    bool DS_CanCommitEditor() override {
        return DS_IsCellEditable(kTable, EditorPosition().row, EditorPosition().column);
    }

private:
    void Describe();
    void SetCell(std::uint32_t row, std::uint32_t column, const std::string &text);

    CParSheetData &data_;
    CReportWindow &window_;
    CSheetHistory &history_;
    std::unique_ptr<CComboBox> editor_;
    std::uint32_t known_rows_ = 0;
    bool highlight_ = false;
};

}  // namespace kq_pdt

#include "configurator/disabled_reason.h"
#include "configurator/par_sheet_view.h"
#include "configurator/row_problem.h"
#include "configurator/sheet_walk.h"
#include "platform/base/code_page.h"

namespace kq_pdt {

namespace {

/// True if a text holds another in any case; the other is in lower case.
bool HoldsText(std::string_view text, std::string_view lower) {
    std::string folded(text);
    for (char &character : folded) {
        character = kq_base::ToLower(character);
    }
    return folded.find(lower) != std::string::npos;
}

}  // namespace

bool CParSheetView::FindText(std::string_view text, bool backwards) {
    std::string lower(text);
    for (char &character : lower) {
        character = kq_base::ToLower(character);
    }
    CSheetWalk walk(*this, Selection());
    while (backwards ? walk.Back() : walk.Next()) {
        const CSheetWalk::TPosition at = walk.At();
        const TCell cell = ReadCell(at.table, at.row, at.column);
        if (!cell.disabled && HoldsText(cell.text.View(), lower)) {
            return SelTableCell(at.table, at.row, at.column);
        }
    }
    return false;
}

bool CParSheetView::SelectNextProblem() {
    CSheetWalk walk(*this, Selection());
    while (walk.Next()) {
        const CSheetWalk::TPosition at = walk.At();
        if (at.column == 1 && !RowProblem(at.table, at.row).empty()) {
            return SelTableCell(at.table, at.row, 1);
        }
    }
    return false;
}

std::string CParSheetView::FirstProblem() {
    CSheetWalk walk(*this, {});
    while (walk.Next()) {
        const CSheetWalk::TPosition at = walk.At();
        if (at.column != 1) {
            continue;
        }
        if (std::string problem = RowProblem(at.table, at.row); !problem.empty()) {
            return problem;
        }
    }
    return {};
}

std::string CParSheetView::CellReason(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    const CSheetTables::TRow found = tables_.FindRow(table, row);
    const std::uint32_t cell = CSheetTables::EditedCell(found, column);
    return cell != 0 ? DisabledReason(*found.section, found.key, cell) : std::string();
}

std::string CParSheetView::RowProblem(std::uint32_t table, std::uint32_t row) {
    const CSheetTables::TRow found = tables_.FindRow(table, row);
    switch (found.kind) {
        case CSheetTables::TRowKind::kSection:
            return SectionProblem(*found.section);
        case CSheetTables::TRowKind::kKey:
            return KeyProblem(*found.section, *found.key);
        default:
            return {};
    }
}

}  // namespace kq_pdt

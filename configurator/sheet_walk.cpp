#include "configurator/sheet_walk.h"

namespace kq_pdt {

namespace {

constexpr std::uint32_t kRoot = 1;

}  // namespace

CSheetWalk::CSheetWalk(CSheetView &sheet, const TPosition &start) : sheet_(sheet), start_(start), at_(start) {}

bool CSheetWalk::Next() { return Step(false); }

bool CSheetWalk::Back() { return Step(true); }

bool CSheetWalk::Step(bool backwards) {
    if (ended_ || sheet_.RowCount(kRoot) == 0) {
        return false;
    }
    const bool within = at_.table != 0 && (backwards ? StepBack() : StepForward());
    if (!within) {
        // A start that no cell equals, such as a row that adds, is passed once.
        if (wrapped_) {
            return false;
        }
        wrapped_ = start_.table != 0 || at_.table != 0;
        if (at_.table != 0 && start_.table == 0) {
            return false;
        }
        at_ = {kRoot, 1, 1};
        if (backwards) {
            at_.row = sheet_.RowCount(kRoot);
            GoToLastCell();
        }
    }
    ended_ = at_ == start_;
    return true;
}

/// From a row's last cell into its table, from a table's last row back to the row after the one that opens it.
bool CSheetWalk::StepForward() {
    if (at_.row <= sheet_.RowCount(at_.table)) {
        if (at_.column < ColumnCount()) {
            ++at_.column;
            return true;
        }
        const std::uint32_t below = sheet_.SubTable(at_.table, at_.row);
        if (below != 0 && sheet_.RowCount(below) != 0) {
            at_ = {below, 1, 1};
            return true;
        }
    }
    at_.column = 1;
    ++at_.row;
    while (at_.row > sheet_.RowCount(at_.table)) {
        if (!sheet_.FindNode(at_.table, at_.table, at_.row)) {
            return false;
        }
        ++at_.row;
    }
    return true;
}

bool CSheetWalk::StepBack() {
    const std::uint32_t rows = sheet_.RowCount(at_.table);
    if (at_.row > rows) {
        at_ = {at_.table, rows + 1, 1};
    }
    if (at_.column > 1) {
        --at_.column;
        return true;
    }
    if (at_.row > 1) {
        --at_.row;
        GoToLastCell();
        return true;
    }
    std::uint32_t owner = 0;
    std::uint32_t row = 0;
    if (!sheet_.FindNode(at_.table, owner, row)) {
        return false;
    }
    at_ = {owner, row, 1};
    at_.column = ColumnCount();
    return true;
}

/// The last cell of a row and all that opens from it.
void CSheetWalk::GoToLastCell() {
    for (std::uint32_t below = sheet_.SubTable(at_.table, at_.row); below != 0 && sheet_.RowCount(below) != 0;
         below = sheet_.SubTable(at_.table, at_.row)) {
        at_ = {below, sheet_.RowCount(below), 1};
    }
    at_.column = ColumnCount();
}

}  // namespace kq_pdt

#include "desktop/peers/sheet_model.h"

#include <algorithm>
#include <vector>

namespace kq_desktop {

CSheetModel::CSheetModel(CSheetView &sheet, CPeerAdvice &advice) : sheet_(sheet), advice_(advice) { Reset(); }

CSheetModel::TPlace CSheetModel::PlaceOf(const QModelIndex &index) const {
    if (!index.isValid()) {
        return {};
    }
    const auto table = static_cast<std::uint32_t>(index.internalId());
    return {table, static_cast<std::uint32_t>(index.row() + 1 - Headings(table)),
            static_cast<std::uint32_t>(index.column() + 1)};
}

QModelIndex CSheetModel::IndexOf(std::uint32_t table, std::uint32_t row, std::uint32_t column) const {
    std::uint32_t owner = 0;
    std::uint32_t node = 0;
    if (row == 0 || column == 0 || (table != kRoot && !sheet_.FindNode(table, owner, node))) {
        return {};
    }
    const TKnown &known = Know(table, owner, node);
    if (row > known.shown || static_cast<int>(column) > columns_) {
        return {};
    }
    return createIndex(static_cast<int>(row) - 1 + Headings(table), static_cast<int>(column) - 1, quintptr{table});
}

QModelIndex CSheetModel::NodeOf(std::uint32_t table) const {
    const auto known = known_.find(table);
    if (table == kRoot || known == known_.end()) {
        return {};
    }
    const TKnown &node = known->second;
    return createIndex(static_cast<int>(node.row) - 1 + Headings(node.owner), 0, quintptr{node.owner});
}

std::uint32_t CSheetModel::TableBelow(const QModelIndex &index) const {
    const TPlace place = PlaceOf(index);
    return place.row != 0 ? sheet_.SubTable(place.table, place.row) : 0;
}

/// A table becomes known with all those that it lies in, since Qt asks for the way up.
CSheetModel::TKnown &CSheetModel::Know(std::uint32_t table, std::uint32_t owner, std::uint32_t row) const {
    for (std::uint32_t above = owner; above > kRoot && !known_.contains(above);) {
        TKnown node;
        sheet_.FindNode(above, node.owner, node.row);
        node.shown = sheet_.ShownRowCount(above);
        known_.emplace(above, node);
        above = node.owner;
    }
    const auto [position, is_new] = known_.try_emplace(table);
    if (is_new) {
        position->second = {owner, row, sheet_.ShownRowCount(table)};
    }
    return position->second;
}

void CSheetModel::AddColumns(std::uint32_t table) {
    const auto columns = static_cast<int>(sheet_.Columns(table).size());
    if (columns > columns_) {
        beginInsertColumns({}, columns_, columns - 1);
        columns_ = columns;
        endInsertColumns();
    }
}

/// The tables below a row that goes, with all below them.
void CSheetModel::Forget(std::uint32_t owner, std::uint32_t row) {
    std::vector<std::uint32_t> going;
    for (const auto &[table, known] : known_) {
        if (table != kRoot && known.owner == owner && (row == 0 || known.row == row)) {
            going.push_back(table);
        }
    }
    for (const std::uint32_t table : going) {
        Forget(table, 0);
        known_.erase(table);
    }
}

void CSheetModel::ShiftNodes(std::uint32_t owner, std::uint32_t from, bool up) {
    for (auto &[table, known] : known_) {
        if (table != kRoot && known.owner == owner && known.row >= from) {
            known.row += up ? 1U : -1U;
        }
    }
}

void CSheetModel::RowInserted(std::uint32_t table, std::uint32_t row) {
    const auto known = known_.find(table);
    if (known == known_.end() || row == 0 || row > known->second.shown + 1) {
        return;
    }
    const int item = static_cast<int>(row) - 1 + Headings(table);
    beginInsertRows(NodeOf(table), item, item);
    ++known->second.shown;
    ShiftNodes(table, row, true);
    endInsertRows();
}

void CSheetModel::RowRemoved(std::uint32_t table, std::uint32_t row) {
    const auto known = known_.find(table);
    if (known == known_.end() || row == 0 || row > known->second.shown) {
        return;
    }
    const int item = static_cast<int>(row) - 1 + Headings(table);
    beginRemoveRows(NodeOf(table), item, item);
    --known->second.shown;
    Forget(table, row);
    ShiftNodes(table, row + 1, false);
    endRemoveRows();
}

bool CSheetModel::IsInStep(std::uint32_t table, const TKnown &known) const {
    std::uint32_t owner = 0;
    std::uint32_t row = 0;
    return table == kRoot || (sheet_.FindNode(table, owner, row) && owner == known.owner && row == known.row);
}

bool CSheetModel::Sync() {
    for (const auto &[table, known] : known_) {
        if (!IsInStep(table, known)) {
            Reset();
            return false;
        }
    }
    // A sheet that had no row may have had other columns then.
    AddColumns(kRoot);
    for (auto &[table, known] : known_) {
        // What comes or goes without a word of it is at the end: the row that adds others.
        const std::uint32_t shown = sheet_.ShownRowCount(table);
        const int first = static_cast<int>(std::min(shown, known.shown)) + Headings(table);
        const int last = static_cast<int>(std::max(shown, known.shown)) - 1 + Headings(table);
        if (shown > known.shown) {
            beginInsertRows(NodeOf(table), first, last);
            known.shown = shown;
            endInsertRows();
        } else if (shown < known.shown) {
            if (std::any_of(known_.begin(), known_.end(), [table = table, shown](const auto &other) {
                    return other.first != kRoot && other.second.owner == table && other.second.row > shown;
                })) {
                Reset();
                return false;
            }
            beginRemoveRows(NodeOf(table), first, last);
            known.shown = shown;
            endRemoveRows();
        }
    }
    for (const auto &[table, known] : known_) {
        if (known.shown != 0) {
            const QModelIndex node = NodeOf(table);
            Q_EMIT dataChanged(index(0, 0, node), index(rowCount(node) - 1, columns_ - 1, node));
        }
    }
    return true;
}

void CSheetModel::Reset() {
    beginResetModel();
    known_.clear();
    known_[kRoot] = {0, 0, sheet_.ShownRowCount(kRoot)};
    columns_ = std::max(static_cast<int>(sheet_.Columns(kRoot).size()), 1);
    if (columns_ == 1 && known_[kRoot].shown != 0) {
        // A sheet of one column has tables below it, which mostly have three.
        columns_ = 3;
    }
    endResetModel();
}

void CSheetModel::CellChanged(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    if (known_.contains(table)) {
        const QModelIndex cell = IndexOf(table, row, column);
        Q_EMIT dataChanged(cell, cell);
    }
}

QModelIndex CSheetModel::index(int row, int column, const QModelIndex &parent) const {
    if (row < 0 || column < 0 || column >= columns_ || row >= rowCount(parent)) {
        return {};
    }
    return createIndex(row, column, quintptr{parent.isValid() ? TableBelow(parent) : kRoot});
}

QModelIndex CSheetModel::parent(const QModelIndex &index) const {
    return index.isValid() ? NodeOf(static_cast<std::uint32_t>(index.internalId())) : QModelIndex();
}

int CSheetModel::rowCount(const QModelIndex &parent) const {
    if (!parent.isValid()) {
        return static_cast<int>(known_[kRoot].shown);
    }
    const std::uint32_t table = parent.column() == 0 ? TableBelow(parent) : 0;
    if (table == 0) {
        return 0;
    }
    const TPlace place = PlaceOf(parent);
    return static_cast<int>(Know(table, place.table, place.row).shown) + Headings(table);
}

int CSheetModel::columnCount(const QModelIndex & /*parent*/) const { return columns_; }

bool CSheetModel::hasChildren(const QModelIndex &parent) const {
    const TPlace place = PlaceOf(parent);
    return !parent.isValid() || (parent.column() == 0 && place.row != 0 && sheet_.HasSubTable(place.table, place.row));
}

}  // namespace kq_desktop

#include "configurator/sheet_tables.h"

#include <algorithm>

#include "configurator/texts.h"

namespace kq_pdt {

namespace {

constexpr std::uint32_t kLabelWidth = 224;
constexpr std::uint32_t kValueWidth = 160;
/// From so many cells on, the label included, a key doesn't fit a row of three columns.
constexpr std::uint32_t kCellsOfSubTable = 3;

void ReadNodeCell(CSectionDef &section, CKeyDef *key, std::uint32_t cell, TCellField field, kq_base::CTextBuffer &text,
                  bool &disabled) {
    const CScopeGuard section_scope(&section);
    if (key != nullptr) {
        key->GetCellInfo(cell, text, field, disabled);
    } else if (section.Names() != nullptr) {
        text.Clear();
        section.Names()->Items().GetCellInfo(cell, text, field, disabled);
    }
}

/// What the columns of a row for one cell show.
TCellField FieldOf(std::uint32_t column) {
    switch (column) {
        case 1:
            return TCellField::kLabel;
        case 2:
            return TCellField::kValue;
        default:
            return TCellField::kComment;
    }
}

}  // namespace

void CSheetTables::ReadKeyCell(std::uint32_t table, const TRow &row, TCellField field, kq_base::CTextBuffer &text,
                               bool &disabled) {
    const std::uint32_t name_cells = row.key->Names() != nullptr ? row.key->Names()->Items().CountCells() : 0;
    if (row.cell <= name_cells) {
        ReadNodeCell(*row.section, row.key, row.cell, field, text, disabled);
        return;
    }
    const auto &pars = row.key->Pars();
    const std::uint32_t cell = row.cell - name_cells;
    if (cursor_.table != table) {
        cursor_ = {.table = table, .par = 0, .cells_before = 0};
    }
    while (cell <= cursor_.cells_before) {
        cursor_.cells_before -= pars[--cursor_.par]->GetCellCount();
    }
    while (cell - cursor_.cells_before > pars[cursor_.par]->GetCellCount()) {
        cursor_.cells_before += pars[cursor_.par++]->GetCellCount();
    }
    const CScopeGuard section_scope(row.section);
    const CScopeGuard scope(row.key);
    std::uint32_t offset = cell - cursor_.cells_before;
    pars[cursor_.par]->Items().GetCellInfo(offset, text, field, disabled);
}

std::uint32_t CSheetTables::NameCells(CSectionDef &section) {
    return section.Names() != nullptr ? section.Names()->Items().CountCells() : 0;
}

bool CSheetTables::IsGrid(CSectionDef &section) {
    return section.GetColumns() >= kCellsOfSubTable && section.GetColumns() != kNoNumber && section.IsUniform();
}

CSheetTables::TRow CSheetTables::FindRow(std::uint32_t table, std::uint32_t row) {
    if (row == 0) {
        return {};
    }
    if (table == kRoot) {
        const CSectionList &sections = data_.Instances().List();
        if (row <= sections.size()) {
            return {.kind = TRowKind::kSection, .section = sections[row - 1].get()};
        }
        return {.kind = row == sections.size() + 1 ? TRowKind::kAdd : TRowKind::kNone};
    }
    TRow found;
    data_.FindByTable(table, found.section, found.key);
    if (found.key != nullptr) {
        found.cell = row;
        found.kind = row < found.key->GetCellCount() ? TRowKind::kKeyCell : TRowKind::kNone;
    } else if (found.section != nullptr) {
        const std::uint32_t names = NameCells(*found.section);
        const auto &keys = found.section->Keys();
        if (row <= names) {
            found.kind = TRowKind::kNameCell;
            found.cell = row;
        } else if (row - names <= keys.size()) {
            found.kind = TRowKind::kKey;
            found.key = keys[row - names - 1].get();
        } else if (row - names == keys.size() + 1) {
            found.kind = TRowKind::kAdd;
        }
    }
    return found;
}

std::uint32_t CSheetTables::RowCount(std::uint32_t table) {
    if (table == kRoot) {
        return static_cast<std::uint32_t>(data_.Instances().List().size());
    }
    CSectionDef *section = nullptr;
    CKeyDef *key = nullptr;
    data_.FindByTable(table, section, key);
    if (key != nullptr) {
        return key->GetCellCount() - 1;
    }
    return section != nullptr ? NameCells(*section) + static_cast<std::uint32_t>(section->Keys().size()) : 0;
}

void CSheetTables::ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column, kq_base::CTextBuffer &text,
                            bool &disabled) {
    text.Clear();
    disabled = false;
    const TRow found = FindRow(table, row);
    bool ignored = false;
    switch (found.kind) {
        case TRowKind::kNone:
            break;
        case TRowKind::kAdd:
            if (column == 1) {
                text.Append(texts::kAddRow);
            }
            break;
        case TRowKind::kSection:
            if (column == 1 && found.section->Names() != nullptr) {
                const CScopeGuard scope(found.section);
                found.section->Names()->Items().AppendText(text);
            }
            break;
        case TRowKind::kNameCell:
            if (column <= 3) {
                ReadNodeCell(*found.section, nullptr, found.cell, FieldOf(column), text,
                             column == 2 ? disabled : ignored);
            }
            break;
        case TRowKind::kKeyCell:
            if (column <= 3) {
                ReadKeyCell(table, found, FieldOf(column), text, column == 2 ? disabled : ignored);
            }
            break;
        case TRowKind::kKey: {
            const std::uint32_t cells = found.key->GetCellCount();
            const bool flat = found.section->IsUniform() || cells < kCellsOfSubTable;
            if (column == 1 || (flat && column <= cells)) {
                const CScopeGuard scope(found.section);
                found.key->GetCell(column, text, disabled);
            } else if (flat && column == 3) {
                ReadNodeCell(*found.section, found.key, 1, TCellField::kComment, text, ignored);
            }
            break;
        }
    }
}

std::string CSheetTables::BubbleText(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    const TRow found = FindRow(table, row);
    std::uint32_t cell = 0;
    if (found.kind == TRowKind::kNameCell) {
        cell = found.cell;
    } else if (found.kind == TRowKind::kKeyCell) {
        cell = column == 2 ? found.cell : 0;
    } else if (found.kind == TRowKind::kKey) {
        cell = column - 1;
    }
    kq_base::CTextBuffer text;
    bool disabled = false;
    if (cell != 0) {
        ReadNodeCell(*found.section, found.key, cell, TCellField::kBubble, text, disabled);
    }
    return std::string(text.View());
}

std::uint32_t CSheetTables::EditedCell(const TRow &row, std::uint32_t column) {
    switch (row.kind) {
        case TRowKind::kNameCell:
        case TRowKind::kKeyCell:
            return column == 2 ? row.cell : 0;
        case TRowKind::kKey:
            return column >= 2 && !HasSubTable(row) ? column - 1 : 0;
        default:
            return 0;
    }
}

bool CSheetTables::HasCell(const TRow &row, std::uint32_t column) {
    const std::uint32_t cell = EditedCell(row, column);
    return cell != 0 && (row.kind != TRowKind::kKey || cell < row.key->GetCellCount());
}

bool CSheetTables::IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    const TRow found = FindRow(table, row);
    if (found.kind == TRowKind::kAdd) {
        return column == 1 && CanAddRow(table);
    }
    return EditedCell(found, column) != 0;
}

bool CSheetTables::HasSubTable(const TRow &row) {
    if (row.kind == TRowKind::kSection) {
        return row.section->Definition() != nullptr;
    }
    return row.kind == TRowKind::kKey && !row.section->IsUniform() && row.key->GetCellCount() >= kCellsOfSubTable;
}

std::uint32_t CSheetTables::SubTable(const TRow &row) {
    if (!HasSubTable(row)) {
        return 0;
    }
    CDefNode &node = row.key != nullptr ? static_cast<CDefNode &>(*row.key) : *row.section;
    if (node.RowId() == 0) {
        node.SetRowId(data_.AllocTableId());
    }
    return node.RowId();
}

bool CSheetTables::FindNode(std::uint32_t table, std::uint32_t &owner, std::uint32_t &row) {
    CSectionDef *section = nullptr;
    CKeyDef *key = nullptr;
    data_.FindByTable(table, section, key);
    if (key != nullptr && section != nullptr) {
        owner = SubTable({.kind = TRowKind::kSection, .section = section});
        row = NameCells(*section) + static_cast<std::uint32_t>(section->IndexOf(*key)) + 1;
        return true;
    }
    if (section != nullptr) {
        owner = kRoot;
        row = static_cast<std::uint32_t>(data_.Instances().IndexOf(*section)) + 1;
        return true;
    }
    return false;
}

std::string CSheetTables::DescribeColumns(std::uint32_t table, std::vector<TColumn> &columns) {
    columns.clear();
    if (table == kRoot) {
        columns.push_back({texts::kSectionsColumn, kLabelWidth});
        return "1";
    }
    if (IsGridTable(table)) {
        CSectionDef *section = nullptr;
        CKeyDef *key = nullptr;
        data_.FindByTable(table, section, key);
        for (std::uint32_t column = 1; column <= section->GetColumns(); ++column) {
            columns.push_back({column == 1 ? texts::kParameterColumn : std::string_view(), kValueWidth});
        }
        return "G" + std::to_string(section->GetColumns());
    }
    columns.push_back({texts::kParameterColumn, kLabelWidth});
    columns.push_back({texts::kValueColumn, kValueWidth});
    columns.push_back({texts::kCommentColumn, kValueWidth});
    return "3";
}

bool CSheetTables::IsGridTable(std::uint32_t table) {
    CSectionDef *section = nullptr;
    CKeyDef *key = nullptr;
    data_.FindByTable(table, section, key);
    return key == nullptr && section != nullptr && IsGrid(*section);
}

std::string_view CSheetTables::GridColumnText(std::uint32_t table, std::uint32_t column) {
    CSectionDef *section = nullptr;
    CKeyDef *key = nullptr;
    data_.FindByTable(table, section, key);
    column_text_.Clear();
    if (key == nullptr && section != nullptr && column > 1 && !section->Keys().empty()) {
        bool disabled = false;
        ReadNodeCell(*section, section->Keys().front().get(), column - 1, TCellField::kLabel, column_text_, disabled);
    }
    return column_text_.View();
}

bool CSheetTables::CanAddRow(std::uint32_t table) {
    if (table == kRoot) {
        const CSectionList &definitions = data_.Definitions();
        return std::any_of(definitions.begin(), definitions.end(),
                           [this](const auto &definition) { return edit_.CanAddSection(*definition); });
    }
    CSectionDef *section = nullptr;
    CKeyDef *key = nullptr;
    data_.FindByTable(table, section, key);
    return key == nullptr && section != nullptr && section->HasMultipleKeys();
}

bool CSheetTables::AppendsRows(std::uint32_t table) {
    return table == kRoot ? AddableSections().size() == 1 : CanAddRow(table);
}

std::vector<CSectionDef *> CSheetTables::AddableSections() const {
    std::vector<CSectionDef *> addable;
    for (const auto &definition : data_.Definitions()) {
        if (edit_.CanAddSection(*definition)) {
            addable.push_back(definition.get());
        }
    }
    return addable;
}

std::vector<const CKeyDef *> CSheetTables::AddableKeys(const CSectionDef &section) {
    std::vector<const CKeyDef *> addable;
    if (section.Definition() != nullptr) {
        for (const auto &key : section.Definition()->Keys()) {
            if (key->Has(nfMultiple)) {
                addable.push_back(key.get());
            }
        }
    }
    return addable;
}

}  // namespace kq_pdt

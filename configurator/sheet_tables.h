#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/sheet_data.h"
#include "model/sheet_edit.h"

namespace kq_pdt {

/// The model as nested tables. Table 1 has a row for each instance section; a section's table has one for each cell of
/// its name and one for each key; a key whose cells don't fit its row has a table with one row a cell. After the rows
/// of table 1 and of a section comes the row "<přidat>". A section's or key's table has its RowId as id, which it gets
/// the first time somebody asks for it. Rows and columns count from 1.
class CSheetTables {
public:
    static constexpr std::uint32_t kRoot = 1;

    enum class TRowKind : std::uint8_t { kNone, kSection, kNameCell, kKey, kKeyCell, kAdd };

    /// What a row of a table shows.
    struct TRow {
        TRowKind kind = TRowKind::kNone;
        CSectionDef *section = nullptr;  ///< of table 1's kAdd: none
        CKeyDef *key = nullptr;
        std::uint32_t cell = 0;  ///< of kNameCell and kKeyCell, counted from 1 over name and values of the node
    };

    struct TColumn {
        std::string_view text;
        std::uint32_t width;
    };

    CSheetTables(CParSheetData &data, const CSheetEdit &edit) : data_(data), edit_(edit) {}

    TRow FindRow(std::uint32_t table, std::uint32_t row);
    /// The rows without "<přidat>"; 0 for an unknown table.
    std::uint32_t RowCount(std::uint32_t table);
    /// The text of a cell, and whether it is disabled.
    void ReadCell(std::uint32_t table, std::uint32_t row, std::uint32_t column, kq_base::CTextBuffer &text,
                  bool &disabled);
    /// What the template says of a cell to its user.
    std::string BubbleText(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    bool IsCellEditable(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    /// The cell of name or values, from 1, that a column of a row edits; 0 if none.
    static std::uint32_t EditedCell(const TRow &row, std::uint32_t column);

    /// True if the cell that a column of a row edits exists; in a row with fewer cells the columns are used otherwise.
    static bool HasCell(const TRow &row, std::uint32_t column);

    /// The table that opens from a row, which has its id from now on; 0 without one.
    std::uint32_t SubTable(const TRow &row);
    static bool HasSubTable(const TRow &row);
    /// The table and the row in which a table's node lies; false for table 1 and unknown ones.
    bool FindNode(std::uint32_t table, std::uint32_t &owner, std::uint32_t &row);
    /// The section or key of a table; both null for table 1 and unknown ones.
    void FindOwner(std::uint32_t table, CSectionDef *&section, CKeyDef *&key) {
        data_.FindByTable(table, section, key);
    }

    /// The columns of a table with their widths, and the name of their form: tables of one form have equal columns.
    /// The texts live as long as the model isn't changed.
    std::string DescribeColumns(std::uint32_t table, std::vector<TColumn> &columns);
    /// True for the table of a section whose keys are shown as one grid, a row each.
    bool IsGridTable(std::uint32_t table);
    /// The text of a grid's column after the first, which follows the section's first key; empty without a key.
    std::string_view GridColumnText(std::uint32_t table, std::uint32_t column);

    /// True if a row can be added to a table: table 1 or a section's.
    bool CanAddRow(std::uint32_t table);
    /// True if a table's style says so: for table 1 if there is just one definition to add, for a section's if some of
    /// its keys may come several times.
    bool AppendsRows(std::uint32_t table);
    /// The definitions that can be added to table 1, in the template's order.
    std::vector<CSectionDef *> AddableSections() const;
    /// The keys that can be added to a section, likewise.
    static std::vector<const CKeyDef *> AddableKeys(const CSectionDef &section);

private:
    /// Where the cell of a key's table that was read last lies: cells are counted over all values before it, and a
    /// table's next cell is read near the last one.
    struct TCursor {
        std::uint32_t table = 0;
        std::size_t par = 0;
        std::uint32_t cells_before = 0;
    };

    void ReadKeyCell(std::uint32_t table, const TRow &row, TCellField field, kq_base::CTextBuffer &text,
                     bool &disabled);
    static bool IsGrid(CSectionDef &section);
    static std::uint32_t NameCells(CSectionDef &section);

    CParSheetData &data_;
    const CSheetEdit &edit_;
    kq_base::CTextBuffer column_text_;
    TCursor cursor_;
};

}  // namespace kq_pdt

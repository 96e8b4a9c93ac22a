#include "tools/session/place.h"

#include <algorithm>

#include "platform/base/number_text.h"

namespace {

bool ParseNumber(std::string_view text, std::uint32_t &number) {
    return kq_base::ParseDecimal(text, number) && number != 0;
}

}  // namespace

bool ParsePlace(std::string_view word, TPlace &place) {
    const std::size_t colon = word.find(':');
    if (colon == std::string_view::npos || !ParseNumber(word.substr(colon + 1), place.column)) {
        return false;
    }
    std::string_view rows = word.substr(0, colon);
    for (;;) {
        const std::size_t dot = rows.find('.');
        std::uint32_t row = 0;
        if (!ParseNumber(rows.substr(0, dot), row)) {
            return false;
        }
        place.rows.push_back(row);
        if (dot == std::string_view::npos) {
            return true;
        }
        rows.remove_prefix(dot + 1);
    }
}

bool FindPosition(CSheetView &sheet, const TPlace &place, CSheetView::TPosition &position) {
    std::uint32_t table = 1;
    for (std::size_t level = 0; level + 1 < place.rows.size(); ++level) {
        table = place.rows[level] <= sheet.RowCount(table) ? sheet.SubTable(table, place.rows[level]) : 0;
        if (table == 0) {
            return false;
        }
    }
    position = {.table = table, .row = place.rows.back(), .column = place.column};
    return position.row <= sheet.ShownRowCount(table) && position.column <= sheet.Columns(table).size();
}

std::string PlaceText(CSheetView &sheet, const CSheetView::TPosition &position) {
    std::string text = std::to_string(position.row) + ":" + std::to_string(position.column);
    std::uint32_t table = position.table;
    std::uint32_t owner = 0;
    std::uint32_t row = 0;
    while (sheet.FindNode(table, owner, row)) {
        text.insert(0, std::to_string(row) + ".");
        table = owner;
    }
    return text;
}

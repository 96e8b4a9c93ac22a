#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/view/sheet_view.h"

/// A cell as scripts name it: `3.2:1` is column 1 in row 2 of the table that opens from row 3 of the sheet.
struct TPlace {
    bool channels = false;  ///< in the channels table, not in the sheet
    std::vector<std::uint32_t> rows;
    std::uint32_t column = 0;
};

/// Takes `ROW:COLUMN`, numbers from 1, the row a path of numbers with dots between them. False for anything else.
bool ParsePlace(std::string_view word, TPlace &place);

/// The cell of a sheet at a place, also in the row that adds one where the sheet shows it. False if there is none.
bool FindPosition(CSheetView &sheet, const TPlace &place, CSheetView::TPosition &position);

/// A cell of a sheet as scripts name it, without the word that names the channels table.
std::string PlaceText(CSheetView &sheet, const CSheetView::TPosition &position);

#pragma once

#include <cstdint>
#include <vector>

#include "platform/view/sheet_view.h"

namespace kq_pdt {

/// A round over all cells of a sheet in the order in which it shows them with all tables open: a row's cells, then the
/// rows of the table that opens from it. The rows that only add are passed over.
class CSheetWalk {
public:
    using TPosition = CSheetView::TPosition;

    /// The round begins after a position, or before the first cell where the position is none, and ends with it.
    CSheetWalk(CSheetView &sheet, const TPosition &start);

    /// Goes on to the next cell or the one before, around the end of the sheet; false when the round is over.
    bool Next();
    bool Back();
    const TPosition &At() const { return at_; }

private:
    bool Step(bool backwards);
    bool StepForward();
    bool StepBack();
    void GoToLastCell();
    std::uint32_t ColumnCount() { return static_cast<std::uint32_t>(sheet_.Columns(at_.table).size()); }

    CSheetView &sheet_;
    TPosition start_;
    TPosition at_;
    bool wrapped_ = false;
    bool ended_ = false;
};

}  // namespace kq_pdt

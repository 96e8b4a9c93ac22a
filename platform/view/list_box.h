#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/base/bounded_text.h"
#include "platform/view/view.h"

/// A list of rows with an icon and a text, of which one may be selected. Rows count from 1.
class KQ_API CListBox : public CView {
public:
    /// The code, of class ecCommand, that the receiver gets when a person chose a row.
    static constexpr std::uint32_t kRowChosen = 0x49;

    struct TRow {
        std::uint32_t icon = 0;
        kq_base::TText text;
    };

    TViewKind Kind() const override { return TViewKind::kListBox; }

    void AppendRow(std::uint32_t icon, std::string_view text);
    void Clear();
    const std::vector<TRow> &Rows() const { return rows_; }
    /// The selected row, 0 without one.
    std::size_t SelectedRow() const { return selected_; }
    /// Selects a row; 0, or one that doesn't exist, is none.
    void SelectRow(std::size_t row);

    void SetReceiver(CEventHandler *receiver) { receiver_ = receiver; }
    /// A person chooses a row, which posts kRowChosen; 0 takes the selection away and posts it too. False if the row
    /// doesn't exist.
    bool UserChoose(std::size_t row);

private:
    std::vector<TRow> rows_;
    std::size_t selected_ = 0;
    CEventHandler *receiver_ = nullptr;
};

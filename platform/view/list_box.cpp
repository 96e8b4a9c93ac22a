#include "platform/view/list_box.h"

#include <utility>

void CListBox::AppendRow(std::uint32_t icon, std::string_view text) {
    rows_.push_back({icon, kq_base::TText(text)});
    Changed({.change = TViewChange::kRowsInserted, .first = rows_.size(), .count = 1});
}

void CListBox::Clear() {
    SelectRow(0);
    if (const std::size_t count = std::exchange(rows_, {}).size(); count > 0) {
        Changed({.change = TViewChange::kRowsRemoved, .first = 1, .count = count});
    }
}

void CListBox::SelectRow(std::size_t row) {
    row = row > rows_.size() ? 0 : row;
    if (std::exchange(selected_, row) != row) {
        Changed({.change = TViewChange::kSelection, .first = row});
    }
}

bool CListBox::UserChoose(std::size_t row) {
    if (!IsEnabled() || row > rows_.size()) {
        return false;
    }
    SelectRow(row);
    if (receiver_ != nullptr) {
        MakeEvent(*receiver_, ecCommand, kRowChosen);
    }
    return true;
}

#include "model/option_index.h"

#include <algorithm>
#include <numeric>

#include "model/const_item.h"
#include "platform/base/code_page.h"

namespace kq_pdt {

COptionIndex::COptionIndex(const std::vector<COptionEntry> &entries, bool case_sensitive)
    : entries_(entries), case_sensitive_(case_sensitive) {
    std::vector<std::uint32_t> order(entries.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(),
                     [this](std::uint32_t left, std::uint32_t right) { return IsBefore(TextOf(left), TextOf(right)); });
    rows_.reserve(order.size());
    for (const std::uint32_t entry : order) {
        if (!rows_.empty() && !IsBefore(TextOf(rows_.back().entry), TextOf(entry))) {
            rows_.back().entry = entry;
        } else {
            const std::uint32_t previous = rows_.empty() ? kNoNumber : static_cast<std::uint32_t>(rows_.size() - 1);
            rows_.push_back({entry, FirstThatBegins(TextOf(entry), previous)});
        }
    }
}

bool COptionIndex::IsBefore(std::string_view left, std::string_view right) const {
    return case_sensitive_ ? left < right
                           : std::lexicographical_compare(
                                 left.begin(), left.end(), right.begin(), right.end(),
                                 [](char one, char other) { return kq_base::ToUpper(one) < kq_base::ToUpper(other); });
}

/// The first that the text begins with of a row, the row that its entry begins with, and so on.
std::uint32_t COptionIndex::FirstThatBegins(std::string_view text, std::uint32_t row) const {
    while (row != kNoNumber && !HasPartAt(text, 0, TextOf(rows_[row].entry), case_sensitive_)) {
        row = rows_[row].shorter;
    }
    return row;
}

/// All entries that are ordered from an entry that the text begins with up to the text begin with that entry, too. So
/// it is among those that the last one of them begins with.
std::uint32_t COptionIndex::Find(std::string_view text) const {
    const auto after = std::upper_bound(
        rows_.begin(), rows_.end(), text,
        [this](std::string_view searched, const TRow &row) { return IsBefore(searched, TextOf(row.entry)); });
    const std::uint32_t last =
        after == rows_.begin() ? kNoNumber : static_cast<std::uint32_t>(after - rows_.begin()) - 1;
    const std::uint32_t found = FirstThatBegins(text, last);
    return found == kNoNumber ? kNoNumber : rows_[found].entry;
}

}  // namespace kq_pdt

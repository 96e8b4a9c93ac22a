#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/base/bounded_text.h"
#include "platform/base/par_value.h"

namespace kq_pdt {

/// An entry of an `options` item.
struct COptionEntry {
    kq_base::TText text;   ///< what the parameter file holds
    kq_base::TText label;  ///< what the sheet shows
};

/// Finds the entry that a text begins with, without trying all of them. The entries have to live longer, unchanged.
class COptionIndex {
public:
    COptionIndex(const std::vector<COptionEntry> &entries, bool case_sensitive);
    /// The index of the longest entry that the text begins with, of equally long ones the last; kNoNumber without any.
    std::uint32_t Find(std::string_view text) const;

private:
    /// One of those entries that aren't repeated later, in the order of their texts.
    struct TRow {
        std::uint32_t entry;
        std::uint32_t shorter;  ///< the row of the longest other entry that this one begins with, or kNoNumber
    };

    std::string_view TextOf(std::uint32_t entry) const { return entries_[entry].text.View(); }
    bool IsBefore(std::string_view left, std::string_view right) const;
    std::uint32_t FirstThatBegins(std::string_view text, std::uint32_t row) const;

    const std::vector<COptionEntry> &entries_;
    bool case_sensitive_;
    std::vector<TRow> rows_;
};

}  // namespace kq_pdt

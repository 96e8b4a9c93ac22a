#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/base/bounded_text.h"

namespace kq_pdt {

/// The message list of a session: its rows, and for each row the position in the text that it is about.
class CMessageList {
public:
    enum class TIcon { kNotice, kError };

    /// A position in the text; line and column count from 1. A line of 0 or 0xFFFFFFFF is none; a column of 0 isn't
    /// known.
    struct TMessageRecord {
        std::uint32_t line = 0;
        std::uint32_t column = 0;

        bool HasPosition() const { return line != 0 && line != 0xFFFFFFFF; }
    };
    struct TRow {
        TIcon icon = TIcon::kNotice;
        kq_base::TText text;
    };

    /// Appends a row with two texts joined, and its record. An error row also counts.
    void Append(TIcon icon, std::string_view text1, std::string_view text2, std::uint32_t line, std::uint32_t column);
    /// Appends a record alone.
    void AppendRecord(std::uint32_t line, std::uint32_t column) { records_.push_back({line, column}); }
    /// Takes away what was appended after so many rows; the count of errors stays.
    void CutTo(std::size_t rows);
    /// Empties rows and records; the count of errors stays.
    void Clear();

    const std::vector<TRow> &Rows() const { return rows_; }
    const std::vector<TMessageRecord> &Records() const { return records_; }
    /// Errors since the count was last reset.
    std::uint32_t ErrorCount() const { return error_count_; }
    void ResetErrorCount() { error_count_ = 0; }

private:
    std::vector<TRow> rows_;
    std::vector<TMessageRecord> records_;
    std::uint32_t error_count_ = 0;
};

}  // namespace kq_pdt

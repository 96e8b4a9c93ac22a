#pragma once

#include <cstdint>
#include <string_view>

#include "scanner/tape_reader.h"
#include "template/language/keyword_reader.h"

namespace kq_pdt {

/// Reads the text of a driver map for the table of channel ranges. It knows only the words of the template language, so
/// small letters, long directions and no `buffer`; it compares no bounds and reports nothing: the first entry that it
/// can't take ends the reading.
class CDmfTableReader {
public:
    struct TEntry {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::uint32_t type = 0;  ///< keyword codes
        std::uint32_t direction = 0;
    };

    /// The text must outlive the reader.
    explicit CDmfTableReader(std::string_view text);

    /// The next entry; false at the end of the text and at an entry that doesn't fit.
    bool Next(TEntry &entry);

    /// True once an entry didn't fit; then its position and its line, counted from 1.
    bool Stopped() const { return stopped_; }
    const par_scanner::TPosition &StopPosition() const { return entry_position_; }
    std::uint32_t StopLine() const { return entry_line_; }

    /// The line of a `begin` in other letters before the first true one, where a channel map would begin to read; 0
    /// if there is none.
    std::uint32_t OtherBeginLine() const { return other_begin_line_; }

private:
    bool FindBegin();
    bool FindNumber();
    bool ReadEntry(TEntry &entry);
    bool ReadNumber(std::uint32_t &number);

    CKeywordReader reader_;
    bool begun_ = false;
    bool stopped_ = false;
    par_scanner::TPosition entry_position_;
    std::uint32_t entry_line_ = 0;
    std::uint32_t other_begin_line_ = 0;
};

}  // namespace kq_pdt

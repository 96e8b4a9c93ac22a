#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "scanner/byte_block.h"

/// Looks at the bytes of a text many at a time. All of this reads up to kMargin bytes beyond the text's end, which must
/// be line feeds.
namespace par_scanner::detail {

inline constexpr std::uint32_t kMargin = 80;

/// The parts of a regular line (scanner/odd_line_search.h).
struct TLine {
    const char *name;       ///< the key text: what precedes the `=`, or the line, without the blanks around it
    const char *name_end;   ///< its end
    const char *equal;      ///< the first `=` outside strings and comments, or null
    const char *line_feed;  ///< the line's end, or the text's
};

/// Measures lines one after the other. Sixty-four bytes are looked at in one go, which mostly are several lines.
class CLineWindow {
public:
    explicit CLineWindow(const char *text) : window_(text) {}

    /// The regular line that begins here, not before the text that the window was made for.
    TLine Measure(const char *begin) {
        auto ahead = static_cast<std::size_t>(begin - window_);
        if (ahead >= kWideSize || ends_ >> ahead == 0) {
            Look(begin);
            ahead = 0;
        }
        const TWideMask ends = ends_ >> ahead;
        const TWideMask line = UpToLowest(ends) >> 1U;
        const TWideMask marks = (marks_ >> ahead) & line;
        const TWideMask equals = (equals_ >> ahead) & line;
        const TWideMask before = equals != 0 ? UpToLowest(equals) >> 1U : line;
        if (ends == 0 || (marks & before) != 0) {
            return MeasureInSteps(begin);
        }
        const TWideMask name = (others_ >> ahead) & before;
        return {name != 0 ? begin + LowestBit(name) : begin, begin + std::bit_width(name),
                equals != 0 ? begin + LowestBit(equals) : nullptr, begin + LowestBit(ends)};
    }

private:
    void Look(const char *begin);
    static TLine MeasureInSteps(const char *begin);

    const char *window_;    ///< the bytes that were looked at
    TWideMask ends_ = 0;    ///< line feeds
    TWideMask equals_ = 0;  ///< `=`
    TWideMask marks_ = 0;   ///< quotes and parentheses
    TWideMask others_ = 0;  ///< all but blanks and carriage returns
};

}  // namespace par_scanner::detail

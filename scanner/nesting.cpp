#include "scanner/nesting.h"

#include <bit>

namespace par_scanner::detail {

namespace {

constexpr TWideMask kLast = TWideMask{1} << (kWideSize - 1);

/// Comment by comment: any order of what begins and ends strings and comments.
TNesting FindInSteps(const TMarks &marks, TWideMask ends, TWideMask open) {
    TNesting nesting{InStrings(marks.quotes) ^ open, 0, ~TWideMask{0}};
    TWideMask done = 0;  // the bytes up to the end of the last comment
    for (;;) {
        const TWideMask left = marks.begins & ~nesting.strings & ~done;
        if (left == 0) {
            return nesting;
        }
        const TWideMask before = UpToLowest(left) >> 1U;
        const TWideMask inside = ~(before << 2U | 3U);
        const TWideMask up_to_star = UpToLowest(ends & inside);
        const TWideMask up_to_end = up_to_star << 1U | 1U;
        if ((up_to_star & kLast) != 0 || ((marks.begins | marks.breaks) & inside & up_to_star) != 0) {
            nesting.known = before;
            return nesting;
        }
        done = up_to_end;
        nesting.comments |= up_to_end & ~before;
        nesting.strings = InStrings(marks.quotes & ~nesting.comments) ^ open;
    }
}

}  // namespace

TNesting FindNesting(const char *bytes, const TMarks &marks, TWideMask open) {
    const auto ends = WideMask(
        bytes, [](const CByteBlock &block, const CByteBlock &next) { return block.Equal('*') & next.Equal(')'); });
    // Mostly comments begin and end in turns, and strings have none of these characters.
    const TWideMask comments = InStrings(marks.begins ^ ends);
    const TWideMask strings = InStrings(marks.quotes & ~comments) ^ open;
    const TWideMask wrong = ((marks.begins | ends) & strings) | ((marks.breaks | ends) & comments) |
                            (marks.begins & ~comments) | (marks.begins << 1U & ends);
    if (wrong != 0) {
        return FindInSteps(marks, ends, open);
    }
    const TWideMask whole = ((comments | ends) >> (kWideSize - 1)) - 1;  // all bits if the last comment is
    return {strings, comments | ends | ends << 1U, whole | (std::bit_floor(marks.begins) - 1)};
}

}  // namespace par_scanner::detail

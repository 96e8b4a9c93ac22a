#include "scanner/line_scan.h"

#include <algorithm>
#include <cstring>

#include "scanner/byte_block.h"

namespace par_scanner::detail {

namespace {

static_assert(kMargin > kWideSize);

/// Finds the first `=` of a regular line whose first quote or parenthesis, before any `=`, is at mark.
void FindEqual(const char *mark, TLine &line) {
    line.equal = nullptr;
    for (const char *at = mark; at != line.line_feed; ++at) {
        if (*at == '\'') {
            at = static_cast<const char *>(std::memchr(at + 1, '\'', static_cast<std::size_t>(line.line_feed - at)));
        } else if (*at == '(' && at[1] == '*') {
            line.comment = true;
            return;
        } else if (*at == '=') {
            line.equal = at;
            return;
        }
    }
}

}  // namespace

THeader MeasureHeader(const char *begin) {
    THeader header{nullptr, nullptr, false, true};
    for (const char *at = begin; header.line_feed == nullptr; at += CByteBlock::kSize) {
        const CByteBlock block(at);
        const CByteBlock next(at + 1);
        const std::uint32_t ends = block.Equal('\n').Mask();
        const std::uint32_t in_line = (UpToLowest(ends) >> 1U) & CByteBlock::kAll;
        const CByteFlags others = block.AnyOf('\'', '\0') | (block.Equal('(') & next.Equal('*')) |
                                  (block.InRange('.', '9') & next.EqualLetter('e')) |
                                  block.Equal('\r').Without(next.Equal('\n'));
        const std::uint32_t brackets = block.Equal(']').Mask() & in_line;
        header.bracket = header.bracket == nullptr && brackets != 0 ? at + LowestBit(brackets) : header.bracket;
        header.equal = header.equal || (block.Equal('=').Mask() & in_line) != 0;
        header.plain = header.plain && (others.Mask() & in_line) == 0;
        header.line_feed = ends != 0 ? at + LowestBit(ends) : nullptr;
    }
    return header;
}

std::uint32_t CountLineFeeds(const char *begin, const char *end) {
    std::uint32_t count = 0;
    for (const char *at = begin; at < end; at += kWideSize) {
        const auto ends = WideMask(at, [](const CByteBlock &block) { return block.Equal('\n'); });
        const auto left = static_cast<std::size_t>(end - at);
        count += CountBits(left < kWideSize ? ends & ~(~TWideMask{0} << left) : ends);
    }
    return count;
}

void CLineWindow::Look(const char *begin) {
    window_ = begin;
    ends_ = WideMask(begin, [](const CByteBlock &block) { return block.Equal('\n'); });
    equals_ = WideMask(begin, [](const CByteBlock &block) { return block.Equal('='); });
    marks_ = WideMask(begin, [](const CByteBlock &block) { return block.AnyOf('\'', '('); });
    others_ = ~WideMask(begin, [](const CByteBlock &block) { return block.AnyOf(' ', '\r'); });
}

/// A line that is longer than a window or has a quote or parenthesis before its `=`.
TLine CLineWindow::MeasureInSteps(const char *begin) {
    TLine line{begin, begin, nullptr, begin, false, false};
    const char *mark = nullptr;
    TWideMask ends = 0;
    for (const char *at = begin; ends == 0; at += kWideSize) {
        ends = WideMask(at, [](const CByteBlock &block) { return block.Equal('\n'); });
        const TWideMask before = UpToLowest(ends);
        const TWideMask equals = WideMask(at, [](const CByteBlock &block) { return block.Equal('='); }) & before;
        const TWideMask marks = WideMask(at, [](const CByteBlock &block) { return block.AnyOf('\'', '('); }) & before;
        if (line.equal == nullptr && equals != 0) {
            line.equal = at + LowestBit(equals);
        }
        if (mark == nullptr && marks != 0) {
            mark = at + LowestBit(marks);
        }
        line.line_feed = ends != 0 ? at + LowestBit(ends) : line.line_feed;
    }
    line.marked = mark != nullptr;
    if (line.marked && (line.equal == nullptr || mark < line.equal)) {
        FindEqual(mark, line);
    }
    const auto blank = [](char character) { return character == ' ' || character == '\r'; };
    line.name_end = line.equal != nullptr ? line.equal : line.line_feed;
    line.name = std::find_if_not(begin, line.name_end, blank);
    while (line.name_end != line.name && blank(line.name_end[-1])) {
        --line.name_end;
    }
    return line;
}

}  // namespace par_scanner::detail

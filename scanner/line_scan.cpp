#include "scanner/line_scan.h"

#include "scanner/byte_block.h"
#include "scanner/plain_text.h"

namespace par_scanner::detail {

static_assert(kMargin > kWideSize);

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

void CLineWindow::Look(const char *begin) {
    window_ = begin;
    ends_ = WideMask(begin, [](const CByteBlock &block) { return block.Equal('\n'); });
    equals_ = WideMask(begin, [](const CByteBlock &block) { return block.Equal('='); });
    marks_ = WideMask(begin, [](const CByteBlock &block) { return block.AnyOf('\'', '('); });
    others_ = ~WideMask(begin, [](const CByteBlock &block) { return block.AnyOf(' ', '\r'); });
}

/// A line that is longer than a window or has a quote or parenthesis before its `=`.
TLine CLineWindow::MeasureInSteps(const char *begin) {
    const TPlainCut name = CutPlain<'=', '\n'>(begin);
    return {name.text.data(), name.text.data() + name.text.size(), *name.stop == '=' ? name.stop : nullptr,
            FindLineFeed(name.stop)};
}

}  // namespace par_scanner::detail

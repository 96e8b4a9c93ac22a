#include "scanner/line_scan.h"

#include "scanner/byte_block.h"
#include "scanner/plain_text.h"

namespace par_scanner::detail {

static_assert(kMargin > kWideSize);

void CLineWindow::Look(const char *begin) {
    window_ = begin;
    Prefetch(begin);
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

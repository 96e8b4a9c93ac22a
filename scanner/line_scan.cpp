#include "scanner/line_scan.h"

#include <algorithm>

#include "scanner/byte_block.h"

namespace par_scanner::detail {

namespace {

constexpr std::ptrdiff_t kStep = 64;
static_assert(kMargin > kStep);

/// The conspicuous bytes of a block; next is the block one byte further. The slash lies between the dot and the
/// digits: it only costs a closer look.
CByteFlags Conspicuous(const CByteBlock &block, const CByteBlock &next) {
    return block.AnyOf('\'', '[', '\0') | (block.Equal('(') & next.Equal('*')) |
           (block.InRange('.', '9') & next.EqualLetter('e')) | (block.Equal('.') & next.Equal('.')) |
           block.Equal('\r').Without(next.Equal('\n'));
}

}  // namespace

const char *FindConspicuous(const char *begin, const char *end) {
    for (const char *at = begin; at < end; at += CByteBlock::kSize) {
        const std::uint32_t mask = Conspicuous(CByteBlock(at), CByteBlock(at + 1)).Mask();
        if (mask != 0) {
            return std::min(at + LowestBit(mask), end);
        }
    }
    return end;
}

std::uint32_t CountLineFeeds(const char *begin, const char *end) {
    constexpr std::ptrdiff_t kPiece = 240;  // what a byte can count: compilers then count in many bytes at once
    std::uint32_t count = 0;
    while (begin != end) {
        const char *piece_end = begin + std::min(end - begin, kPiece);
        std::uint8_t in_piece = 0;
        for (; begin != piece_end; ++begin) {
            in_piece = static_cast<std::uint8_t>(in_piece + (*begin == '\n' ? 1 : 0));
        }
        count += in_piece;
    }
    return count;
}

TLine MeasureLine(const char *begin) {
    TLine line{nullptr, nullptr};
    for (const char *at = begin;; at += kStep) {
        const auto ends = WideMask<std::uint64_t>(at, [](const CByteBlock &block) { return block.Equal('\n'); });
        const auto equals =
            WideMask<std::uint64_t>(at, [](const CByteBlock &block) { return block.Equal('='); }) & (ends ^ (ends - 1));
        if (line.equal == nullptr && equals != 0) {
            line.equal = at + LowestBit(equals);
        }
        if (ends != 0) {
            line.line_feed = at + LowestBit(ends);
            return line;
        }
    }
}

}  // namespace par_scanner::detail

#include "scanner/line_scan.h"

#include <algorithm>

#include "scanner/byte_block.h"
#include "scanner/tape_reader.h"

namespace par_scanner::detail {

namespace {

static_assert(kMargin > 2 * CByteBlock::kSize);

/// The bytes of a block from which on characters may not stand for themselves; behind is the block one byte further.
/// The slash lies between the dot and the digits: it only costs a closer look.
CByteFlags Suspects(const CByteBlock &block, const CByteBlock &behind) {
    return block.Equal('\'') | (block.Equal('(') & behind.Equal('*')) |
           (block.InRange('.', '9') & behind.EqualLetter('e'));
}

bool GoesWithEqual(char character) { return character == ':' || character == '<' || character == '>'; }

}  // namespace

TLine MeasureLine(const char *begin) {
    TLine line{nullptr, nullptr, nullptr, true};
    for (const char *at = begin; line.line_feed == nullptr; at += CByteBlock::kSize) {
        const CByteBlock block(at);
        const CByteBlock behind(at + 1);
        const CByteFlags line_feeds = block.Equal('\n');
        const CByteFlags odd = Suspects(block, behind) | block.Equal('\r').Without(behind.Equal('\n')) |
                               block.Equal('\0') | (block.Equal('.') & behind.Equal('.'));
        const std::uint32_t ends = line_feeds.Mask();
        const std::uint32_t in_line = ends != 0 ? (ends & (~ends + 1)) - 1 : CByteBlock::kAll;
        if (line.first == nullptr) {
            const std::uint32_t others = ~block.Equal(' ').Mask() & CByteBlock::kAll;
            line.first = others != 0 ? at + LowestBit(others) : nullptr;
        }
        if (line.equal == nullptr) {
            const std::uint32_t equals = block.Equal('=').Mask() & in_line;
            line.equal = equals != 0 ? at + LowestBit(equals) : nullptr;
        }
        line.plain = line.plain && (odd.Mask() & in_line) == 0;
        line.line_feed = ends != 0 ? at + LowestBit(ends) : nullptr;
    }
    if (line.equal != nullptr && line.equal != begin && GoesWithEqual(line.equal[-1])) {
        line.plain = false;
    }
    return line;
}

const char *FindConspicuous(const char *begin, const char *end) {
    for (const char *at = begin; at < end; at += CByteBlock::kSize) {
        const CByteBlock block(at);
        const std::uint32_t mask = (Suspects(block, CByteBlock(at + 1)) | block.Equal('[')).Mask();
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

TPlainValue CutPlainValue(const char *begin) {
    const char *at = begin;
    CByteBlock block(at);
    std::uint32_t blanks = block.Equal(' ').Mask();
    while (blanks == CByteBlock::kAll) {
        at += CByteBlock::kSize;
        block = CByteBlock(at);
        blanks = block.Equal(' ').Mask();
    }
    TPlainValue value{};
    value.first = at + LowestBit(~blanks);
    std::uint32_t stops = (blanks | block.AnyOf(',', '\n', '\r').Mask()) >> LowestBit(~blanks);
    at = value.first;
    while (stops == 0) {
        at += CByteBlock::kSize - (at == value.first ? LowestBit(~blanks) : 0);
        stops = CByteBlock(at).AnyOf(' ', ',', '\n', '\r').Mask();
    }
    value.last = at + LowestBit(stops);
    value.next = value.last + 1;
    if (*value.last == ',') {
        value.separator = kComma;
    } else if (*value.last == ' ') {
        value.separator = kBlank;
        while (*value.next == ' ' || *value.next == ',') {
            value.separator = *value.next == ',' ? std::uint32_t{kComma} : value.separator;
            ++value.next;
        }
    } else {
        value.separator = kLineEnd;
        value.next += *value.last == '\r' ? 1 : 0;
    }
    return value;
}

}  // namespace par_scanner::detail

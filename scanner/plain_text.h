#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/base/bounded_text.h"
#include "scanner/byte_block.h"
#include "scanner/line_scan.h"
#include "scanner/tape_reader.h"

/// How texts are cut from a plain line (TLine), which needs no tokens. All of this reads some bytes beyond the line's
/// end, kMargin at most.
namespace par_scanner::detail {

/// The text from first up to last as it is delivered: 255 characters at most, a longer one cut to 254.
inline std::string_view PlainText(const char *first, const char *last) {
    constexpr std::size_t kLongest = kq_base::TText::kBound;
    const auto length = static_cast<std::size_t>(last - first);
    return {first, length > kLongest ? kLongest - 1 : length};
}

/// The first byte from here on that is no blank.
inline const char *SkipBlanks(const char *at) {
    for (;; at += CByteBlock::kSize) {
        const std::uint32_t others = ~CByteBlock(at).Equal(' ').Mask() & CByteBlock::kAll;
        if (others != 0) {
            return at + LowestBit(others);
        }
    }
}

/// A text that reaches to the line's end.
struct TPlainRest {
    std::string_view text;
    const char *next;  ///< the next line
};

inline TPlainRest CutPlainRest(const char *first, const char *end) {
    const auto *line_feed = static_cast<const char *>(std::memchr(first, '\n', static_cast<std::size_t>(end - first)));
    const char *last = line_feed;
    if (last != first && last[-1] == '\r') {
        --last;
    }
    while (last != first && last[-1] == ' ') {
        --last;
    }
    while (first != last && *first == ' ') {
        ++first;
    }
    return {PlainText(first, last), line_feed + 1};
}

/// A value: it ends at a blank, a comma or the line's end.
struct TPlainValue {
    std::uint32_t first;  ///< offset of the value
    std::uint32_t length;
    std::uint32_t next;       ///< offset after the separator: the next value, or the next line
    std::uint32_t separator;  ///< the token kind: kComma, kBlank or kLineEnd
};

/// Cuts the values of a text one after the other. Sixty-four bytes are looked at in one go, so a line's values mostly
/// cost one look.
class CPlainValues {
public:
    /// The value at an offset of the text, blanks before it skipped.
    TPlainValue Cut(const char *text, std::uint32_t offset) {
        const std::uint32_t ahead = offset - window_;
        TPlainValue value;
        if (ahead < kWidth && CutInWindow(text, ahead, value)) {
            return value;
        }
        return CutOutside(text, offset);
    }

private:
    using TMask = std::uint64_t;
    static constexpr std::uint32_t kWidth = 64;

    bool CutInWindow(const char *text, std::uint32_t ahead, TPlainValue &value) const {
        const TMask others = others_ >> ahead;
        if (others == 0) {
            return false;
        }
        const std::uint32_t first = ahead + LowestBit(others);
        const TMask stops = stops_ >> first;
        if (stops == 0) {
            return false;
        }
        value.first = window_ + first;
        value.length = LowestBit(stops);
        ReadSeparator(text, value);
        return true;
    }

    [[gnu::noinline]] TPlainValue CutOutside(const char *text, std::uint32_t offset) {
        const char *begin = text + offset;
        const auto blanks = WideMask<TMask>(begin, [](const CByteBlock &block) { return block.Equal(' '); });
        window_ = offset;
        others_ = ~blanks;
        stops_ = blanks | WideMask<TMask>(begin, [](const CByteBlock &block) { return block.AnyOf(',', '\n', '\r'); });
        TPlainValue value;
        return CutInWindow(text, 0, value) ? value : CutLong(text, offset);
    }

    static TPlainValue CutLong(const char *text, std::uint32_t offset) {
        const char *first = SkipBlanks(text + offset);
        const char *last = first;
        std::uint32_t stops = 0;
        while ((stops = CByteBlock(last).AnyOf(' ', ',', '\n', '\r').Mask()) == 0) {
            last += CByteBlock::kSize;
        }
        last += LowestBit(stops);
        TPlainValue value;
        value.first = static_cast<std::uint32_t>(first - text);
        value.length = static_cast<std::uint32_t>(last - first);
        ReadSeparator(text, value);
        value.length = static_cast<std::uint32_t>(PlainText(first, last).size());
        return value;
    }

    static void ReadSeparator(const char *text, TPlainValue &value) {
        const char stop = text[value.first + value.length];
        value.next = value.first + value.length + 1;
        value.separator = kComma;
        if (stop == ' ') {
            value.separator = kBlank;
            for (; text[value.next] == ' ' || text[value.next] == ','; ++value.next) {
                value.separator = text[value.next] == ',' ? std::uint32_t{kComma} : value.separator;
            }
        } else if (stop != ',') {
            value.separator = kLineEnd;
            value.next += stop == '\r' ? 1 : 0;
        }
    }

    std::uint32_t window_ = 0;  ///< offset of the bytes that were looked at
    TMask others_ = 0;          ///< all but blanks
    TMask stops_ = 0;           ///< blanks, commas and line ends
};

}  // namespace par_scanner::detail

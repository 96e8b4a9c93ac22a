#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "scanner/byte_block.h"
#include "scanner/line_scan.h"
#include "scanner/tape_reader.h"

/// How texts are cut from a plain line (TLine), which needs no tokens. All of this reads some bytes behind the line's
/// end, kMargin at most.
namespace par_scanner::detail {

/// The text from first up to last as it is delivered: 255 characters at most, a longer one cut to 254.
inline std::string_view PlainText(const char *first, const char *last) {
    constexpr std::size_t kLongest = 255;
    const auto length = static_cast<std::size_t>(last - first);
    return {first, length > kLongest ? kLongest - 1 : length};
}

/// The first byte from a place on that is no blank.
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

/// Cuts the values of a text one after the other. A value ends at a blank, a comma or the line's end. Sixty-four bytes
/// are looked at in one go, so a line's values mostly cost one look.
class CPlainValues {
public:
    struct TValue {
        std::string_view text;
        std::uint32_t next;       ///< offset behind the separator: the next value, or the next line
        std::uint32_t separator;  ///< the token kind: kComma, kBlank or kLineEnd
    };

    /// The value at an offset of the text, blanks ahead of it skipped.
    TValue Cut(const char *text, std::uint32_t offset) {
        std::uint32_t ahead = offset - window_;
        if (!EndsInWindow(ahead)) {
            Open(text, offset);
            ahead = 0;
            if (!EndsInWindow(ahead)) {
                return CutLong(text, offset);
            }
        }
        const std::uint32_t first = SkipInWindow(ahead);
        const std::uint32_t last = first + LowestBit(stops_ >> first);
        return Behind(text, text + window_ + first, text + window_ + last);
    }

private:
    void Open(const char *text, std::uint32_t offset) {
        const char *begin = text + offset;
        window_ = offset;
        blanks_ = WideMask(begin, [](const CByteBlock &block) { return block.Equal(' '); });
        stops_ = blanks_ | WideMask(begin, [](const CByteBlock &block) { return block.AnyOf(',', '\n', '\r'); });
    }
    std::uint32_t SkipInWindow(std::uint32_t ahead) const { return ahead + LowestBit(~(blanks_ >> ahead)); }
    bool EndsInWindow(std::uint32_t ahead) const {
        return ahead < kWideSize && SkipInWindow(ahead) < kWideSize && (stops_ >> SkipInWindow(ahead)) != 0;
    }

    static TValue CutLong(const char *text, std::uint32_t offset) {
        const char *first = SkipBlanks(text + offset);
        for (const char *last = first;; last += CByteBlock::kSize) {
            const std::uint32_t stops = CByteBlock(last).AnyOf(' ', ',', '\n', '\r').Mask();
            if (stops != 0) {
                return Behind(text, first, last + LowestBit(stops));
            }
        }
    }

    static TValue Behind(const char *text, const char *first, const char *last) {
        TValue value{PlainText(first, last), static_cast<std::uint32_t>(last - text) + 1, kComma};
        if (*last == ' ') {
            value.separator = kBlank;
            for (; text[value.next] == ' ' || text[value.next] == ','; ++value.next) {
                value.separator = text[value.next] == ',' ? std::uint32_t{kComma} : value.separator;
            }
        } else if (*last != ',') {
            value.separator = kLineEnd;
            value.next += *last == '\r' ? 1 : 0;
        }
        return value;
    }

    std::uint32_t window_ = 0;  ///< offset of the bytes that were looked at
    std::uint64_t blanks_ = 0;
    std::uint64_t stops_ = 0;  ///< blanks, commas and line ends
};

}  // namespace par_scanner::detail

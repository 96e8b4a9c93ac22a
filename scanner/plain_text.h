#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/base/bounded_text.h"
#include "scanner/byte_block.h"
#include "scanner/character_class.h"
#include "scanner/line_scan.h"
#include "scanner/odd_line_search.h"
#include "scanner/tape_reader.h"

/// How texts are cut from a regular line (scanner/odd_line_search.h), mostly without tokens. All of this reads some
/// bytes beyond the line's end, kMargin at most.
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
    /// Cuts the value at an offset of a regular line, which is outside strings; blanks before it are skipped. marked is
    /// that of the line (TLine). False if a separator of blanks is followed by `1..`: having looked at that, the tape
    /// carries more than a position, so the value has to be read by tokens.
    bool Cut(const char *text, std::uint32_t offset, bool marked, TPlainValue &value) {
        if (marked && text[offset] == '(') {
            return CutLong(text, offset, value);
        }
        const std::uint32_t ahead = offset - window_;
        if (ahead < kWideSize && (of_one_line_ || !marked) && FindInWindow(ahead, value)) {
            return ReadSeparator(text, value.first + value.length, value);
        }
        return CutOutside(text, offset, marked, value);
    }

private:
    bool FindInWindow(std::uint32_t ahead, TPlainValue &value) const {
        const TWideMask others = others_ >> ahead;
        if (others == 0) {
            return false;
        }
        const std::uint32_t first = ahead + LowestBit(others);
        const TWideMask stops = stops_ >> first;
        if (stops == 0) {
            return false;
        }
        value.first = window_ + first;
        value.length = LowestBit(stops);
        return true;
    }

    [[gnu::noinline]] bool CutOutside(const char *text, std::uint32_t offset, bool marked, TPlainValue &value) {
        const char *begin = text + offset;
        const TWideMask blanks = WideMask(begin, [](const CByteBlock &block) { return block.Equal(' '); });
        window_ = offset;
        others_ = ~blanks;
        stops_ = blanks | WideMask(begin, [](const CByteBlock &block) { return block.AnyOf(',', '\n', '\r'); });
        of_one_line_ = marked;
        if (marked) {
            MindStrings(begin);
        }
        if (FindInWindow(0, value)) {
            return ReadSeparator(text, value.first + value.length, value);
        }
        return CutLong(text, offset, value);
    }

    /// Strings hold no stops. The window ends with its line, since of others it isn't known whether all their strings
    /// are closed, and before its first comment.
    void MindStrings(const char *begin) {
        const auto quotes = WideMask(begin, [](const CByteBlock &block) { return block.Equal('\''); });
        const auto ends = WideMask(begin, [](const CByteBlock &block) { return block.Equal('\n'); });
        const auto comments = WideMask(
            begin, [](const CByteBlock &block, const CByteBlock &next) { return block.Equal('(') & next.Equal('*'); });
        const TWideMask inside = InStrings(quotes);
        const TWideMask comment = comments & ~inside;
        const TWideMask known = UpToLowest(ends) & (comment == 0 ? ~TWideMask{0} : UpToLowest(comment) >> 1U);
        others_ = (others_ | inside) & known;
        stops_ = stops_ & ~inside & known;
    }

    /// Cuts a value that the window doesn't hold whole, or that a comment precedes or follows. A comment belongs to
    /// what follows it: before a blank it is one of the blanks, before the end of a value it isn't part of the value.
    [[gnu::noinline]] static bool CutLong(const char *text, std::uint32_t offset, TPlainValue &value) {
        const char *first = SkipBlanks(text + offset);
        const char *stop = AfterComments(first);
        while (stop != first && *stop == ' ') {
            first = SkipBlanks(stop);
            stop = AfterComments(first);
        }
        const char *last = first;
        for (;;) {
            const char *begin = stop;
            stop = FindStop(begin);
            last = stop != begin ? stop : last;
            if (*stop == '\'') {
                last = stop = SkipString(stop);
            } else if (*stop != '(') {
                break;
            } else if (stop[1] == '*') {
                stop = AfterComments(stop);
            } else {
                last = ++stop;
            }
        }
        value.first = static_cast<std::uint32_t>(first - text);
        value.length = static_cast<std::uint32_t>(PlainText(first, last).size());
        return ReadSeparator(text, static_cast<std::uint32_t>(stop - text), value);
    }

    static const char *FindStop(const char *at) {
        for (;; at += CByteBlock::kSize) {
            const std::uint32_t stops = CByteBlock(at).AnyOf(' ', ',', '\n', '\r', '\'', '(').Mask();
            if (stops != 0) {
                return at + LowestBit(stops);
            }
        }
    }
    static const char *AfterComments(const char *at) {
        while (at[0] == '(' && at[1] == '*') {
            at = AfterComment(at);
        }
        return at;
    }

    /// The byte after the string that begins here; strings of regular lines are closed.
    static const char *SkipString(const char *at) {
        for (++at;; at += CByteBlock::kSize) {
            const std::uint32_t quotes = CByteBlock(at).Equal('\'').Mask();
            if (quotes != 0) {
                return at + LowestBit(quotes) + 1;
            }
        }
    }

    /// Reads on from the character that ends a value. False if that takes tokens.
    static bool ReadSeparator(const char *text, std::uint32_t stop, TPlainValue &value) {
        value.next = stop + 1;
        value.separator = kComma;
        if (text[stop] == ' ') {
            value.separator = kBlank;
            const char *next = text + value.next;
            const char *after = AfterComments(next);
            for (; *after == ' ' || *after == ','; after = AfterComments(next)) {
                value.separator = *after == ',' ? std::uint32_t{kComma} : value.separator;
                next = after + 1;
            }
            value.next = static_cast<std::uint32_t>(next - text);
            return !BeginsRange(after);
        }
        if (text[stop] != ',') {
            value.separator = kLineEnd;
            value.next += text[stop] == '\r' ? 1 : 0;
        }
        return true;
    }

    static bool BeginsRange(const char *at) {
        const char *digits = at;
        while (Is(*at, kInNumber)) {
            ++at;
        }
        return at != digits && at[0] == '.' && at[1] == '.';
    }

    std::uint32_t window_ = 0;  ///< offset of the bytes that were looked at
    TWideMask others_ = 0;      ///< all but blanks
    TWideMask stops_ = 0;       ///< blanks, commas and line ends
    bool of_one_line_ = false;  ///< the masks are right for marked lines, and know one line
};

}  // namespace par_scanner::detail

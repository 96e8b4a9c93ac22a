#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

#include "platform/base/bounded_text.h"
#include "scanner/byte_block.h"
#include "scanner/character_class.h"
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

/// The first byte from here on that begins no comment.
inline const char *SkipComments(const char *at) {
    while (at[0] == '(' && at[1] == '*') {
        at = AfterComment(at);
    }
    return at;
}

/// The byte after the string that begins here; strings of regular lines are closed.
inline const char *SkipString(const char *at) {
    for (++at;; at += CByteBlock::kSize) {
        const std::uint32_t quotes = CByteBlock(at).Equal('\'').Mask();
        if (quotes != 0) {
            return at + LowestBit(quotes) + 1;
        }
    }
}

/// The first line feed from here on.
inline const char *FindLineFeed(const char *at) {
    for (;; at += CByteBlock::kSize) {
        const std::uint32_t ends = CByteBlock(at).Equal('\n').Mask();
        if (ends != 0) {
            return at + LowestBit(ends);
        }
    }
}

/// A text and what follows it.
struct TPlainCut {
    std::string_view text;
    const char *stop;  ///< the byte that ends it
};

/// Cuts the text from here on up to one of the stops, among which a line feed must be. Blanks around it don't belong to
/// it, nor does a carriage return before a line feed. A comment belongs to what follows it: before a blank it is one of
/// the blanks, before the end of a text it isn't part of the text.
template <char... Stops>
TPlainCut CutPlain(const char *first) {
    first = SkipBlanks(first);
    const char *at = SkipComments(first);
    while (at != first && *at == ' ') {
        first = SkipBlanks(at);
        at = SkipComments(first);
    }
    const char *last = first;
    for (;;) {
        std::uint32_t stops = 0;
        const char *stop = at;
        while ((stops = CByteBlock(stop).AnyOf('\'', '(', Stops...).Mask()) == 0) {
            stop += CByteBlock::kSize;
        }
        stop += LowestBit(stops);
        const char *end = stop;
        end -= end != at && *end == '\n' && end[-1] == '\r' ? 1 : 0;
        while (end != at && end[-1] == ' ') {
            --end;
        }
        last = end != at ? end : last;
        if (*stop == '\'') {
            last = at = SkipString(stop);
        } else if (*stop != '(') {
            return {PlainText(first, last), stop};
        } else if (stop[1] == '*') {
            at = SkipComments(stop);
        } else {
            last = at = stop + 1;
        }
    }
}

/// A value: it ends at a blank, a comma or the line's end.
struct TPlainValue {
    std::uint32_t first;  ///< offset of the value
    std::uint32_t length;
    std::uint32_t next;       ///< offset after the separator: the next value, or the next line
    std::uint32_t separator;  ///< the token kind: kComma, kBlank or kLineEnd
};

/// Cuts the values of a text one after the other. Sixty-four bytes are looked at in one go, which mostly hold several
/// values.
class CPlainValues {
public:
    /// Cuts the value at an offset of a regular line, which is outside strings; blanks before it are skipped. False if
    /// a separator of blanks is followed by `1..`: having looked at that, the tape carries more than a position, so the
    /// value has to be read by tokens.
    bool Cut(const char *text, std::uint32_t offset, TPlainValue &value) {
        const std::uint32_t ahead = offset - window_;
        if (ahead < kWideSize && FindInWindow(ahead, value)) {
            return ReadSeparator(text, value.first + value.length, value);
        }
        return CutOutside(text, offset, value);
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

    [[gnu::noinline]] bool CutOutside(const char *text, std::uint32_t offset, TPlainValue &value) {
        if (text[offset] == '(' && IsLineEnd(text[SkipCommentsAt(text, offset)])) {
            value.first = offset;
            value.length = 0;
            return ReadSeparator(text, SkipCommentsAt(text, offset), value);
        }
        Look(text, offset);
        if (FindInWindow(0, value)) {
            return ReadSeparator(text, value.first + value.length, value);
        }
        const TPlainCut cut = CutPlain<' ', ',', '\n', '\r'>(text + offset);
        value.first = static_cast<std::uint32_t>(cut.text.data() - text);
        value.length = static_cast<std::uint32_t>(cut.text.size());
        return ReadSeparator(text, static_cast<std::uint32_t>(cut.stop - text), value);
    }

    /// Strings have no stops. The window ends before what may be its first comment. Where an odd line follows in it
    /// whose strings aren't closed, reading ends there: what follows is never asked for.
    void Look(const char *text, std::uint32_t offset) {
        const char *begin = text + offset;
        const auto blanks = WideMask(begin, [](const CByteBlock &block) { return block.Equal(' '); });
        const auto ends = WideMask(begin, [](const CByteBlock &block) { return block.AnyOf(',', '\n', '\r'); });
        const auto quotes = WideMask(begin, [](const CByteBlock &block) { return block.Equal('\''); });
        const auto parentheses = WideMask(begin, [](const CByteBlock &block) { return block.Equal('('); });
        const TWideMask strings = quotes != 0 ? InStrings(quotes) : 0;
        const TWideMask comments = parentheses & ~strings;
        const TWideMask known = comments != 0 ? UpToLowest(comments) >> 1U : ~TWideMask{0};
        window_ = offset;
        others_ = (~blanks | strings) & known;
        stops_ = (blanks | ends) & ~strings & known;
    }

    /// Reads on from the character that ends a value. False if that takes tokens.
    bool ReadSeparator(const char *text, std::uint32_t stop, TPlainValue &value) {
        value.next = stop + 1;
        value.separator = kComma;
        if (text[stop] == ' ') {
            value.separator = kBlank;
            std::uint32_t after = SkipCommentsAt(text, value.next);
            for (; text[after] == ' ' || text[after] == ','; after = SkipCommentsAt(text, value.next)) {
                value.separator = text[after] == ',' ? std::uint32_t{kComma} : value.separator;
                value.next = after + 1;
            }
            return !BeginsRange(text + after);
        }
        if (text[stop] != ',') {
            value.separator = kLineEnd;
            value.next += text[stop] == '\r' ? 1 : 0;
        }
        return true;
    }

    /// The first byte from an offset on that begins no comment.
    std::uint32_t SkipCommentsAt(const char *text, std::uint32_t offset) {
        if (text[offset] != '(') {
            return offset;
        }
        if (offset != comments_) {
            comments_ = offset;
            after_comments_ = static_cast<std::uint32_t>(SkipComments(text + offset) - text);
        }
        return after_comments_;
    }

    static bool IsLineEnd(char character) { return character == '\n' || character == '\r'; }

    static bool BeginsRange(const char *at) {
        const char *digits = at;
        while (Is(*at, kInNumber)) {
            ++at;
        }
        return at != digits && at[0] == '.' && at[1] == '.';
    }

    std::uint32_t window_ = 0;  ///< offset of the bytes that were looked at
    // Of these bytes, as far as they are known:
    TWideMask others_ = 0;        ///< all but blanks
    TWideMask stops_ = 0;         ///< blanks, commas and line ends
    std::uint32_t comments_ = 0;  ///< offset of the comments that were skipped last, which mostly are asked for again
    std::uint32_t after_comments_ = 0;  ///< offset of what follows them
};

}  // namespace par_scanner::detail

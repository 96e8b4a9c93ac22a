#include "scanner/odd_line_search.h"

#include <algorithm>
#include <cstdint>

#include "scanner/byte_block.h"
#include "scanner/character_class.h"
#include "scanner/line_scan.h"

namespace par_scanner::detail {

namespace {

static_assert(kMargin > kWideSize);

/// The bytes of a block that may make their line odd or a header if they are outside strings; next is the block one
/// byte further. The slash lies between the dot and the digits: it only costs a closer look.
CByteFlags Noticed(const CByteBlock &block, const CByteBlock &next) {
    return block.AnyOf('[', '\0') | (block.Equal('(') & next.Equal('*')) |
           (block.InRange('.', '9') & next.EqualLetter('e')) | block.Equal('\r').Without(next.Equal('\n'));
}

bool IsDigit(char character) { return Is(character, kInNumber); }

/// The lines from one place on. A string is open after an odd number of quotes: a doubled quote closes it and opens it
/// again. So which bytes of a block are in strings follows from its quotes and from whether one is open before it.
class COddLineSearch {
public:
    COddLineSearch(const char *begin, const char *end) : begin_(begin), end_(end) {}

    const char *Run() {
        for (const char *at = begin_; at < end_;) {
            const char *next = at + kWideSize;
            TWideMask noticed = LookAt(at);
            if (unbroken_ > kMostUnbroken) {
                return StartOfLine(at);
            }
            for (; noticed != 0; noticed &= noticed - 1) {
                const char *found = at + LowestBit(noticed);
                if (found >= end_) {
                    break;
                }
                const bool comment = *found == '(';
                next = comment ? Pass(found) : next;
                if (next == nullptr || (!comment && IsOdd(found))) {
                    return StartOfLine(found);
                }
                if (comment) {
                    open_ = 0;
                    break;
                }
            }
            at = next;
        }
        return StartOfLine(end_);
    }

private:
    static constexpr int kMostUnbroken = 14;             ///< blocks: fewer than a string may have characters
    static constexpr std::ptrdiff_t kLongestWord = 200;  ///< fewer characters than a token may have

    /// What is noticed in the block that begins here: outside strings, and what ends a line or text inside them.
    TWideMask LookAt(const char *at) {
        const auto noticed =
            WideMask(at, [](const CByteBlock &block, const CByteBlock &next) { return Noticed(block, next); });
        const auto quotes = WideMask(at, [](const CByteBlock &block) { return block.Equal('\''); });
        if ((quotes | open_) == 0) {
            unbroken_ = 0;
            return noticed;
        }
        const TWideMask inside = InStrings(quotes) ^ open_;
        const auto ends = WideMask(at, [](const CByteBlock &block) { return block.AnyOf('\n', '\r', '\0'); });
        open_ = 0 - (inside >> 63U);
        unbroken_ = ends == 0 ? unbroken_ + 1 : 0;
        return (noticed & ~inside) | (ends & inside);
    }

    const char *StartOfLine(const char *at) const {
        while (at != begin_ && at[-1] != '\n') {
            --at;
        }
        return at;
    }
    bool OnlyBlanksBefore(const char *at) const {
        while (at != begin_ && at[-1] == ' ') {
            --at;
        }
        return at == begin_ || at[-1] == '\n';
    }

    /// True if a character that was noticed makes its line odd or a header.
    bool IsOdd(const char *at) const {
        return *at == '[' ? OnlyBlanksBefore(at) : !(Is(*at, kInNumber) || *at == '.' || *at == '/') || MayFail(at);
    }

    /// True if a number may have a malformed exponent: at is the character before its E.
    bool MayFail(const char *at) const {
        const char *exponent = at + 2;
        exponent += *exponent == '+' || *exponent == '-' ? 1 : 0;
        const char *digits = at;
        while (digits != begin_ && (IsDigit(digits[-1]) || digits[-1] == '.') && at - digits < kLongestWord) {
            --digits;
        }
        if (at - digits >= kLongestWord) {
            return true;
        }
        if (!IsDigit(*at)) {
            return *at == '.' && digits != at && !IsDigit(*exponent);
        }
        return !IsDigit(*exponent) && !IsInIdentifier(at);
    }

    /// True if a digit is certainly no part of a number, since the word that it is in begins as an identifier or goes
    /// over into one.
    bool IsInIdentifier(const char *at) const {
        const char *word = at;
        while (word != begin_ && Is(word[-1], kInIdentifier)) {
            if (at - word >= kLongestWord) {
                return false;
            }
            --word;
        }
        // A tab, a control character and the like begin an identifier and end the one before.
        if (word != begin_ && StartOf(word[-1]) == kStartsIdentifier) {
            return true;
        }
        const char *other = std::find_if_not(word, at, IsDigit);
        const bool exponent = other != word && (*other == 'E' || *other == 'e');
        return other != at && !exponent && StartOf(*other) == kStartsIdentifier;
    }

    /// After a comment of a line that is regular so far; null if it is so no more.
    const char *Pass(const char *comment) const {
        const char *after = AfterComment(comment);
        if (after != nullptr && OnlyBlanksBefore(comment)) {
            const char *first = std::find_if(after, end_, [](char character) { return character != ' '; });
            return first != end_ && (*first == '[' || *first == '(') ? nullptr : after;
        }
        return after;
    }

    const char *begin_;
    const char *end_;
    TWideMask open_ = 0;  ///< all bits if a string is open where the next block begins
    int unbroken_ = 0;    ///< blocks with strings, without a line end
};

}  // namespace

const char *FindOddLine(const char *begin, const char *end) { return COddLineSearch(begin, end).Run(); }

const char *AfterComment(const char *comment) {
    int depth = 1;
    for (const char *at = comment + 2;;) {
        const CByteBlock block(at);
        const CByteBlock next(at + 1);
        const std::uint32_t noticed = ((block.Equal('(') & next.Equal('*')) | (block.Equal('*') & next.Equal(')')) |
                                       block.AnyOf('\n', '\r', '\0'))
                                          .Mask();
        if (noticed == 0) {
            at += CByteBlock::kSize;
            continue;
        }
        at += LowestBit(noticed);
        if (*at != '(' && *at != '*') {
            return nullptr;
        }
        depth += *at == '(' ? 1 : -1;
        at += 2;
        if (depth == 0) {
            return at;
        }
    }
}

}  // namespace par_scanner::detail

#include "scanner/odd_line_search.h"

#include <algorithm>
#include <bit>

#include "scanner/byte_block.h"
#include "scanner/character_class.h"
#include "scanner/line_scan.h"
#include "scanner/nesting.h"

namespace par_scanner::detail {

namespace {

static_assert(kMargin > kWideSize);

constexpr int kMostUnbroken = 14;             ///< windows: fewer than a string may have characters
constexpr std::ptrdiff_t kLongestWord = 200;  ///< fewer characters than a token may have

bool IsDigit(char character) { return Is(character, kInNumber); }

}  // namespace

const char *COddLineSearch::Find(const char *begin) {
    begin_ = begin;
    line_feeds_ = 0;
    const auto ahead = static_cast<std::size_t>(begin - window_);
    if (ahead < kWideSize && (nested_ & ~(~TWideMask{0} << ahead)) == 0) {
        noticed_ &= ~TWideMask{0} << ahead;
        ends_ &= ~TWideMask{0} << ahead;
    } else {
        next_ = begin;
        noticed_ = 0;
        ends_ = 0;
        open_ = 0;
        unbroken_ = 0;
    }
    for (;;) {
        for (; noticed_ != 0; noticed_ &= noticed_ - 1) {
            const char *found = window_ + LowestBit(noticed_);
            if (found >= end_) {
                return StartOfLine(end_);
            }
            if (IsOdd(found)) {
                return StartOfLine(found);
            }
        }
        if (next_ >= end_) {
            return StartOfLine(end_);
        }
        Look();
        if (unbroken_ > kMostUnbroken) {
            return StartOfLine(window_);
        }
    }
}

void COddLineSearch::Look() {
    line_feeds_ += CountBits(ends_);
    window_ = next_;
    Prefetch(window_);
    next_ = window_ + kWideSize;
    ends_ = WideMask(window_, [](const CByteBlock &block) { return block.Equal('\n'); });
    noticed_ = WideMask(window_, MayBeOdd);
    nested_ = 0;
    TMarks marks{WideMask(window_, [](const CByteBlock &block) { return block.Equal('\''); }),
                 WideMask(window_, BeginComments), 0};
    if ((marks.quotes | open_ | marks.begins) == 0) {
        unbroken_ = 0;
        return;
    }
    marks.breaks = ends_ | WideMask(window_, [](const CByteBlock &block) { return block.AnyOf('\r', '\0'); });
    const TNesting nesting = marks.begins == 0 ? TNesting{InStrings(marks.quotes) ^ open_, 0, ~TWideMask{0}}
                                               : FindNesting(window_, marks, open_);
    nested_ = nesting.strings | nesting.comments | ~nesting.known;
    noticed_ = (noticed_ & ~nested_) | (marks.breaks & nesting.strings & nesting.known);
    open_ = 0 - ((nesting.strings & nesting.known) >> (kWideSize - 1));
    ends_ &= nesting.known;
    unbroken_ = marks.breaks == 0 ? unbroken_ + 1 : 0;
    next_ = window_ + std::countr_one(nesting.known);  // a comment that isn't seen whole begins the next window
    if (nesting.known == 0) {
        next_ = AfterComment(window_);
        noticed_ = next_ == nullptr ? 1 : 0;
    }
}

const char *COddLineSearch::StartOfLine(const char *at) {
    while (at != begin_ && at[-1] != '\n') {
        --at;
    }
    if (at > window_) {
        const auto ahead = static_cast<std::size_t>(at - window_);
        const TWideMask after = ahead < kWideSize ? ~TWideMask{0} << ahead : 0;
        nested_ &= after;
        line_feeds_ += CountBits(ends_ & ~after);
    }
    return at;
}

/// True if a character that was noticed makes its line odd or a header.
bool COddLineSearch::IsOdd(const char *at) const {
    if (*at == '[') {
        const char *before = at;
        while (before != begin_ && before[-1] == ' ') {
            --before;
        }
        return before == begin_ || before[-1] == '\n' || before[-1] == ')';  // that may end a comment
    }
    return !(Is(*at, kInNumber) || *at == '.' || *at == '/') || MayFail(at);
}

/// True if a number may have a malformed exponent: at is the character before its E.
bool COddLineSearch::MayFail(const char *at) const {
    if (IsDigit(at[2]) && at != begin_ && !IsDigit(at[-1]) && at[-1] != '.') {
        return false;
    }
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
bool COddLineSearch::IsInIdentifier(const char *at) const {
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

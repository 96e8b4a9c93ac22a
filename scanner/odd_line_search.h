#pragma once

#include "scanner/byte_block.h"

namespace par_scanner::detail {

/// The bytes of a block that may make their line odd or a header if they are outside strings and comments; next is the
/// block one byte further. The slash lies between the dot and the digits: it only costs a closer look.
inline CByteFlags MayBeOdd(const CByteBlock &block, const CByteBlock &next) {
    return block.AnyOf('[', '\0') | (block.InRange('.', '9') & next.EqualLetter('e')) |
           block.Equal('\r').Without(next.Equal('\n'));
}

/// Finds the lines of a text that are headers or odd, one after the other. Reads beyond the text's end as
/// scanner/line_scan.h says.
///
/// Nearly all lines are regular: where their strings and comments begin and end can be seen without reading tokens. Odd
/// is a line that reading may fail in or go beyond, or that a text may end in early: a string or comment that isn't
/// closed in the line, a number whose exponent may be malformed, a NUL, a carriage return anywhere but directly before
/// the line feed, strings of hundreds of characters. Such lines have to be read token by token.
class COddLineSearch {
public:
    COddLineSearch(const char *text, const char *end) : end_(end), begin_(text), window_(text), next_(text) {}

    /// From the start of a line on, the start of the first line that is a header or odd, or of the text's last line if
    /// that isn't ended. The start must lie after the line that was found last, and outside strings and comments.
    const char *Find(const char *begin);
    /// The number of line feeds from there to the line that was found.
    std::uint32_t LineFeeds() const { return line_feeds_; }

private:
    void Look();
    const char *StartOfLine(const char *at);
    bool IsOdd(const char *at) const;
    bool MayFail(const char *at) const;
    bool IsInIdentifier(const char *at) const;

    const char *end_;
    const char *begin_;   ///< where the search began
    const char *window_;  ///< the kWideSize bytes that were looked at
    const char *next_;    ///< the next ones
    TWideMask noticed_ = 0;
    TWideMask ends_ = 0;  ///< line feeds
    std::uint32_t line_feeds_ = 0;
    TWideMask nested_ = ~TWideMask{0};  ///< from the line found last on: in strings or comments, or after the known
    TWideMask open_ = 0;                ///< all bits if a string is open where the next window begins
    int unbroken_ = 0;                  ///< windows with strings, without a line end
};

/// The byte after the comment that begins here. Null if it isn't closed before the next line end, NUL or carriage
/// return, which never is so in a regular line.
const char *AfterComment(const char *comment);

}  // namespace par_scanner::detail

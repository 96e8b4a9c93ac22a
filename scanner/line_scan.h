#pragma once

#include <cstdint>

/// Looks at the bytes of a text many at a time. All operations read up to kMargin bytes behind the text's end, which
/// must be line feeds.
namespace par_scanner::detail {

inline constexpr std::uint32_t kMargin = 40;

/// One line. Plain is a line whose tokens are obvious: no quote, no comment, no digit or dot ahead of an E (which might
/// be a malformed exponent), no `..`, no NUL, no carriage return but directly ahead of the line feed, and the first `=`
/// doesn't belong to `:=`, `<=` or `>=`.
struct TLine {
    const char *first;      ///< the first character that is no blank
    const char *equal;      ///< the first `=`, or null
    const char *line_feed;  ///< the line's end; the text's end if the line has none
    bool plain;
};

/// Measures the line that begins at a place.
TLine MeasureLine(const char *begin);

/// The first byte from begin on that needs a closer look to find the headers: `[`, or one from which on characters may
/// not stand for themselves (a quote, a comment, a digit or dot ahead of an E). The end if there is none.
const char *FindConspicuous(const char *begin, const char *end);

/// The number of line feeds.
std::uint32_t CountLineFeeds(const char *begin, const char *end);

/// A value of a plain line, cut at blanks, commas and the line's end.
struct TPlainValue {
    const char *first;
    const char *last;         ///< one behind
    const char *next;         ///< behind the separator: the next value, or the next line
    std::uint32_t separator;  ///< the token kind: kComma, kBlank or kLineEnd
};

/// Cuts the value that begins at a place of a plain line, blanks ahead of it skipped.
TPlainValue CutPlainValue(const char *begin);

}  // namespace par_scanner::detail

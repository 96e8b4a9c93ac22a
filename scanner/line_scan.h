#pragma once

#include <cstdint>

/// Looks at the bytes of a text many at a time. All of this reads up to kMargin bytes beyond the text's end, which must
/// be line feeds.
///
/// Nearly all lines are plain: each of their characters means itself. A line is odd if it holds a quote, a comment, a
/// digit or dot before an E (which might be a malformed exponent), `..`, a NUL, or a carriage return anywhere but
/// directly before the line feed; odd lines have to be read token by token.
namespace par_scanner::detail {

inline constexpr std::uint32_t kMargin = 80;

/// The first byte from begin on that makes its line odd, or is a `[`. The end if there is none.
const char *FindConspicuous(const char *begin, const char *end);

/// The number of line feeds.
std::uint32_t CountLineFeeds(const char *begin, const char *end);

/// The ends of the parts of a line.
struct TLine {
    const char *equal;      ///< the first `=`, or null
    const char *line_feed;  ///< the line's end, or the text's
};

/// Measures the line that begins here.
TLine MeasureLine(const char *begin);

}  // namespace par_scanner::detail

#pragma once

#include <cstdint>

/// Looks at the bytes of a text many at a time. All of this reads up to kMargin bytes beyond the text's end, which must
/// be line feeds.
namespace par_scanner::detail {

inline constexpr std::uint32_t kMargin = 80;

/// True if each character means itself: a bracket is a bracket, and the first line feed ends the line.
bool IsPlain(const char *begin, const char *end);

/// The number of line feeds.
std::uint32_t CountLineFeeds(const char *begin, const char *end);

/// The parts of a regular line (scanner/odd_line_search.h).
struct TLine {
    const char *equal;      ///< the first `=` outside strings and comments, or null
    const char *line_feed;  ///< the line's end, or the text's
    bool marked;            ///< the line holds a quote or a parenthesis
    bool comment;           ///< a comment comes before the `=`; then equal isn't known
};

/// Measures the regular line that begins here.
TLine MeasureLine(const char *begin);

}  // namespace par_scanner::detail

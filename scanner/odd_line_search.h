#pragma once

namespace par_scanner::detail {

/// From the start of a line on, the start of the first line that is a header or odd, or of the text's last line if that
/// isn't ended. Reads beyond the text's end as scanner/line_scan.h says.
///
/// Nearly all lines are regular: where their strings and comments begin and end can be seen without reading tokens. Odd
/// is a line that reading may fail in or go beyond, or that a text may end in early: a string or comment that isn't
/// closed in the line, a number whose exponent may be malformed, a NUL, a carriage return anywhere but directly before
/// the line feed, strings of hundreds of characters, several comments before anything else. Such lines have to be read
/// token by token.
const char *FindOddLine(const char *begin, const char *end);

/// The byte after the comment that begins here. Null if it isn't closed before the next line end, NUL or carriage
/// return, which never is so in a regular line.
const char *AfterComment(const char *comment);

}  // namespace par_scanner::detail

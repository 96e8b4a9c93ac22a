#pragma once

#include "scanner/byte_block.h"

/// Strings and comments among kWideSize bytes.
namespace par_scanner::detail {

/// Bytes that matter to them.
struct TMarks {
    TWideMask quotes;
    TWideMask begins;  ///< the `(` of `(*`
    TWideMask breaks;  ///< line ends and NULs, which no regular comment holds
};

/// Which bytes are in them.
struct TNesting {
    TWideMask strings;   ///< from each opening quote up to the closing one, without that
    TWideMask comments;  ///< with their parentheses
    TWideMask known;     ///< the bytes before the first comment that isn't seen whole: of no others anything is known
};

inline CByteFlags BeginComments(const CByteBlock &block, const CByteBlock &next) {
    return block.Equal('(') & next.Equal('*');
}

/// Takes bytes outside comments, and their marks. open is all bits if a string is open before the first byte, else 0. A
/// comment that holds another one or a break counts as not seen whole.
TNesting FindNesting(const char *bytes, const TMarks &marks, TWideMask open);

}  // namespace par_scanner::detail

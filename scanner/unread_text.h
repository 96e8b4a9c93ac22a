#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/base/export.h"

namespace par_scanner {

/// Why a part of a parameter file's text isn't read.
enum class TUnreadReason {
    aheadOfHeader,    ///< it stands ahead of the first section header
    malformedHeader,  ///< a line begins with `[` but is no header; nothing up to the next header is read
    readerFailure,    ///< an open string or comment, or a malformed number: nothing behind it is read
};

/// A place from which on text isn't read.
struct TUnreadText {
    std::uint32_t line = 0;    ///< from 1
    std::uint32_t column = 0;  ///< from 1
    TUnreadReason reason = TUnreadReason::readerFailure;
};

/// Finds the places from which on the scanner passes over text in silence, in the order of the text. Comments, blanks
/// and empty lines ahead of the first header don't count.
KQ_API std::vector<TUnreadText> FindUnreadText(std::string_view text);

}  // namespace par_scanner

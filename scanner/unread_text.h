#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/base/export.h"

namespace par_scanner {

/// Why the scanner passes over a part of a parameter file without a word.
enum class TUnreadReason : std::uint8_t {
    kBeforeFirstHeader,      ///< the text belongs to no section
    kFromMalformedHeaderOn,  ///< a line begins with `[` and is no header: it and what stands behind it, up to the next
                             ///< header
    kFromReadFailureOn,      ///< a string or comment that isn't closed, or a malformed number: all the rest
};

/// A place from which on text isn't read.
struct TUnreadText {
    std::uint32_t line;    ///< from 1
    std::uint32_t column;  ///< from 1
    TUnreadReason reason;

    friend bool operator==(const TUnreadText &, const TUnreadText &) = default;
};

/// The places of a parameter file from which on CParScanner doesn't read text, in the order of the text. Blanks, line
/// ends and comments are nothing to be read. For people who look at a file: to read it, none of this is needed.
KQ_API std::vector<TUnreadText> FindUnreadText(std::string_view text);

}  // namespace par_scanner

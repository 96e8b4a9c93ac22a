#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/base/export.h"

namespace par_scanner {

/// Why the scanner passes over a part of a parameter file silently.
enum class TUnreadReason : std::uint8_t {
    kBeforeFirstHeader,      ///< the text belongs to no section
    kFromMalformedHeaderOn,  ///< a line begins with `[` and is no header: it and all after it up to the next
                             ///< header
    kFromReadFailureOn,      ///< a string or comment that isn't closed, or a malformed number: all the rest
    kUnfinishedLine,         ///< the last line is a key without `=`, and no line end follows
};

/// The start of a part of the text that isn't read.
struct TUnreadText {
    std::uint32_t line;    ///< from 1
    std::uint32_t column;  ///< from 1
    TUnreadReason reason;

    friend bool operator==(const TUnreadText &, const TUnreadText &) = default;
};

/// The parts of a parameter file that CParScanner doesn't read, in the order of the text; empty if it reads all.
/// Blanks, line ends and comments count as read. This serves people who look at a file; reading one doesn't need it.
KQ_API std::vector<TUnreadText> FindUnreadText(std::string_view text);

}  // namespace par_scanner

#pragma once

#include <cstdint>

#include "platform/base/bounded_text.h"
#include "template/language/keywords.h"

namespace kq_pdt {

/// The highest number that a channel may have; the one above stands for no number.
inline constexpr std::uint32_t kHighestChannel = 0xFFFFFFFE;

/// One range of channels with what is known about it.
struct CChannelRange {
    std::uint32_t first = 0;                   ///< number of the first channel
    std::uint32_t last = 0;                    ///< number of the last channel, inclusive
    std::uint32_t type = kUndefinedCode;       ///< keyword code of the type word
    std::uint32_t direction = kUndefinedCode;  ///< keyword code of the direction word
    bool defined = false;        ///< template or parameters define it; otherwise it is the driver map's, or reserved
    bool typeFree = false;       ///< its definition leaves the type open: the user may choose it
    bool directionFree = false;  ///< the same for the direction
    bool continues = false;      ///< a piece of the definition whose next lower piece ends right below this range
    kq_base::TText name;         ///< what the definition calls it
};

}  // namespace kq_pdt

#pragma once

#include <cstdint>
#include <vector>

#include "platform/base/bounded_text.h"

namespace kq_pdt {

/// The result of a compile. Line and position are those of the reader, just after the look-ahead, without an error too.
struct TCompileResult {
    kq_base::TText message;  ///< empty without an error, and for errors that have no text
    std::uint32_t line = 0;
    std::uint32_t position = 0;
    bool no_channels = false;
    std::vector<std::uint32_t> channels;  ///< first channels of the blocks that the template fixes
};

}  // namespace kq_pdt

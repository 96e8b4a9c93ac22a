#pragma once

/// Measures what a part of a benchmark program holds in memory.
///
///     kq_bench::CMemoryMeter meter;
///     ... build something and keep it ...
///     state.counters["bytes_per_item"] = double(meter.Bytes()) / items;
///
/// The allocators themselves are asked, so blocks and chunks count whole, with their rounding and bookkeeping.

#include <malloc.h>

#include <cstddef>

#include "platform/base/pooled.h"

namespace kq_bench {

/// What was allocated since it was made and is still held, less what was held then and is freed since.
class CMemoryMeter {
public:
    std::ptrdiff_t Bytes() const { return static_cast<std::ptrdiff_t>(Held() - held_); }

private:
    static std::size_t Held() {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd + kq_base::CPooled::HeldBytes();
    }

    std::size_t held_ = Held();
};

}  // namespace kq_bench

#pragma once

/// Counts what a benchmark program allocates, by replacing the operators new and delete of the whole program. Include
/// it in one source of a program only, and only where memory is measured: the counting costs time.
///
///     kq_bench::CMemoryMeter meter;
///     ... build something and keep it ...
///     state.counters["bytes_per_item"] = double(meter.Bytes()) / items;
///
/// Counted is what the allocator sets aside for each block, its rounding included, but not its own bookkeeping ahead of
/// it. A peer written in C that calls malloc itself isn't counted.

#include <malloc.h>

#include <cstddef>
#include <cstdlib>
#include <new>

namespace kq_bench {

inline std::size_t live_bytes = 0;          ///< allocated and not yet freed
inline std::size_t allocations_so_far = 0;  ///< calls of operator new since the program started

/// What was allocated since it was made.
class CMemoryMeter {
public:
    CMemoryMeter() : bytes_(live_bytes), allocations_(allocations_so_far) {}

    /// Bytes allocated since then and still held, less those held then and freed since.
    std::ptrdiff_t Bytes() const { return static_cast<std::ptrdiff_t>(live_bytes - bytes_); }
    /// Calls of operator new since then.
    std::size_t Allocations() const { return allocations_so_far - allocations_; }

private:
    std::size_t bytes_;
    std::size_t allocations_;
};

}  // namespace kq_bench

// The forms for arrays and without exceptions come down to these by default. All benchmarks run on one thread. None is
// inlined, or the compiler would see one block pass through operator new and free().
// NOLINTBEGIN(misc-definitions-in-headers)
[[gnu::noinline]] void *operator new(std::size_t size) {
    void *block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        std::abort();
    }
    kq_bench::live_bytes += malloc_usable_size(block);
    ++kq_bench::allocations_so_far;
    return block;
}

[[gnu::noinline]] void operator delete(void *block) noexcept {
    if (block != nullptr) {
        kq_bench::live_bytes -= malloc_usable_size(block);
        std::free(block);
    }
}

[[gnu::noinline]] void operator delete(void *block, std::size_t) noexcept { operator delete(block); }
// NOLINTEND(misc-definitions-in-headers)

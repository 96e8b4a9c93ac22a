#pragma once

/// Counts what a test program allocates, by replacing the operators new and delete of the whole program. Include it in
/// one source of a program only.
///
///     CAllocationMeter meter;
///     ... work ...
///     EXPECT_EQ(meter.Allocations(), 0U);

#include <malloc.h>

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

namespace counted {

inline std::size_t live_bytes = 0;          ///< allocated and not yet freed
inline std::size_t allocations_so_far = 0;  ///< calls of operator new since the program started

inline constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();
inline std::size_t allocations_left = kNoLimit;  ///< how many calls succeed before operator new throws

}  // namespace counted

/// What was allocated since it was made.
class CAllocationMeter {
public:
    CAllocationMeter() : bytes_(counted::live_bytes), allocations_(counted::allocations_so_far) {}

    /// Bytes allocated since then and still held, less those held then and freed since.
    std::ptrdiff_t Bytes() const { return static_cast<std::ptrdiff_t>(counted::live_bytes - bytes_); }
    /// Calls of operator new since then.
    std::size_t Allocations() const { return counted::allocations_so_far - allocations_; }

private:
    std::size_t bytes_;
    std::size_t allocations_;
};

// The forms for arrays and without exceptions come down to these by default. The tests that count run on one thread.
// None is inlined, or the compiler would see one block pass through operator new and free().
// NOLINTBEGIN(misc-definitions-in-headers)
[[gnu::noinline]] void *operator new(std::size_t size) {
    if (counted::allocations_left == 0) {
        throw std::bad_alloc();
    }
    counted::allocations_left -= counted::allocations_left != counted::kNoLimit ? 1 : 0;
    void *block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        std::abort();
    }
    counted::live_bytes += malloc_usable_size(block);
    ++counted::allocations_so_far;
    return block;
}

[[gnu::noinline]] void operator delete(void *block) noexcept {
    if (block != nullptr) {
        counted::live_bytes -= malloc_usable_size(block);
        std::free(block);
    }
}

[[gnu::noinline]] void operator delete(void *block, std::size_t) noexcept { operator delete(block); }
// NOLINTEND(misc-definitions-in-headers)

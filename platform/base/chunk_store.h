#pragma once

#include <cstddef>

namespace kq_base {

/// Gives out memory in chunks of one size, each at a multiple of it. The chunks are cut from larger blocks, which the
/// system gives and gets back: it takes far longer over many small requests than over a few large ones. The first
/// blocks are small, so that a program that needs little doesn't hold much; large ones consist of huge pages where
/// there are any. A few blocks without a chunk in use are kept for the next request. May be called from any thread.
class CChunkStore {
public:
    static constexpr std::size_t kChunkSize = std::size_t{64} << 10U;
    /// At the beginning of each chunk this many bytes belong to the store and must stay as they are.
    static constexpr std::size_t kReserved = sizeof(void *);

    /// A chunk, or none if the system has no memory left. Its content is arbitrary.
    static void *Take() noexcept;
    /// Takes back a chunk.
    static void GiveBack(void *chunk) noexcept;
    /// The bytes of all chunks that are given out.
    static std::size_t HeldBytes() noexcept;
};

}  // namespace kq_base

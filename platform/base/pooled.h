#pragma once

#include <cstddef>
#include <vector>

namespace kq_base {

/// Base of the many small objects that are created, visited and released together: sections, keys, items
/// and what belongs to them. They lie one after the other in chunks, so that they are visited in the order in which
/// they were created; a chunk is free again as soon as none of its objects is left. An object may be released by
/// another thread than the one that created it. None may need an alignment above 8. Builds with a sanitizer take each
/// object from the heap, to see its misuse.
class CPooled {
public:
    static void *operator new(std::size_t size);
    static void operator delete(void *object, std::size_t size) noexcept;

    /// The bytes of all chunks in use, whatever is free in them included; 0 in builds with a sanitizer.
    static std::size_t HeldBytes() noexcept;
};

/// An allocator that takes its memory where pooled objects lie.
template <class T>
struct TPoolAllocator {
    static_assert(alignof(T) <= 8);
    using value_type = T;

    TPoolAllocator() = default;
    template <class U>
    // NOLINTNEXTLINE(google-explicit-constructor): allocators convert into each other.
    TPoolAllocator(const TPoolAllocator<U> & /*other*/) {}

    // NOLINTBEGIN(bugprone-sizeof-expression): T may be a pointer.
    T *allocate(std::size_t count) { return static_cast<T *>(CPooled::operator new(count * sizeof(T))); }
    void deallocate(T *memory, std::size_t count) noexcept { CPooled::operator delete(memory, count * sizeof(T)); }
    // NOLINTEND(bugprone-sizeof-expression)

    friend bool operator==(const TPoolAllocator & /*left*/, const TPoolAllocator & /*right*/) { return true; }
};

template <class T>
using TPoolVector = std::vector<T, TPoolAllocator<T>>;

}  // namespace kq_base

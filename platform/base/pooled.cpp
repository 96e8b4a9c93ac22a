// A chunk lies at a multiple of its size, so an object's address leads to the head of its chunk. The head counts the
// objects that are left. The thread that lays objects into a chunk counts them on its own and settles the head's count
// once, when it goes on to another chunk: until then the count is so high that it can't run out.

#include "platform/base/pooled.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace kq_base {

namespace {

constexpr std::size_t kChunkSize = std::size_t{64} << 10U;
/// Larger objects come from the heap.
constexpr std::size_t kLargest = 1024;

/// More than the objects of a chunk.
constexpr std::uint32_t kUnsettled = 1U << 20U;

struct TChunk {
    std::atomic<std::uint32_t> objects{kUnsettled};
};

constexpr std::size_t kHead = alignof(std::max_align_t);
static_assert(sizeof(TChunk) <= kHead);
static_assert(kChunkSize / kHead < kUnsettled);

void Leave(TChunk *chunk, std::uint32_t count) noexcept {
    if (chunk->objects.fetch_sub(count, std::memory_order_acq_rel) == count) {
        chunk->~TChunk();
        std::free(chunk);
    }
}

/// The chunk that a thread lays its objects into.
class CCurrentChunk {
public:
    CCurrentChunk() = default;
    ~CCurrentChunk() {
        Settle();
        chunk_ = nullptr;  // objects may still be made while the program ends
    }
    CCurrentChunk(const CCurrentChunk &) = delete;
    CCurrentChunk &operator=(const CCurrentChunk &) = delete;

    void *Take(std::size_t size) {
        if (chunk_ == nullptr || kChunkSize - used_ < size) {
            Begin();
        }
        void *object = reinterpret_cast<char *>(chunk_) + used_;
        used_ += size;
        ++objects_;
        return object;
    }

private:
    void Begin() {
        void *memory = std::aligned_alloc(kChunkSize, kChunkSize);
        if (memory == nullptr) {
            throw std::bad_alloc();
        }
        Settle();
        chunk_ = new (memory) TChunk;
        used_ = kHead;
        objects_ = 0;
    }
    void Settle() {
        if (chunk_ != nullptr) {
            Leave(chunk_, kUnsettled - objects_);
        }
    }

    TChunk *chunk_ = nullptr;
    std::size_t used_ = 0;
    std::uint32_t objects_ = 0;
};

thread_local CCurrentChunk current_chunk;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kEachFromHeap = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kEachFromHeap = true;
#else
constexpr bool kEachFromHeap = false;
#endif
#else
constexpr bool kEachFromHeap = false;
#endif

}  // namespace

void *CPooled::operator new(std::size_t size) {
    if (kEachFromHeap || size > kLargest) {
        return ::operator new(size);
    }
    constexpr std::size_t kStep = alignof(std::max_align_t);
    return current_chunk.Take((size + kStep - 1) / kStep * kStep);
}

void CPooled::operator delete(void *object, std::size_t size) noexcept {
    if (kEachFromHeap || size > kLargest) {
        ::operator delete(object);
        return;
    }
    const std::size_t offset_in_chunk = reinterpret_cast<std::uintptr_t>(object) & (kChunkSize - 1);
    Leave(reinterpret_cast<TChunk *>(static_cast<char *>(object) - offset_in_chunk), 1);
}

}  // namespace kq_base

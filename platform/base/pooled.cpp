// A chunk lies at a multiple of its size, so an object's address leads to the head of its chunk, which counts the
// objects that are left. A thread counts on its own what it does to two chunks: the one that it lays objects into, and
// the one that it last released an object of. It settles the head's count once, when it goes on to another chunk; until
// then the count of the first is so high that it can't run out. Objects that are released together lie together, so a
// chunk's count is seldom touched.

#include "platform/base/pooled.h"

#include <atomic>
#include <cstdint>
#include <new>
#include <utility>

#include "platform/base/chunk_store.h"

namespace kq_base {

namespace {

constexpr std::size_t kChunkSize = CChunkStore::kChunkSize;
/// Larger objects come from the heap.
constexpr std::size_t kLargest = 1024;
constexpr std::size_t kStep = 8;

/// More than the objects of a chunk.
constexpr std::uint32_t kUnsettled = 1U << 20U;
static_assert(kChunkSize / kStep < kUnsettled);

struct alignas(kStep) TChunk {
    char reserved[CChunkStore::kReserved];
    std::atomic<std::uint32_t> objects;

    char *Begin() { return reinterpret_cast<char *>(this + 1); }
    char *End() { return reinterpret_cast<char *>(this) + kChunkSize; }
};
static_assert(sizeof(TChunk) % kStep == 0);

void Leave(TChunk *chunk, std::uint32_t count) noexcept {
    if (chunk->objects.fetch_sub(count, std::memory_order_acq_rel) == count) {
        CChunkStore::GiveBack(chunk);
    }
}

/// What a thread is about.
struct TWork {
    TChunk *filled = nullptr;  ///< the chunk that it lays objects into
    char *next = nullptr;      ///< where there
    std::uint32_t objects = 0;
    TChunk *emptied = nullptr;  ///< the chunk that it last released an object of, unless it fills it
    std::uint32_t released = 0;
};

constinit thread_local TWork work;

void SettleFilled() noexcept {
    if (TChunk *chunk = std::exchange(work.filled, nullptr)) {
        Leave(chunk, kUnsettled - work.objects);
    }
}

void SettleEmptied() noexcept {
    if (TChunk *chunk = std::exchange(work.emptied, nullptr)) {
        Leave(chunk, std::exchange(work.released, 0));
    }
}

/// Settles what is left when the thread ends. Objects may still be created and released afterwards.
struct TSettler {
    TSettler() = default;
    ~TSettler() {
        SettleEmptied();
        SettleFilled();
    }
    TSettler(const TSettler &) = delete;
    TSettler &operator=(const TSettler &) = delete;
};

void SettleAtEnd() { thread_local const TSettler settler; }

[[gnu::noinline]] void BeginFilling() {
    SettleAtEnd();
    SettleFilled();
    SettleEmptied();
    void *memory = CChunkStore::Take();
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    auto *chunk = static_cast<TChunk *>(memory);
    new (&chunk->objects) std::atomic<std::uint32_t>(kUnsettled);
    work.filled = chunk;
    work.next = chunk->Begin();
    work.objects = 0;
}

[[gnu::noinline]] void BeginEmptying(TChunk *chunk) noexcept {
    SettleAtEnd();
    SettleEmptied();
    work.emptied = chunk;
}

constexpr std::size_t RoundUp(std::size_t size) { return (size + kStep - 1) / kStep * kStep; }

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
    size = RoundUp(size);
    if (work.filled == nullptr || static_cast<std::size_t>(work.filled->End() - work.next) < size) {
        BeginFilling();
    }
    ++work.objects;
    return std::exchange(work.next, work.next + size);
}

void CPooled::operator delete(void *object, std::size_t size) noexcept {
    if (kEachFromHeap || size > kLargest) {
        ::operator delete(object);
        return;
    }
    const std::size_t offset_in_chunk = reinterpret_cast<std::uintptr_t>(object) & (kChunkSize - 1);
    auto *chunk = reinterpret_cast<TChunk *>(static_cast<char *>(object) - offset_in_chunk);
    if (chunk == work.filled) {
        // The last object's place is free at once, and all places are when no object is left.
        --work.objects;
        if (static_cast<char *>(object) + RoundUp(size) == work.next) {
            work.next = static_cast<char *>(object);
        } else if (work.objects == 0 && chunk->objects.load(std::memory_order_acquire) == kUnsettled) {
            work.next = chunk->Begin();
        }
        return;
    }
    if (chunk != work.emptied) {
        BeginEmptying(chunk);
    }
    ++work.released;
}

std::size_t CPooled::HeldBytes() noexcept { return CChunkStore::HeldBytes(); }

}  // namespace kq_base

#include "platform/base/chunk_store.h"

#include <sys/mman.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <mutex>
#include <new>
#include <type_traits>

namespace kq_base {

namespace {

constexpr std::size_t kChunkSize = CChunkStore::kChunkSize;
constexpr std::size_t kSmallestBlock = 2 * kChunkSize;
/// The size and alignment of a huge page.
constexpr std::size_t kLargestBlock = std::size_t{2} << 20U;
/// What may lie in blocks without a chunk in use.
constexpr std::size_t kMostIdle = 2 * kLargestBlock;

using TChunkSet = std::uint32_t;
static_assert(kLargestBlock / kChunkSize <= 32, "a block's chunks are the bits of one number");

/// Blocks with a free chunk are linked to each other.
struct TBlock {
    char *memory = nullptr;
    std::size_t size = 0;
    TChunkSet free = 0;
    TBlock *next = nullptr;
    TBlock *previous = nullptr;

    TChunkSet All() const { return static_cast<TChunkSet>(~std::uint64_t{0} >> (64 - size / kChunkSize)); }
};

void *Map(std::size_t size) {
    void *memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : memory;
}

/// Memory at a multiple of the alignment; none if there isn't any left.
char *MapAligned(std::size_t size, std::size_t alignment) {
    void *memory = Map(size);
    if (memory == nullptr || reinterpret_cast<std::uintptr_t>(memory) % alignment == 0) {
        return static_cast<char *>(memory);
    }
    munmap(memory, size);
    auto *wide = static_cast<char *>(Map(size + alignment));
    if (wide == nullptr) {
        return nullptr;
    }
    const std::size_t before = alignment - reinterpret_cast<std::uintptr_t>(wide) % alignment;
    munmap(wide, before);
    if (before != alignment) {
        munmap(wide + before + size, alignment - before);
    }
    return wide + before;
}

class CBlocks {
public:
    void *Take() noexcept {
        const std::lock_guard lock(mutex_);
        if (with_free_ == nullptr && !AddBlock()) {
            return nullptr;
        }
        TBlock &block = *with_free_;
        if (block.free == block.All()) {
            idle_ -= block.size;
        }
        const int index = std::countr_zero(block.free);
        block.free &= block.free - 1;
        if (block.free == 0) {
            Unlink(block);
        }
        held_ += kChunkSize;
        return new (block.memory + static_cast<std::size_t>(index) * kChunkSize) TBlock *(&block);
    }

    void GiveBack(void *chunk) noexcept {
        const std::lock_guard lock(mutex_);
        TBlock &block = **static_cast<TBlock **>(chunk);
        const std::size_t offset = static_cast<std::size_t>(static_cast<char *>(chunk) - block.memory);
        if (block.free == 0) {
            Link(block);
        }
        block.free |= TChunkSet{1} << (offset / kChunkSize);
        held_ -= kChunkSize;
        if (block.free == block.All()) {
            idle_ += block.size;
            DropIdle(kMostIdle);
        }
    }

    void DropAllIdle() noexcept {
        const std::lock_guard lock(mutex_);
        DropIdle(0);
    }

    std::size_t HeldBytes() noexcept {
        const std::lock_guard lock(mutex_);
        return held_;
    }

private:
    /// As large as all blocks together, so that their number stays small, and what none uses, too.
    bool AddBlock() noexcept {
        auto *block = new (std::nothrow) TBlock;
        if (block == nullptr) {
            return false;
        }
        block->size = std::clamp(mapped_, kSmallestBlock, kLargestBlock);
        block->memory = MapAligned(block->size, block->size == kLargestBlock ? kLargestBlock : kChunkSize);
        if (block->memory == nullptr) {
            delete block;
            return false;
        }
        if (block->size == kLargestBlock) {
            madvise(block->memory, block->size, MADV_HUGEPAGE);  // without huge pages it is refused, which is as well
        }
        mapped_ += block->size;
        idle_ += block->size;
        block->free = block->All();
        Link(*block);
        return true;
    }

    void DropIdle(std::size_t most_idle) noexcept {
        for (TBlock *block = with_free_; block != nullptr && idle_ > most_idle;) {
            TBlock *next = block->next;
            if (block->free == block->All()) {
                Unlink(*block);
                idle_ -= block->size;
                mapped_ -= block->size;
                munmap(block->memory, block->size);
                delete block;
            }
            block = next;
        }
    }

    void Link(TBlock &block) noexcept {
        block.previous = nullptr;
        block.next = with_free_;
        if (with_free_ != nullptr) {
            with_free_->previous = &block;
        }
        with_free_ = &block;
    }

    void Unlink(TBlock &block) noexcept {
        (block.previous != nullptr ? block.previous->next : with_free_) = block.next;
        if (block.next != nullptr) {
            block.next->previous = block.previous;
        }
    }

    std::mutex mutex_;
    TBlock *with_free_ = nullptr;
    std::size_t mapped_ = 0;  ///< bytes of all blocks
    std::size_t idle_ = 0;    ///< bytes of the blocks without a chunk in use
    std::size_t held_ = 0;
};

/// Chunks are taken and given back while the program ends, too, so nothing ends the blocks.
constinit CBlocks blocks;
static_assert(std::is_trivially_destructible_v<CBlocks>);

/// For a library that is unloaded.
struct TDropAtEnd {
    TDropAtEnd() = default;
    ~TDropAtEnd() { blocks.DropAllIdle(); }
    TDropAtEnd(const TDropAtEnd &) = delete;
    TDropAtEnd &operator=(const TDropAtEnd &) = delete;
};

const TDropAtEnd drop_at_end;

}  // namespace

void *CChunkStore::Take() noexcept { return blocks.Take(); }

void CChunkStore::GiveBack(void *chunk) noexcept { blocks.GiveBack(chunk); }

std::size_t CChunkStore::HeldBytes() noexcept { return blocks.HeldBytes(); }

}  // namespace kq_base

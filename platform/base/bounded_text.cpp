// A text is one heap block: reference count, length, capacity, then the characters with a terminator. An empty text
// has no block. Copies share the block; whoever changes a text that is shared first makes a block of its own.

#include "platform/base/bounded_text.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>

#include "platform/base/pooled.h"

namespace kq_base {

struct CSharedText::TBlock {
    std::atomic<std::uint32_t> owners{1};
    std::uint16_t length = 0;
    std::uint16_t capacity = 0;

    char *Data() { return reinterpret_cast<char *>(this + 1); }
};

namespace {

std::string_view CutAtTerminator(std::string_view text, std::size_t bound) {
    text = text.substr(0, bound);
    return text.substr(0, text.find('\0'));
}

}  // namespace

CSharedText::TBlock *CSharedText::NewBlock(std::size_t capacity) {
    void *memory = CPooled::operator new(sizeof(TBlock) + capacity + 1);
    auto *block = new (memory) TBlock;
    block->capacity = static_cast<std::uint16_t>(capacity);
    return block;
}

CSharedText::CSharedText(const CSharedText &other) noexcept : block_(other.block_) {
    if (block_ != nullptr) {
        block_->owners.fetch_add(1, std::memory_order_relaxed);
    }
}

CSharedText &CSharedText::operator=(const CSharedText &other) noexcept {
    CSharedText copy(other);
    std::swap(block_, copy.block_);
    return *this;
}

/// Most blocks have one owner. Nobody else can become one meanwhile, so no costly atomic step is needed.
void CSharedText::ReleaseBlock() {
    if (block_->owners.load(std::memory_order_acquire) == 1 ||
        block_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        CPooled::operator delete(block_, sizeof(TBlock) + block_->capacity + 1);
    }
    block_ = nullptr;
}

std::string_view CSharedText::View() const {
    return block_ == nullptr ? std::string_view() : std::string_view(block_->Data(), block_->length);
}

const char *CSharedText::Characters() const { return block_ == nullptr ? "" : block_->Data(); }

std::size_t CSharedText::Length() const { return block_ == nullptr ? 0 : block_->length; }

void CSharedText::Clear() { Release(); }

void CSharedText::Assign(std::string_view text, std::size_t bound) {
    text = CutAtTerminator(text, bound);
    if (text.empty()) {
        Release();
        return;
    }
    TBlock *block = NewBlock(text.size());
    std::memcpy(block->Data(), text.data(), text.size());
    block->Data()[text.size()] = '\0';
    block->length = static_cast<std::uint16_t>(text.size());
    Release();
    block_ = block;
}

void CSharedText::Append(std::string_view text, std::size_t bound) {
    const std::size_t length = Length();
    if (length >= bound) {
        return;
    }
    text = CutAtTerminator(text, bound - length);
    if (text.empty()) {
        return;
    }
    const std::size_t total = length + text.size();
    const bool own = block_ != nullptr && block_->owners.load(std::memory_order_acquire) == 1;
    if (own && total <= block_->capacity) {
        std::memmove(block_->Data() + length, text.data(), text.size());
    } else {
        TBlock *block = NewBlock(std::min(bound, length == 0 ? total : total + total / 2));
        std::memcpy(block->Data(), Characters(), length);
        std::memcpy(block->Data() + length, text.data(), text.size());
        Release();
        block_ = block;
    }
    block_->Data()[total] = '\0';
    block_->length = static_cast<std::uint16_t>(total);
}

void CopyToBuffer(std::string_view text, std::size_t high, char *buffer) {
    if (buffer == nullptr) {
        return;
    }
    text = CutAtTerminator(text, high);
    if (!text.empty()) {
        std::memmove(buffer, text.data(), text.size());
    }
    buffer[text.size()] = '\0';
}

std::string_view ViewOfPair(std::size_t length, const char *text) {
    if (text == nullptr) {
        return {};
    }
    if (length == 0) {
        return {text, std::strlen(text)};
    }
    return {text, strnlen(text, length)};
}

}  // namespace kq_base

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/base/export.h"

namespace kq_base {

/// A text that shares its characters with its copies and costs one pointer where it is stored. Not bounded by itself:
/// TBoundedText puts the bound on it. A NUL byte ends whatever is put in. Reading a text from several threads and
/// copying it there is safe, changing one object from two threads is not.
class KQ_API CSharedText {
public:
    CSharedText() = default;
    CSharedText(const CSharedText &other) noexcept;
    CSharedText(CSharedText &&other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    CSharedText &operator=(const CSharedText &other) noexcept;
    CSharedText &operator=(CSharedText &&other) noexcept {
        std::swap(block_, other.block_);
        return *this;
    }
    ~CSharedText() { Release(); }

    /// The characters, valid until this object changes.
    std::string_view View() const;
    /// The same, zero-terminated.
    const char *Characters() const;
    bool IsEmpty() const { return block_ == nullptr; }
    std::size_t Length() const;
    /// Replaces the text by at most bound characters of another; the source may lie inside this text.
    void Assign(std::string_view text, std::size_t bound);
    /// Appends what fits below bound.
    void Append(std::string_view text, std::size_t bound);
    void Clear();

private:
    struct TBlock;
    static TBlock *NewBlock(std::size_t capacity);
    void Release() {
        if (block_ != nullptr) {
            ReleaseBlock();
        }
    }
    void ReleaseBlock();

    TBlock *block_ = nullptr;
};

/// A text of at most Bound characters that cuts silently at its bound. Its memory follows the text, not the bound.
template <std::size_t Bound>
class TBoundedText {
public:
    static constexpr std::size_t kBound = Bound;

    TBoundedText() = default;
    explicit TBoundedText(std::string_view text) { Assign(text); }
    TBoundedText &operator=(std::string_view text) {
        Assign(text);
        return *this;
    }

    std::string_view View() const { return text_.View(); }
    const char *Characters() const { return text_.Characters(); }
    bool IsEmpty() const { return text_.IsEmpty(); }
    std::size_t Length() const { return text_.Length(); }
    void Assign(std::string_view text) { text_.Assign(text, Bound); }
    void Append(std::string_view text) { text_.Append(text, Bound); }
    void Clear() { text_.Clear(); }

    friend bool operator==(const TBoundedText &left, const TBoundedText &right) { return left.View() == right.View(); }
    friend bool operator==(const TBoundedText &left, std::string_view right) { return left.View() == right; }

private:
    CSharedText text_;
};

/// The usual text of the model: names, labels, values, messages.
using TText = TBoundedText<255>;
/// A file path.
using TPathText = TBoundedText<259>;

/// Copies a text into a caller's buffer whose highest valid index is high; cuts silently and always terminates.
/// Does nothing without a buffer.
KQ_API void CopyToBuffer(std::string_view text, std::size_t high, char *buffer);

/// The text that a (high index or length, pointer) pair names: a length of 0 means up to the terminator, and a
/// terminator ends it earlier.
KQ_API std::string_view ViewOfPair(std::size_t length, const char *text);

}  // namespace kq_base

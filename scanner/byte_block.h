#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Sixteen bytes that are tested together. With SSE2 a test costs an instruction or two, elsewhere a loop; the results
/// are the same.
namespace par_scanner::detail {

/// Which of sixteen bytes passed a test.
class CByteFlags {
public:
#if defined(__SSE2__)
    explicit CByteFlags(__m128i flags) : flags_(flags) {}

    friend CByteFlags operator&(CByteFlags left, CByteFlags right) {
        return CByteFlags(_mm_and_si128(left.flags_, right.flags_));
    }
    friend CByteFlags operator|(CByteFlags left, CByteFlags right) {
        return CByteFlags(_mm_or_si128(left.flags_, right.flags_));
    }
    /// Those of this without those of the other.
    CByteFlags Without(CByteFlags other) const { return CByteFlags(_mm_andnot_si128(other.flags_, flags_)); }
    /// One bit for each byte, the first byte's bit lowest.
    std::uint32_t Mask() const { return static_cast<std::uint32_t>(_mm_movemask_epi8(flags_)); }

private:
    __m128i flags_;
#else
    explicit CByteFlags(std::uint32_t mask) : mask_(mask) {}

    friend CByteFlags operator&(CByteFlags left, CByteFlags right) { return CByteFlags(left.mask_ & right.mask_); }
    friend CByteFlags operator|(CByteFlags left, CByteFlags right) { return CByteFlags(left.mask_ | right.mask_); }
    CByteFlags Without(CByteFlags other) const { return CByteFlags(mask_ & ~other.mask_); }
    std::uint32_t Mask() const { return mask_; }

private:
    std::uint32_t mask_;
#endif
};

class CByteBlock {
public:
    static constexpr std::uint32_t kSize = 16;
    static constexpr std::uint32_t kAll = 0xFFFF;  ///< the mask of all bytes

#if defined(__SSE2__)
    explicit CByteBlock(const char *bytes) : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes))) {}

    void Store(char *target) const { _mm_storeu_si128(reinterpret_cast<__m128i *>(target), bytes_); }
    CByteFlags Equal(char character) const { return CByteFlags(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(character))); }
    /// An ASCII letter in either case; letter is the small one.
    CByteFlags EqualLetter(char letter) const { return CByteFlags(_mm_cmpeq_epi8(Folded(), _mm_set1_epi8(letter))); }
    /// Bytes of ASCII from first to last.
    CByteFlags InRange(char first, char last) const { return CByteFlags(InRange(bytes_, first, last)); }
    /// The letters, digits and underscores of ASCII and all bytes from 128 up.
    CByteFlags Words() const {
        // Of a byte's flag only the highest bit counts, so the bytes are the flags of those from 128 up.
        return CByteFlags(_mm_or_si128(InRange(Folded(), 'a', 'z'), bytes_)) | InRange('0', '9') | Equal('_');
    }

private:
    __m128i Folded() const { return _mm_or_si128(bytes_, _mm_set1_epi8(0x20)); }
    static __m128i InRange(__m128i bytes, char first, char last) {
        // Moved so that the range ends at the highest value that there is.
        const __m128i moved = _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(127 - last)));
        return _mm_cmpgt_epi8(moved, _mm_set1_epi8(static_cast<char>(126 - (last - first))));
    }

    __m128i bytes_;
#else
    explicit CByteBlock(const char *bytes) { std::memcpy(bytes_, bytes, kSize); }

    void Store(char *target) const { std::memcpy(target, bytes_, kSize); }
    CByteFlags Equal(char character) const {
        return Ask([=](char byte) { return byte == character; });
    }
    CByteFlags EqualLetter(char letter) const {
        return Ask([=](char byte) { return (byte | 0x20) == letter; });
    }
    CByteFlags InRange(char first, char last) const {
        return Ask([=](char byte) { return byte >= first && byte <= last; });
    }
    CByteFlags Words() const {
        return Ask([](char byte) {
            const int folded = byte | 0x20;
            return (folded >= 'a' && folded <= 'z') || (byte >= '0' && byte <= '9') || byte == '_' ||
                   (byte & 0x80) != 0;
        });
    }

private:
    template <class Question>
    CByteFlags Ask(Question question) const {
        std::uint32_t mask = 0;
        for (std::uint32_t at = 0; at < kSize; ++at) {
            mask |= question(bytes_[at]) ? 1U << at : 0U;
        }
        return CByteFlags(mask);
    }

    char bytes_[kSize];
#endif

public:
    /// The bytes equal to one of the characters.
    template <class... Characters>
    CByteFlags AnyOf(Characters... characters) const {
        return (Equal(characters) | ...);
    }
};

/// The index of the lowest bit of a mask that isn't 0.
template <class Mask>
std::uint32_t LowestBit(Mask mask) {
    if (mask == 0) {
        __builtin_unreachable();
    }
    return static_cast<std::uint32_t>(std::countr_zero(mask));
}

using TWideMask = std::uint64_t;
inline constexpr std::uint32_t kWideSize = std::numeric_limits<TWideMask>::digits;

/// The mask of kWideSize bytes. The question takes a block and gives its flags; it may take the block one byte further
/// as well.
template <class Question>
TWideMask WideMask(const char *bytes, Question question) {
    TWideMask mask = 0;
    for (std::uint32_t at = 0; at < kWideSize; at += CByteBlock::kSize) {
        const CByteBlock block(bytes + at);
        if constexpr (std::is_invocable_v<Question, CByteBlock, CByteBlock>) {
            mask |= TWideMask{question(block, CByteBlock(bytes + at + 1)).Mask()} << at;
        } else {
            mask |= TWideMask{question(block).Mask()} << at;
        }
    }
    return mask;
}

/// Asks the memory for what will be looked at soon, if the looks go on from these bytes: of itself the processor reads
/// ahead to the end of the page only. Beyond the text that does no harm.
inline void Prefetch(const char *bytes) { __builtin_prefetch(bytes + 1024); }

/// The number of bits. Without an instruction for it, compilers call a function.
inline std::uint32_t CountBits(TWideMask mask) {
    mask -= (mask >> 1U) & 0x5555555555555555;
    mask = (mask & 0x3333333333333333) + ((mask >> 2U) & 0x3333333333333333);
    mask = (mask + (mask >> 4U)) & 0x0F0F0F0F0F0F0F0F;
    return static_cast<std::uint32_t>((mask * 0x0101010101010101) >> 56U);
}

/// The bits from each quote up to the next one, without that: the bytes in strings, if none is open before the first.
inline TWideMask InStrings(TWideMask quotes) {
    for (std::uint32_t distance = 1; distance != kWideSize; distance *= 2) {
        quotes ^= quotes << distance;
    }
    return quotes;
}

/// The bits up to the lowest one of a mask, with that; all bits if there is none.
template <class Mask>
Mask UpToLowest(Mask mask) {
    return mask ^ (mask - 1);
}

}  // namespace par_scanner::detail

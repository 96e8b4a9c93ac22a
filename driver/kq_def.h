#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// The values that cross the border between the runtime and a driver module.
namespace kq_def {

/// What a TValue holds. The codes from kTagBoolean to kTagReal, kTagBuffer and kTagDString are also the types of
/// channels in a driver map.
enum TValueTag : std::uint32_t {
    kTagBoolean = 2,
    kTagShortcard = 3,
    kTagCardinal = 4,
    kTagLongcard = 5,
    kTagShortint = 6,
    kTagInteger = 7,
    kTagLongint = 8,
    kTagShortreal = 9,
    kTagReal = 10,
    kTagShortText = 11,    ///< pointer to a zero-terminated text in the caller's buffer; generations 1 and 2 only
    kTagBuffer = 12,       ///< unaligned pointer to the memory of a buffer
    kTagDString = 14,      ///< TDStringA *; callers of the proxy use this form
    kTagCountedText = 15,  ///< count of characters and pointer to them; generation 3 only
};

/// A tagged value. Its fields lie at fixed places whatever the width of a pointer, so pointers and counts go in and out
/// by PutField and GetField; scalars are bytes that only drivers and their hosts understand. Passes by value.
struct TValue {
    static constexpr std::size_t kPayloadSize = 4 + sizeof(void *);
    static constexpr std::size_t kDStringAt = 4;     ///< tags kTagShortText and kTagDString: the pointer
    static constexpr std::size_t kCountAt = 4;       ///< kTagCountedText: the count, 32 bits
    static constexpr std::size_t kCharactersAt = 8;  ///< kTagCountedText: the pointer
    static constexpr std::size_t kBufferAt = 7;      ///< kTagBuffer: the pointer, unaligned

    std::uint32_t tag = 0;
    std::array<std::uint8_t, kPayloadSize> payload{};

    /// Writes a field at a place counted from the start of the record, 4 or above.
    template <typename TField>
    void PutField(std::size_t at, TField field) {
        std::memcpy(payload.data() + (at - sizeof(tag)), &field, sizeof(TField));
    }
    /// Reads the field at such a place.
    template <typename TField>
    TField GetField(std::size_t at) const {
        TField field;
        std::memcpy(&field, payload.data() + (at - sizeof(tag)), sizeof(TField));
        return field;
    }
};

static_assert(sizeof(TValue) == 8 + sizeof(void *), "drivers rely on the places of the fields");

/// Which way the values of a channel go.
enum TDirection : std::uint32_t {
    kDirectionInput = 1,
    kDirectionOutput = 2,
    kDirectionBoth = 3,
    kDirectionEither = 4,  ///< only a driver's own list says so: the channel may be used in any direction
};

/// A moment in time as drivers count it. It passes through by pointer and is never looked into.
struct TUTCStamp;

}  // namespace kq_def

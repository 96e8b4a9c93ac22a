#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "driver/kq_driver_types.h"

/// The values that cross the border between the runtime and a driver module.
namespace kq_def {

/// What a TValue holds. The codes from kTagBoolean to kTagReal, kTagBuffer and kTagDString are also the types of
/// channels in a driver map.
enum TValueTag : std::uint32_t {
    kTagBoolean = KQ_TAG_BOOLEAN,
    kTagShortcard = KQ_TAG_SHORTCARD,
    kTagCardinal = KQ_TAG_CARDINAL,
    kTagLongcard = KQ_TAG_LONGCARD,
    kTagShortint = KQ_TAG_SHORTINT,
    kTagInteger = KQ_TAG_INTEGER,
    kTagLongint = KQ_TAG_LONGINT,
    kTagShortreal = KQ_TAG_SHORTREAL,
    kTagReal = KQ_TAG_REAL,
    kTagShortText =
        KQ_TAG_SHORT_TEXT,       ///< pointer to a zero-terminated text in the caller's buffer; generations 1 and 2 only
    kTagBuffer = KQ_TAG_BUFFER,  ///< unaligned pointer to the memory of a buffer
    kTagDString = KQ_TAG_DSTRING,           ///< TDStringA *; callers of the proxy use this form
    kTagCountedText = KQ_TAG_COUNTED_TEXT,  ///< count of characters and pointer to them; generation 3 only
};

/// A tagged value: the record KQValue of the modules, so it passes to them as it is. Its fields lie at fixed offsets
/// whatever the width of a pointer, so pointers and counts go in and out by PutField and GetField; scalars are bytes
/// that only drivers and their hosts understand. A new value is all zero.
struct TValue : KQValue {
    static constexpr std::size_t kPayloadSize = sizeof(KQValue::payload);
    static constexpr std::size_t kDStringAt = 4;     ///< tags kTagShortText and kTagDString: the pointer
    static constexpr std::size_t kCountAt = 4;       ///< kTagCountedText: the count, 32 bits
    static constexpr std::size_t kCharactersAt = 8;  ///< kTagCountedText: the pointer
    static constexpr std::size_t kBufferAt = 7;      ///< kTagBuffer: the pointer, unaligned

    TValue() : KQValue() {}
    explicit TValue(const KQValue &value) : KQValue(value) {}

    /// Writes a field at an offset counted from the start of the record, 4 or above.
    template <typename TField>
    void PutField(std::size_t offset, TField field) {
        // NOLINTNEXTLINE(bugprone-sizeof-expression): a field may be a pointer.
        std::memcpy(payload + (offset - sizeof(tag)), &field, sizeof(TField));
    }
    /// Reads the field at such an offset.
    template <typename TField>
    TField GetField(std::size_t offset) const {
        TField field;
        // NOLINTNEXTLINE(bugprone-sizeof-expression): likewise.
        std::memcpy(&field, payload + (offset - sizeof(tag)), sizeof(TField));
        return field;
    }
};

static_assert(sizeof(TValue) == 8 + sizeof(void *), "drivers rely on the offsets of the fields");

/// Which way the values of a channel go.
enum TDirection : std::uint32_t {
    kDirectionInput = 1,
    kDirectionOutput = 2,
    kDirectionBoth = 3,
    kDirectionEither = 4,  ///< only a driver's own list says so: the channel may be used in any direction
};

/// A moment in time as drivers count it. It passes through by pointer and is never looked into; a host and its drivers
/// agree on what the name KQUTCStamp is.
using TUTCStamp = KQUTCStamp;

}  // namespace kq_def

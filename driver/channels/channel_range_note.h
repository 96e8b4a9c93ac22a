#pragma once

#include <cstdint>

#include "driver/channels/range_tree.h"
#include "template/language/keywords.h"

/// The note of a range in the table of channels: four flags, and above them the number of its name.
namespace kq_pdt {

inline constexpr std::uint32_t kNoteDefined = 1;
inline constexpr std::uint32_t kNoteTypeFree = 2;
inline constexpr std::uint32_t kNoteDirectionFree = 4;
inline constexpr std::uint32_t kNoteContinues = 8;
inline constexpr std::uint32_t kNoteFlags = 15;
inline constexpr std::uint32_t kNoteNameShift = 4;

/// The flags of a range that is given this type and direction.
constexpr std::uint32_t NoteFlags(bool defined, std::uint32_t type, std::uint32_t direction) {
    return (defined ? kNoteDefined : 0) | (type == kUndefinedCode ? kNoteTypeFree : 0) |
           (direction == kUndefinedCode ? kNoteDirectionFree : 0);
}

/// A note with another name; its flags stay.
constexpr std::uint32_t WithName(std::uint32_t note, std::uint32_t name_bits) {
    return (note & kNoteFlags) | name_bits;
}

constexpr bool IsDefined(const kq_drv::TRangeRecord &range) { return (range.note & kNoteDefined) != 0; }

/// The bits of a note that hold the name; 0 without one.
constexpr std::uint32_t NameBitsOf(std::uint32_t note) { return note & ~kNoteFlags; }

/// True for a piece of a definition that isn't its lowest.
constexpr bool Continues(const kq_drv::TRangeRecord &range) { return (range.note & kNoteContinues) != 0; }

/// True if both codes are known and unlike.
constexpr bool Differs(std::uint32_t code, std::uint32_t asked) {
    return code != kUndefinedCode && asked != kUndefinedCode && code != asked;
}

}  // namespace kq_pdt

#pragma once

#include <cstdint>

#include "scanner/tape_reader.h"

/// What the scanner keeps of a parameter file beside its text: positions, no characters.
namespace par_scanner {

/// A key of a section. Sixteen bytes, since a file may hold hundreds of thousands.
struct CKey {
    std::uint32_t index = 0;       ///< offset of the start of the key's line
    std::uint32_t line = 0;        ///< that line, from 1
    std::uint32_t name = 0;        ///< offset of the key text
    std::uint16_t equal = 0;       ///< if regular: from the key text to the `=`; 0 if there is none
    std::uint8_t name_length = 0;  ///< at most 255
    bool regular = false;          ///< the line needn't be read token by token

    TPosition Position() const { return {index, line, 1}; }
};
static_assert(sizeof(CKey) == 16);

/// A section. A header after a comment is a key line too, so the section before it goes on beyond it: the keys of such
/// joined sections are read together, and those of the later one are the last ones of the earlier one.
struct CSection {
    const CKey *keys = nullptr;     ///< the first one; the keys may be read before the section is loaded
    std::uint32_t keys_read = 0;    ///< how many are there
    std::uint32_t current_key = 0;  ///< the cursor; KeyCount() if no key is current
    TPosition position;             ///< the start of the line after the header
    TPosition end;                  ///< where reading the keys left the tape
    std::uint32_t index = 0;        ///< of the section, from 0
    std::uint32_t line = 0;         ///< the line of the header, from 1
    std::uint32_t name = 0;         ///< offset of the text between the brackets
    std::uint32_t odd_line = 0;     ///< index of the first odd line after the header's
    std::uint8_t name_length = 0;   ///< at most 255
    bool read = false;              ///< the keys have been read
    bool loaded = false;            ///< and the section has them
    bool plain = false;             ///< the header's line is plain and has no `=`, so reading keys ends after it
    bool joined = false;            ///< the keys of the section before go on through this one

    std::uint32_t KeyCount() const { return loaded ? keys_read : 0; }
    const CKey *CurrentKey() const { return current_key < KeyCount() ? keys + current_key : nullptr; }
};

}  // namespace par_scanner

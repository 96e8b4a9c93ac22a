#pragma once

#include <cstdint>
#include <string>

#include "driver/kq_driver_types.h"

/// How a test module misbehaves.
enum class TMischief : std::uint8_t {
    kNone,
    kNoDriver,        ///< MakeDriver gives 0
    kForeignText,     ///< answers with a text of its own instead of the one in the caller's room
    kSilent,          ///< leaves the record of a text as it came
    kNullTwice,       ///< wants more room every time
    kNamedSize,       ///< wants more room, of the size that the test names
    kCountAboveRoom,  ///< claims a text of the size that the test names without asking for room
    kUnterminated,    ///< fills the whole room that a text without a count has, and no zero
    kMovedBuffer,     ///< changes where a buffer lies
};

/// What a test tells a module, and what the module tells the test. Every module has one, behind the name TestControl.
/// Texts stand here in both widths, so that module and test need no conversion.
struct TModuleControl {
    TMischief mischief = TMischief::kNone;
    KQTruth answer = 1;            ///< of every entry that has one
    std::uint32_t code = 0;        ///< of GetInput3, InputFinalized and OutputFinalized
    std::uint32_t named_size = 0;  ///< what the mischief of that name asks for
    std::uint32_t blocks = 0;      ///< how many blocks of channels are listed: 10 at 1, 20 at 11, ...
    std::uint32_t overlap = 0;     ///< the block that begins where the first one does, if not 0
    std::string text;              ///< every text that the module gives
    std::u16string wide_text;
    std::string second_text;  ///< the second text of entries that give two
    std::u16string wide_second_text;

    bool calls_back = false;  ///< Init3 calls its host

    bool logs = true;
    std::string log;            ///< the calls since it was cleared, a line each
    std::string given;          ///< the last text that came in, of an 8-bit module
    std::u16string wide_given;  ///< the same of a wide one
    std::string present;        ///< the answer's present text at the last query
    std::u16string wide_present;
    std::uint32_t text_calls = 0;  ///< how often a text was asked for
    void *context = nullptr;
    KQDriverCallbackEntry *callback = nullptr;
};

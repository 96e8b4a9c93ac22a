#pragma once

#include <cstdint>
#include <string_view>

namespace kq_pdt {

/// The words of the template language. Their numbers are part of the model: channel types and directions are stored as
/// these codes, and token kinds from 100 up are these words. A word is a keyword only in small letters.
enum TKeyword : std::uint32_t {
    kwDefSection = 100,
    kwEndSection,
    kwName,
    kwRequired,
    kwDefKey,
    kwEndKey,
    kwMultiple,
    kwDependOn,
    kwString,
    kwNumber,
    kwDefPar = 110,
    kwLabel,
    kwDefault,
    kwRangeFrom,
    kwRangeTo,
    kwId,
    kwComment,
    kwEndPar,
    kwBubble,
    kwPar,
    kwProcedure = 120,
    kwDll,
    kwLoadPdt,
    kwOptional,
    kwNedef,
    kwEnableIf,
    kwOption,
    kwOptions,
    kwChannels,
    kwChType,
    kwChFrom = 130,
    kwChTo,
    kwChNumber,
    kwBoolean,
    kwShortcard,
    kwCardinal,
    kwLongcard,
    kwShortint,
    kwInteger,
    kwLongint,
    kwShortreal = 140,
    kwReal,
    kwBegin,
    kwEnd,
    kwInput,
    kwOutput,
    kwBidirectional,
    kwChDirection,
    kwNoChannels,
    kwChCount,
    kwVerFrom = 150,
    kwReadAll,
    kwKeywords,
    kwWriteIfAll,
    kwVar,
    kwChannelsGroup,
    kwInitValue,
    kwCreateNewChannel,
    kwMod,
    kwAll,
    kwOr = 160,
    kwAnd,
    kwNot,
    kwChannelRange,
    kwType,
    kwDirection,
    kwTrue,
    kwFalse,
    kwFloating,
    kwNoCaseSensitive,
};

inline constexpr std::uint32_t kFirstKeyword = kwDefSection;
inline constexpr std::uint32_t kKeywordCount = kwNoCaseSensitive - kFirstKeyword + 1;

/// A channel type or direction that isn't known.
inline constexpr std::uint32_t kUndefinedCode = 0xFFFFFFFF;

/// The code of a word, or 0 if it is no keyword.
std::uint32_t FindKeyword(std::string_view word);

/// The word of a code; empty for a number that is no keyword's.
std::string_view KeywordText(std::uint32_t code);

/// True for the ten types that a channel can have: boolean to real, and string.
constexpr bool IsChannelType(std::uint32_t code) { return code == kwString || (code >= kwBoolean && code <= kwReal); }

/// True for input, output and bidirectional.
constexpr bool IsDirection(std::uint32_t code) { return code >= kwInput && code <= kwBidirectional; }

}  // namespace kq_pdt

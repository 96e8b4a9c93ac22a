#pragma once

#include <cstdint>
#include <string_view>

#include "platform/base/export.h"

namespace par_scanner {

/// What a token is. TToken carries the plain number; keywords of the template language have the numbers from 100 up.
enum TTokenKind : std::uint32_t {
    kNoToken = 0,  ///< a number whose exponent is malformed; never a token of a text
    kIdentifier = 1,
    kString = 2,
    kNumber = 3,
    kPlus = 4,
    kMinus = 5,
    kStar = 6,
    kSlash = 7,
    kAssign = 8,  ///< :=
    kAmpersand = 9,
    kDot = 10,
    kComma = 11,
    kSemicolon = 12,
    kColon = 13,
    kLeftParenthesis = 14,
    kRightParenthesis = 15,
    kLeftBracket = 16,
    kRightBracket = 17,
    kLeftBrace = 18,
    kRightBrace = 19,
    kCaret = 20,
    kTilde = 21,
    kEqual = 22,
    kHash = 23,
    kNotEqual = 24,  ///< <>
    kLess = 25,
    kLessEqual = 26,
    kGreater = 27,
    kGreaterEqual = 28,
    kShiftLeft = 29,
    kShiftRight = 30,
    kBar = 31,
    kQuestion = 32,
    kExclamation = 33,
    kPercent = 34,
    kBackslash = 35,
    kDotDot = 36,
    kLineEnd = 37,
    kEndOfInput = 38,
    kBlank = 40,
};

/// Why ReadToken answered false. Other reasons for false leave the error as it was: see CTapeReader::ReadToken.
enum TReadError : std::uint32_t {
    kLineEndInString = 2,
    kStringTooLong = 3,
    kMalformedExponent = 4,
    kUnknownStreamKind = 5,
    kReadPastEnd = 6,  ///< a consuming read after the end of input was peeked
};

/// Raw characters: no terminator, the length is kept beside the pointer.
using TStr0_ = char;

/// One token.
struct TToken {
    std::uint32_t kind = kNoToken;
    /// Characters of text. Set for identifiers, strings and numbers only; otherwise length and text stay untouched.
    std::uint32_t length = 0;
    /// The reader's text buffer, valid until its next read. Zero-terminated if length is below CTapeReader::kTextSize.
    const char *text = nullptr;

    std::string_view View() const { return {text, length}; }
};

/// The text of an operator kind, one blank for kBlank, an empty text for every other kind.
KQ_API std::string_view TokenKindText(std::uint32_t kind);
/// The same into a buffer whose highest valid index is high; cuts silently and terminates.
KQ_API void TokenKindToString(std::uint32_t kind, std::uint32_t high, char *text);

}  // namespace par_scanner

#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/base/dynamic_string.h"
#include "platform/base/export.h"

namespace par_scanner {

/// What a token is. TToken carries the plain number; keywords of the template language are laid over it from 100 up.
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

/// A reader's place on its tape.
struct TPosition {
    std::uint32_t index = 0;      ///< offset of the next character
    std::uint32_t line = 1;       ///< its line, from 1
    std::uint32_t lineIndex = 1;  ///< its place in that line, from 1

    friend bool operator==(const TPosition &, const TPosition &) = default;
};

/// Cuts a text into tokens. This raw form delivers blanks and line ends as tokens; a carriage return is an identifier
/// of one character and a tab begins one. Comments are `(*` to `*)`, nest to any depth and yield no token. Strings
/// stand in single quotes, a doubled quote inside is one quote.
///
/// The tape isn't owned and not written to. A copy of a reader shares the tape and goes its own way. Reading allocates
/// nothing.
class KQ_API CTapeReader {
public:
    static constexpr std::uint32_t kTextSize = 1024;  ///< the most characters that one token holds
    static constexpr std::uint32_t kSourceText = 1;
    static constexpr std::uint32_t kSourceStream = 2;

    CTapeReader() = default;

    /// Chooses what the tape holds: a text (the start value), or tokens in their compact byte form. With any other
    /// source every read fails.
    virtual void SetSourceOfCode(std::uint32_t source);
    /// The next character; moves on unless peek. False at the end of the tape or without one. Never writes error.
    /// A subclass that overrides this supplies the characters itself; reading is then as slow as that is.
    virtual bool ReadCharacter(std::uint32_t &error, char &character, bool peek);

    /// Lays in a tape of size characters and starts at its beginning; line and lineIndex go on counting.
    void InitBuffer(const TStr0_ *tape, std::uint32_t size);
    /// ReadCharacter, and if that consumed a character of a text, the line count.
    bool ReadCharacterInternal(std::uint32_t &error, char &character, bool peek);
    /// The next token. With peek the next read gives the same token again, though the place is already behind it.
    ///
    /// False without an error: end of the tape (only if not peek: a peek gives kEndOfInput), end of the tape inside a
    /// comment, or an unknown source. False with an error: see TReadError. What was consumed up to a failure stays
    /// consumed, so the next read goes on behind it.
    bool ReadToken(std::uint32_t &error, TToken &token, bool peek);

    std::uint32_t GetLine() const { return line_; }
    std::uint32_t GetLineIndex() const { return line_index_; }
    TPosition GetPosition() const { return {index_, line_, line_index_}; }
    /// Moves to a place. A token that was peeked at stays to be delivered.
    void SetPosition(const TPosition &position) {
        index_ = position.index;
        line_ = position.line;
        line_index_ = position.lineIndex;
    }
    /// True if the next token depends on more than the place: one was peeked at, or half a `..` is read.
    bool CarriesOver() const { return token_held_ || range_dot_pending_; }
    /// Copies the characters at the offsets from to to, both included; nothing if from is above to. No terminator.
    /// What lies outside the tape isn't copied.
    void Copy(TStr0_ *target, std::uint32_t from, std::uint32_t to) const;

protected:
    /// ReadToken for tapes that nobody overrides: the characters are taken straight from memory.
    bool ReadTokenDirectly(std::uint32_t &error, TToken &token, bool peek, bool skip_white_space);

    std::uint32_t source_ = kSourceText;
    std::uint32_t line_ = 1;
    std::uint32_t line_index_ = 1;
    std::array<char, kTextSize> token_text_{};
    std::uint32_t last_kind_ = kNoToken;
    std::uint32_t last_length_ = 0;
    bool token_held_ = false;         ///< the last token was only peeked at
    bool range_dot_pending_ = false;  ///< a number stopped behind the first dot of `..`
    std::uint32_t size_ = 0;
    const char *data_ = nullptr;
    std::uint32_t index_ = 0;

private:
    enum class TOutcome : std::uint8_t;
    class CDirectTape;
    class CVirtualTape;
    template <class Tape>
    class CLexer;

    bool DeliverHeld(std::uint32_t &error, TToken &token, bool peek);
    bool Finish(TOutcome outcome, TToken &token, bool peek);
    TOutcome ReadFromStream(std::uint32_t &error);
};

/// The same tokens from a string that somebody else owns, with blanks, tabs, carriage returns and line feeds between
/// them skipped: kLineEnd and kBlank never come. The string must stay as it is until the reading ends.
class KQ_API CStringTapeReader : private CTapeReader {
public:
    using CTapeReader::kTextSize;

    CStringTapeReader() = default;

    /// Reads from the characters of a dynamic string; none are copied.
    void InitDString(const TDStringA *text);
    /// Reads from any characters; none are copied.
    void InitDString(std::string_view text);
    /// Forgets the string; every read behind it fails.
    void Done();

    /// As CTapeReader::ReadToken.
    bool ReadToken(std::uint32_t &error, TToken &token, bool peek) {
        return ReadTokenDirectly(error, token, peek, true);
    }

    using CTapeReader::Copy;
    using CTapeReader::GetLine;
    using CTapeReader::GetLineIndex;
    using CTapeReader::GetPosition;
    using CTapeReader::SetPosition;

private:
    bool ReadCharacter(std::uint32_t &error, char &character, bool peek) final;
};

/// The text of an operator kind, one blank for kBlank, an empty text for every other kind.
KQ_API std::string_view TokenKindText(std::uint32_t kind);
/// The same into a buffer whose highest valid index is high; cuts silently and terminates.
KQ_API void TokenKindToString(std::uint32_t kind, std::uint32_t high, char *text);

}  // namespace par_scanner

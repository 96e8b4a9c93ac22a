#pragma once

#include <array>
#include <cstdint>

#include "platform/base/export.h"
#include "scanner/token.h"

namespace par_scanner {

/// A reader's position on its tape.
struct TPosition {
    std::uint32_t index = 0;      ///< offset of the next character
    std::uint32_t line = 1;       ///< its line, from 1
    std::uint32_t lineIndex = 1;  ///< its column in that line, from 1

    friend bool operator==(const TPosition &, const TPosition &) = default;
};

/// Cuts a text into tokens. This raw form delivers blanks and line ends as tokens; a carriage return is an identifier
/// of one character and a tab begins one. Comments are `(*` to `*)`, nest to any depth and yield no token. Strings
/// are in single quotes; a doubled quote inside is one quote.
///
/// The reader neither owns the tape nor writes to it. A copy of a reader shares the tape and moves by itself. Reading
/// allocates nothing.
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

    /// Takes a tape of size characters and starts at its beginning; line and lineIndex go on counting. Without a tape
    /// the size doesn't matter.
    void InitBuffer(const TStr0_ *tape, std::uint32_t size);
    /// ReadCharacter, and if that consumed a character of a text, the line count.
    bool ReadCharacterInternal(std::uint32_t &error, char &character, bool peek);
    /// Reads the next token. With peek the next read gives the same token again, though the position is after it
    /// already.
    ///
    /// False without an error: end of the tape (only if not peek: a peek gives kEndOfInput), end of the tape inside a
    /// comment, or an unknown source. False with an error: see TReadError. What was consumed up to a failure stays
    /// consumed, so the next read goes on after it.
    bool ReadToken(std::uint32_t &error, TToken &token, bool peek);

    std::uint32_t GetLine() const { return line_; }
    std::uint32_t GetLineIndex() const { return line_index_; }
    TPosition GetPosition() const { return {index_, line_, line_index_}; }
    /// Moves to a position. A token that was peeked at is still delivered first.
    void SetPosition(const TPosition &position) {
        index_ = position.index;
        line_ = position.line;
        line_index_ = position.lineIndex;
    }
    /// True if the next token depends on more than the position: one was peeked at, or half a `..` is read.
    bool CarriesOver() const { return token_held_ || range_dot_pending_; }
    /// Copies the characters at the offsets from `from` to `to`, both included, without a terminator; nothing if from
    /// is above to. What lies outside the tape isn't copied.
    void Copy(TStr0_ *target, std::uint32_t from, std::uint32_t to) const;

protected:
    /// ReadToken where ReadCharacter isn't overridden: the characters are taken straight from memory.
    bool ReadTokenDirectly(std::uint32_t &error, TToken &token, bool peek, bool skip_white_space);
    /// The same for a reader that never peeks. White space is skipped, and the token's text is where it is on the tape,
    /// without a terminator; only that of a string with doubled quotes is in the text buffer.
    bool ReadTokenInPlace(std::uint32_t &error, TToken &token);

    std::uint32_t source_ = kSourceText;
    std::uint32_t line_ = 1;
    std::uint32_t line_index_ = 1;
    std::array<char, kTextSize> token_text_{};
    std::uint32_t last_kind_ = kNoToken;
    std::uint32_t last_length_ = 0;
    bool token_held_ = false;         ///< the last token was only peeked at
    bool range_dot_pending_ = false;  ///< a number ended after the first dot of `..`
    std::uint32_t size_ = 0;
    const char *data_ = nullptr;
    std::uint32_t index_ = 0;

private:
    enum class TOutcome : std::uint8_t;
    class CDirectTape;   // tapes.h
    class CVirtualTape;  // tapes.h
    template <class Tape>
    class CLexer;

    template <class Tape>
    TOutcome ReadAndKeep(Tape &tape, std::uint32_t &error, bool skip_white_space);
    void TerminateText();
    bool DeliverHeld(std::uint32_t &error, TToken &token, bool peek);
    bool Finish(TOutcome outcome, TToken &token, bool peek);
    TOutcome ReadFromStream(std::uint32_t &error);
};

}  // namespace par_scanner

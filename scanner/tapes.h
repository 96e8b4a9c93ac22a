#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "scanner/byte_block.h"
#include "scanner/character_class.h"
#include "scanner/tape_reader.h"

/// The two kinds of tape that the token reader's one lexer reads from: CDirectTape takes the characters from memory and
/// keeps its position in local variables; CVirtualTape asks ReadCharacter for each of them, for subclasses that have a
/// source of their own. Both offer the same few moves. A token's text consists of characters that are stored in the
/// order of the tape; the lexer counts them. The direct tape leaves them where they are.
namespace par_scanner {

/// The tape in memory. The position goes back to the reader when the tape is destroyed.
class CTapeReader::CDirectTape {
public:
    explicit CDirectTape(CTapeReader &reader)
        : reader_(reader), at_(reader.data_ + reader.index_), end_(reader.data_ + reader.size_) {}
    ~CDirectTape() {
        reader_.line_index_ += Index() - reader_.index_;
        reader_.index_ = Index();
    }
    CDirectTape(const CDirectTape &) = delete;
    CDirectTape &operator=(const CDirectTape &) = delete;

    bool Next(char &character) {
        if (at_ >= end_) {
            return false;
        }
        character = *at_++;
        if (character == '\n') {
            BeginLine();
        }
        return true;
    }
    bool Peek(char &character) const {
        if (at_ >= end_) {
            return false;
        }
        character = *at_;
        return true;
    }
    /// Consumes a character that was peeked at and is no line feed.
    void Take() { ++at_; }
    /// Skips blanks, tabs and line ends.
    void SkipWhiteSpace() {
        char character = 0;
        while (Peek(character) && detail::Is(character, detail::kWhiteSpace)) {
            Next(character);
            if (character == '\n') {
                SkipIndentation();
            }
        }
    }
    /// Skips a run that holds no line feed.
    template <std::uint8_t Run>
    void SkipRun() {
        at_ = RunEnd<Run>(end_);
    }
    /// Begins a text with the next character, or with the one that was taken last.
    void BeginText() { text_ = at_; }
    void BeginText(char /*first*/) { text_ = at_ - 1; }
    /// Stores a run that holds no line feed, as long as there is room; count is the text's length.
    template <std::uint8_t Run>
    void StoreRun(std::uint32_t &count) {
        const std::uint32_t room = kTextSize - count;
        const char *end = RunEnd<Run>(Between(at_, end_) > room ? at_ + room : end_);
        count += static_cast<std::uint32_t>(end - at_);
        at_ = end;
    }
    /// Stores a character that was taken last.
    void StoreTaken(char /*character*/, std::uint32_t &count) { ++count; }
    /// The same for the second of two quotes; the first one isn't part of the text.
    void StoreSecondQuote(std::uint32_t &count) {
        ++count;
        has_second_quotes_ = true;
    }
    /// Where the text lies now.
    const char *Text(std::uint32_t count) const {
        return has_second_quotes_ ? DropSecondQuotes(text_, reader_.token_text_.data(), count) : text_;
    }
    /// Copies the text to where the reader keeps it. Nearly all texts are short: a whole block, copied inline, beats a
    /// call. What is copied too much lies inside the tape.
    void KeepText(std::uint32_t count) const {
        char *kept = reader_.token_text_.data();
        if (has_second_quotes_) {
            DropSecondQuotes(text_, kept, count);
        } else if (count <= detail::CByteBlock::kSize && Between(text_, end_) >= detail::CByteBlock::kSize) {
            detail::CByteBlock(text_).Store(kept);
        } else {
            std::memcpy(kept, text_, count);
        }
    }

private:
    static std::size_t Between(const char *begin, const char *end) { return static_cast<std::size_t>(end - begin); }
    std::uint32_t Index() const { return static_cast<std::uint32_t>(at_ - reader_.data_); }

    /// The reader's line and index are of the last line feed until the tape is destroyed.
    void BeginLine() {
        ++reader_.line_;
        reader_.line_index_ = 1;
        reader_.index_ = Index();
    }

    void SkipIndentation() {
        while (Between(at_, end_) >= detail::CByteBlock::kSize) {
            const std::uint32_t others = ~detail::CByteBlock(at_).Equal(' ').Mask() & detail::CByteBlock::kAll;
            if (others != 0) {
                at_ += detail::LowestBit(others);
                return;
            }
            at_ += detail::CByteBlock::kSize;
        }
    }

    /// The bytes of a block that may end a run.
    template <std::uint8_t Run>
    static std::uint32_t EndsRun(const detail::CByteBlock &block) {
        if constexpr (Run == detail::kInIdentifier) {
            return ~block.Words().Mask() & detail::CByteBlock::kAll;
        } else if constexpr (Run == detail::kInString) {
            return block.AnyOf('\'', '\r', '\n').Mask();
        } else {
            static_assert(Run == detail::kInComment);
            return block.AnyOf('(', '*', '\n').Mask();
        }
    }

    template <std::uint8_t Run>
    const char *RunEnd(const char *limit) const {
        const char *end = at_;
        if constexpr (Run != detail::kInNumber) {
            while (Between(end, limit) >= detail::CByteBlock::kSize) {
                const std::uint32_t ends = EndsRun<Run>(detail::CByteBlock(end));
                if (ends != 0) {
                    end += detail::LowestBit(ends);
                    break;
                }
                end += detail::CByteBlock::kSize;
            }
        }
        while (end < limit && detail::Is(*end, Run)) {
            ++end;
        }
        return end;
    }

    /// Copies a text of that many characters, of two quotes one.
    [[gnu::noinline]] static const char *DropSecondQuotes(const char *from, char *target, std::uint32_t count) {
        for (std::uint32_t at = 0; at < count; ++at) {
            target[at] = *from;
            from += *from == '\'' ? 2 : 1;
        }
        return target;
    }

    CTapeReader &reader_;
    const char *at_;
    const char *end_;
    const char *text_ = nullptr;  ///< where the token's text begins
    bool has_second_quotes_ = false;
};

/// The characters that a subclass supplies, one call each.
class CTapeReader::CVirtualTape {
public:
    CVirtualTape(CTapeReader &reader, std::uint32_t &error) : reader_(reader), error_(error) {}

    bool Next(char &character) { return reader_.ReadCharacterInternal(error_, character, false); }
    bool Peek(char &character) const { return reader_.ReadCharacterInternal(error_, character, true); }
    void Take() {
        char character = 0;
        Next(character);
    }
    void SkipWhiteSpace() { SkipRun<detail::kWhiteSpace>(); }
    template <std::uint8_t Run>
    void SkipRun() {
        char character = 0;
        while (Peek(character) && detail::Is(character, Run)) {
            Take();
        }
    }
    void BeginText() {}
    void BeginText(char first) { reader_.token_text_[0] = first; }
    template <std::uint8_t Run>
    void StoreRun(std::uint32_t &count) {
        char character = 0;
        while (count < kTextSize && Peek(character) && detail::Is(character, Run)) {
            Take();
            StoreTaken(character, count);
        }
    }
    void StoreTaken(char character, std::uint32_t &count) { reader_.token_text_[count++] = character; }
    void StoreSecondQuote(std::uint32_t &count) { StoreTaken('\'', count); }
    void KeepText(std::uint32_t /*count*/) const {}

private:
    CTapeReader &reader_;
    std::uint32_t &error_;  ///< a subclass may have errors of its own
};

}  // namespace par_scanner

#pragma once

#include <cstdint>
#include <cstring>

#include "scanner/byte_block.h"
#include "scanner/character_class.h"
#include "scanner/tape_reader.h"

/// The two kinds of tape that the token reader's one lexer reads from: CDirectTape takes the characters from memory and
/// keeps its position in local variables; CVirtualTape asks ReadCharacter for each of them, for subclasses that have a
/// source of their own. Both offer the same few moves.
namespace par_scanner {

/// The tape in memory. The position goes back to the reader when the tape is destroyed.
class CTapeReader::CDirectTape {
public:
    explicit CDirectTape(CTapeReader &reader)
        : reader_(reader),
          data_(reader.data_),
          size_(reader.data_ != nullptr ? reader.size_ : 0),
          index_(reader.index_),
          line_(reader.line_),
          line_origin_(reader.index_ - reader.line_index_) {}
    ~CDirectTape() {
        reader_.index_ = index_;
        reader_.line_ = line_;
        reader_.line_index_ = index_ - line_origin_;
    }
    CDirectTape(const CDirectTape &) = delete;
    CDirectTape &operator=(const CDirectTape &) = delete;

    bool Next(char &character) {
        if (index_ >= size_) {
            return false;
        }
        character = data_[index_++];
        if (character == '\n') {
            ++line_;
            line_origin_ = index_ - 1;
        }
        return true;
    }
    bool Peek(char &character) const {
        if (index_ >= size_) {
            return false;
        }
        character = data_[index_];
        return true;
    }
    /// Consumes a character that was peeked at and is no line feed.
    void Take() { ++index_; }
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
        index_ = RunEnd<Run>(size_);
    }
    /// Appends a run that holds no line feed to the text, as long as there is room; count is the text's length.
    template <std::uint8_t Run>
    void StoreRun(char *text, std::uint32_t &count) {
        const std::uint32_t room = kTextSize - count;
        const std::uint32_t end = RunEnd<Run>(size_ - index_ > room ? index_ + room : size_);
        const std::uint32_t length = end - index_;
        CopyRun(text + count, length, room);
        count += length;
        index_ = end;
    }

private:
    void SkipIndentation() {
        while (size_ - index_ >= detail::CByteBlock::kSize) {
            const std::uint32_t others =
                ~detail::CByteBlock(data_ + index_).Equal(' ').Mask() & detail::CByteBlock::kAll;
            if (others != 0) {
                index_ += detail::LowestBit(others);
                return;
            }
            index_ += detail::CByteBlock::kSize;
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
    std::uint32_t RunEnd(std::uint32_t limit) const {
        std::uint32_t end = index_;
        if constexpr (Run != detail::kInNumber) {
            while (limit - end >= detail::CByteBlock::kSize) {
                const std::uint32_t ends = EndsRun<Run>(detail::CByteBlock(data_ + end));
                if (ends != 0) {
                    end += detail::LowestBit(ends);
                    break;
                }
                end += detail::CByteBlock::kSize;
            }
        }
        while (end < limit && detail::Is(data_[end], Run)) {
            ++end;
        }
        return end;
    }
    /// Nearly all runs are short: a whole block, copied inline, beats a call. What is copied too much lies inside the
    /// tape and inside the text.
    void CopyRun(char *text, std::uint32_t length, std::uint32_t room) const {
        if (length <= detail::CByteBlock::kSize && room >= detail::CByteBlock::kSize &&
            size_ - index_ >= detail::CByteBlock::kSize) {
            detail::CByteBlock(data_ + index_).Store(text);
        } else if (length != 0) {
            std::memcpy(text, data_ + index_, length);
        }
    }

    CTapeReader &reader_;
    const char *data_;
    std::uint32_t size_;
    std::uint32_t index_;
    std::uint32_t line_;
    std::uint32_t line_origin_;  ///< lineIndex is the distance from here
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
    template <std::uint8_t Run>
    void StoreRun(char *text, std::uint32_t &count) {
        char character = 0;
        while (count < kTextSize && Peek(character) && detail::Is(character, Run)) {
            text[count++] = character;
            Take();
        }
    }

private:
    CTapeReader &reader_;
    std::uint32_t &error_;  ///< a subclass may have errors of its own
};

}  // namespace par_scanner

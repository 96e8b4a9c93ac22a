#include "scanner/tape_reader.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <typeinfo>

#include "platform/base/bounded_text.h"
#include "scanner/byte_block.h"
#include "scanner/character_class.h"

// One lexer over two kinds of tape. CDirectTape takes the characters from memory and keeps the place in local
// variables; CVirtualTape asks ReadCharacter for each of them, for subclasses that have their own source. Both offer
// the same few moves, so the rules of the language stand once, in CLexer.

namespace par_scanner {

using detail::CByteBlock;
using detail::Is;
using detail::LowestBit;
using detail::StartOf;

enum class CTapeReader::TOutcome : std::uint8_t { kToken, kEnd, kFailed, kBadNumber };

/// The tape in memory. The place goes back to the reader when the tape is destroyed.
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
        while (Peek(character) && Is(character, detail::kWhiteSpace)) {
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
        while (size_ - index_ >= CByteBlock::kSize) {
            const std::uint32_t others = ~CByteBlock(data_ + index_).Equal(' ').Mask() & CByteBlock::kAll;
            if (others != 0) {
                index_ += LowestBit(others);
                return;
            }
            index_ += CByteBlock::kSize;
        }
    }

    /// The bytes of a block that may end a run.
    template <std::uint8_t Run>
    static std::uint32_t EndsRun(const CByteBlock &block) {
        if constexpr (Run == detail::kInIdentifier) {
            return ~block.Words().Mask() & CByteBlock::kAll;
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
            while (limit - end >= CByteBlock::kSize) {
                const std::uint32_t ends = EndsRun<Run>(CByteBlock(data_ + end));
                if (ends != 0) {
                    end += LowestBit(ends);
                    break;
                }
                end += CByteBlock::kSize;
            }
        }
        while (end < limit && Is(data_[end], Run)) {
            ++end;
        }
        return end;
    }
    /// Nearly all runs are short: a whole block, copied inline, beats a call. What is copied too much lies inside the
    /// tape and inside the text.
    void CopyRun(char *text, std::uint32_t length, std::uint32_t room) const {
        if (length <= CByteBlock::kSize && room >= CByteBlock::kSize && size_ - index_ >= CByteBlock::kSize) {
            CByteBlock(data_ + index_).Store(text);
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
        while (Peek(character) && Is(character, Run)) {
            Take();
        }
    }
    template <std::uint8_t Run>
    void StoreRun(char *text, std::uint32_t &count) {
        char character = 0;
        while (count < kTextSize && Peek(character) && Is(character, Run)) {
            text[count++] = character;
            Take();
        }
    }

private:
    CTapeReader &reader_;
    std::uint32_t &error_;  ///< a subclass may have errors of its own
};

/// Reads one token from a text into the reader's last token.
template <class Tape>
class CTapeReader::CLexer {
public:
    CLexer(CTapeReader &reader, Tape &tape) : reader_(reader), tape_(tape), text_(reader.token_text_.data()) {}

    TOutcome Read(std::uint32_t &error, bool skip_white_space) {
        for (;;) {
            if (skip_white_space) {
                tape_.SkipWhiteSpace();
            }
            char character = 0;
            if (!tape_.Next(character)) {
                return TOutcome::kEnd;
            }
            const std::uint8_t start = StartOf(character);
            if (start == detail::kStartsParenthesis && TakeIf('*')) {
                if (!SkipComment()) {
                    return TOutcome::kFailed;
                }
                continue;
            }
            return ReadFrom(character, start, error);
        }
    }

private:
    TOutcome ReadFrom(char character, std::uint8_t start, std::uint32_t &error) {
        if (start < detail::kStartsIdentifier) {
            return Operator(start);
        }
        switch (start) {
            case detail::kStartsNumber:
                return ReadNumber(character, error);
            case detail::kStartsString:
                return ReadString(error);
            case detail::kStartsParenthesis:
                return Operator(kLeftParenthesis);
            case detail::kStartsColon:
                return Operator(TakeIf('=') ? kAssign : kColon);
            case detail::kStartsLess:
                return Operator(TakeIf('>') ? kNotEqual : TakeIf('=') ? kLessEqual : TakeIf('<') ? kShiftLeft : kLess);
            case detail::kStartsGreater:
                return Operator(TakeIf('=') ? kGreaterEqual : TakeIf('>') ? kShiftRight : kGreater);
            case detail::kStartsDot:
                return ReadDot();
            default:
                return ReadIdentifier(character);
        }
    }

    bool TakeIf(char wanted) {
        char character = 0;
        if (!tape_.Peek(character) || character != wanted) {
            return false;
        }
        tape_.Take();
        return true;
    }

    TOutcome Operator(std::uint32_t kind) {
        reader_.last_kind_ = kind;
        return TOutcome::kToken;
    }

    TOutcome Text(std::uint32_t kind, std::uint32_t count) {
        if (count < kTextSize) {
            text_[count] = '\0';
        }
        reader_.last_kind_ = kind;
        reader_.last_length_ = count;
        return TOutcome::kToken;
    }

    /// Behind the opening `(*`, up to its matching end; false if the tape ends first.
    bool SkipComment() {
        std::uint32_t depth = 1;
        while (depth != 0) {
            tape_.template SkipRun<detail::kInComment>();
            char character = 0;
            if (!tape_.Next(character)) {
                return false;
            }
            if (character == '*' && TakeIf(')')) {
                --depth;
            } else if (character == '(' && TakeIf('*')) {
                ++depth;
            }
        }
        return true;
    }

    TOutcome ReadIdentifier(char first) {
        text_[0] = first;
        std::uint32_t count = 1;
        tape_.template StoreRun<detail::kInIdentifier>(text_, count);
        return Text(kIdentifier, count);
    }

    TOutcome ReadString(std::uint32_t &error) {
        std::uint32_t count = 0;
        for (;;) {
            tape_.template StoreRun<detail::kInString>(text_, count);
            if (count == kTextSize) {
                error = kStringTooLong;
                return TOutcome::kFailed;
            }
            char character = 0;
            if (!tape_.Peek(character)) {
                return TOutcome::kEnd;
            }
            if (character != '\'') {
                error = kLineEndInString;
                return TOutcome::kFailed;
            }
            tape_.Take();
            if (!TakeIf('\'')) {
                return Text(kString, count);
            }
            text_[count++] = '\'';
            if (count == kTextSize) {
                error = kStringTooLong;
                return TOutcome::kFailed;
            }
        }
    }

    TOutcome ReadNumber(char first, std::uint32_t &error) {
        text_[0] = first;
        std::uint32_t count = 1;
        tape_.template StoreRun<detail::kInNumber>(text_, count);
        if (count < kTextSize && TakeIf('.')) {
            char character = 0;
            if (!tape_.Peek(character)) {
                return Text(kNumber, count);
            }
            if (character == '.') {
                reader_.range_dot_pending_ = true;
                return Text(kNumber, count);
            }
            text_[count++] = '.';
            tape_.template StoreRun<detail::kInNumber>(text_, count);
        }
        if (!ReadExponent(count)) {
            error = kMalformedExponent;
            return TOutcome::kBadNumber;
        }
        return Text(kNumber, count);
    }

    /// True without an exponent or with a whole one.
    bool ReadExponent(std::uint32_t &count) {
        char character = 0;
        if (count == kTextSize || !tape_.Peek(character) || (character != 'E' && character != 'e')) {
            return true;
        }
        tape_.Take();
        text_[count++] = character;
        if (count < kTextSize && tape_.Peek(character) && (character == '+' || character == '-')) {
            tape_.Take();
            text_[count++] = character;
        }
        const std::uint32_t before = count;
        tape_.template StoreRun<detail::kInNumber>(text_, count);
        return count != before;
    }

    TOutcome ReadDot() {
        if (reader_.range_dot_pending_) {
            reader_.range_dot_pending_ = false;
            return Operator(kDotDot);
        }
        return Operator(TakeIf('.') ? kDotDot : kDot);
    }

    CTapeReader &reader_;
    Tape &tape_;
    char *text_;
};

void CTapeReader::SetSourceOfCode(std::uint32_t source) { source_ = source; }

bool CTapeReader::ReadCharacter(std::uint32_t & /*error*/, char &character, bool peek) {
    if (data_ == nullptr || index_ >= size_) {
        return false;
    }
    character = data_[index_];
    if (!peek) {
        ++index_;
    }
    return true;
}

void CTapeReader::InitBuffer(const TStr0_ *tape, std::uint32_t size) {
    data_ = tape;
    size_ = size;
    index_ = 0;
}

bool CTapeReader::ReadCharacterInternal(std::uint32_t &error, char &character, bool peek) {
    if (!ReadCharacter(error, character, peek)) {
        return false;
    }
    if (source_ == kSourceText && !peek) {
        if (character == '\n') {
            ++line_;
            line_index_ = 1;
        } else {
            ++line_index_;
        }
    }
    return true;
}

bool CTapeReader::ReadToken(std::uint32_t &error, TToken &token, bool peek) {
    if (source_ == kSourceText && typeid(*this) == typeid(CTapeReader)) {
        return ReadTokenDirectly(error, token, peek, false);
    }
    if (token_held_) {
        return DeliverHeld(error, token, peek);
    }
    if (source_ == kSourceStream) {
        return Finish(ReadFromStream(error), token, peek);
    }
    if (source_ != kSourceText) {
        return false;
    }
    CVirtualTape tape(*this, error);
    return Finish(CLexer<CVirtualTape>(*this, tape).Read(error, false), token, peek);
}

/// In one piece, so that the place on the tape stays in registers from the first blank to the end of the token: that
/// halves the time.
[[gnu::flatten]] bool CTapeReader::ReadTokenDirectly(std::uint32_t &error, TToken &token, bool peek,
                                                     bool skip_white_space) {
    if (token_held_) {
        return DeliverHeld(error, token, peek);
    }
    TOutcome outcome = TOutcome::kEnd;
    {
        CDirectTape tape(*this);
        outcome = CLexer<CDirectTape>(*this, tape).Read(error, skip_white_space);
    }
    return Finish(outcome, token, peek);
}

bool CTapeReader::DeliverHeld(std::uint32_t &error, TToken &token, bool peek) {
    if (last_kind_ == kEndOfInput && !peek) {
        error = kReadPastEnd;
        return false;
    }
    return Finish(TOutcome::kToken, token, peek);
}

/// Hands the last token out, or the end of input to one who only peeks.
bool CTapeReader::Finish(TOutcome outcome, TToken &token, bool peek) {
    if (outcome == TOutcome::kFailed) {
        return false;
    }
    if (outcome == TOutcome::kBadNumber) {
        token.kind = kNoToken;
        return false;
    }
    if (outcome == TOutcome::kEnd) {
        if (!peek) {
            return false;
        }
        last_kind_ = kEndOfInput;
    }
    token_held_ = peek;
    token.kind = last_kind_;
    if (last_kind_ >= kIdentifier && last_kind_ <= kNumber) {
        token.length = last_length_;
        token.text = token_text_.data();
    }
    return true;
}

/// The compact form: a byte with the kind and, for tokens with a text, its length (one byte, or 255 and two bytes, low
/// byte first) and characters. A text that is too long is cut and its rest dropped.
CTapeReader::TOutcome CTapeReader::ReadFromStream(std::uint32_t &error) {
    constexpr std::uint8_t kLongLength = 255;
    const auto next = [&](std::uint32_t &byte) {
        char character = 0;
        const bool more = ReadCharacterInternal(error, character, false);
        byte = static_cast<std::uint8_t>(character);
        return more;
    };
    std::uint32_t kind = 0;
    if (!next(kind)) {
        return TOutcome::kEnd;
    }
    if (kind > kEndOfInput) {
        error = kUnknownStreamKind;
        return TOutcome::kFailed;
    }
    if (kind < kIdentifier || kind > kNumber) {
        last_kind_ = kind;
        return TOutcome::kToken;
    }
    std::uint32_t length = 0;
    if (!next(length)) {
        return TOutcome::kEnd;
    }
    if (length == kLongLength) {
        std::uint32_t high = 0;
        if (!next(length) || !next(high)) {
            return TOutcome::kEnd;
        }
        length |= high << 8U;
    }
    for (std::uint32_t count = 0; count < length; ++count) {
        std::uint32_t byte = 0;
        if (!next(byte)) {
            return TOutcome::kEnd;
        }
        if (count < kTextSize) {
            token_text_[count] = static_cast<char>(byte);
        }
    }
    last_kind_ = kind;
    last_length_ = std::min(length, kTextSize);
    if (last_length_ < kTextSize) {
        token_text_[last_length_] = '\0';
    }
    return TOutcome::kToken;
}

void CTapeReader::Copy(TStr0_ *target, std::uint32_t from, std::uint32_t to) const {
    if (from > to || from >= size_ || data_ == nullptr) {
        return;
    }
    std::memcpy(target, data_ + from, std::min(to, size_ - 1) - from + std::size_t{1});
}

void CStringTapeReader::InitDString(const TDStringA *text) {
    InitDString(text != nullptr ? text->View() : std::string_view());
}

void CStringTapeReader::InitDString(std::string_view text) {
    constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max();
    InitBuffer(text.data(), static_cast<std::uint32_t>(std::min(text.size(), kLongest)));
}

void CStringTapeReader::Done() { InitBuffer(nullptr, 0); }

bool CStringTapeReader::ReadCharacter(std::uint32_t &error, char &character, bool peek) {
    return CTapeReader::ReadCharacter(error, character, peek);
}

std::string_view TokenKindText(std::uint32_t kind) {
    static constexpr std::array<std::string_view, kDotDot + 1> kTexts = {
        "",  "",  "",  "",  "+", "-",  "*", "/",  ":=", "&",  ".",  ",",  ";", ":", "(", ")", "[",  "]",  "{",
        "}", "^", "~", "=", "#", "<>", "<", "<=", ">",  ">=", "<<", ">>", "|", "?", "!", "%", "\\", "..",
    };
    if (kind == kBlank) {
        return " ";
    }
    return kind < kTexts.size() ? kTexts[kind] : std::string_view();
}

void TokenKindToString(std::uint32_t kind, std::uint32_t high, char *text) {
    kq_base::CopyToBuffer(TokenKindText(kind), high, text);
}

}  // namespace par_scanner

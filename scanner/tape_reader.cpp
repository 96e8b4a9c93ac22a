#include "scanner/tape_reader.h"

#include <algorithm>
#include <cstring>
#include <typeinfo>

#include "scanner/character_class.h"
#include "scanner/tapes.h"

// The rules of the language are in CLexer, once for both kinds of tape (scanner/tapes.h).

namespace par_scanner {

using detail::StartOf;

enum class CTapeReader::TOutcome : std::uint8_t { kToken, kEnd, kFailed, kBadNumber };

/// Reads one token from a text.
template <class Tape>
class CTapeReader::CLexer {
public:
    CLexer(CTapeReader &reader, Tape &tape) : reader_(reader), tape_(tape) {}

    TOutcome Read(std::uint32_t &error, bool skip_white_space) {
        for (;;) {
            char character = 0;
            if (!Begin(character, skip_white_space)) {
                return TOutcome::kEnd;
            }
            const std::uint8_t start = StartOf(character);
            if (start < detail::kStartsIdentifier) {
                return Operator(start);
            }
            if (start != detail::kStartsParenthesis || !TakeIf('*')) {
                return ReadFrom(character, start, error);
            }
            if (!SkipComment()) {
                return TOutcome::kFailed;
            }
        }
    }

    std::uint32_t Kind() const { return kind_; }
    bool HasText() const { return kind_ <= kNumber; }
    /// The length of the text, which the tape has.
    std::uint32_t Count() const { return count_; }

private:
    /// The next character, or the next one that isn't white space; false at the end of the tape.
    bool Begin(char &character, bool skip_white_space) {
        if (!skip_white_space) {
            return tape_.Next(character);
        }
        tape_.SkipWhiteSpace();
        if (!tape_.Peek(character)) {
            return false;
        }
        tape_.Take();
        return true;
    }

    TOutcome ReadFrom(char character, std::uint8_t start, std::uint32_t &error) {
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
        kind_ = kind;
        return TOutcome::kToken;
    }

    TOutcome Text(std::uint32_t kind, std::uint32_t count) {
        kind_ = kind;
        count_ = count;
        return TOutcome::kToken;
    }

    /// Skips the rest of a comment whose `(*` is read, up to the matching end; false if the tape ends first.
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
        tape_.BeginText(first);
        std::uint32_t count = 1;
        tape_.template StoreRun<detail::kInIdentifier>(count);
        return Text(kIdentifier, count);
    }

    TOutcome ReadString(std::uint32_t &error) {
        tape_.BeginText();
        std::uint32_t count = 0;
        for (;;) {
            tape_.template StoreRun<detail::kInString>(count);
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
            tape_.StoreSecondQuote(count);
            if (count == kTextSize) {
                error = kStringTooLong;
                return TOutcome::kFailed;
            }
        }
    }

    TOutcome ReadNumber(char first, std::uint32_t &error) {
        tape_.BeginText(first);
        std::uint32_t count = 1;
        tape_.template StoreRun<detail::kInNumber>(count);
        if (count < kTextSize && TakeIf('.')) {
            char character = 0;
            if (!tape_.Peek(character)) {
                return Text(kNumber, count);
            }
            if (character == '.') {
                reader_.range_dot_pending_ = true;
                return Text(kNumber, count);
            }
            tape_.StoreTaken('.', count);
            tape_.template StoreRun<detail::kInNumber>(count);
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
        tape_.StoreTaken(character, count);
        if (count < kTextSize && tape_.Peek(character) && (character == '+' || character == '-')) {
            tape_.Take();
            tape_.StoreTaken(character, count);
        }
        const std::uint32_t before = count;
        tape_.template StoreRun<detail::kInNumber>(count);
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
    std::uint32_t kind_ = kNoToken;
    std::uint32_t count_ = 0;
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
    size_ = tape != nullptr ? size : 0;
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
    return Finish(ReadAndKeep(tape, error, false), token, peek);
}

/// Reads a token and makes it the last token, whose text the reader keeps.
template <class Tape>
CTapeReader::TOutcome CTapeReader::ReadAndKeep(Tape &tape, std::uint32_t &error, bool skip_white_space) {
    CLexer<Tape> lexer(*this, tape);
    const TOutcome outcome = lexer.Read(error, skip_white_space);
    if (outcome == TOutcome::kToken) {
        last_kind_ = lexer.Kind();
        if (lexer.HasText()) {
            last_length_ = lexer.Count();
            tape.KeepText(last_length_);
            TerminateText();
        }
    }
    return outcome;
}

void CTapeReader::TerminateText() {
    if (last_length_ < kTextSize) {
        token_text_[last_length_] = '\0';
    }
}

/// In one piece, so that the position on the tape stays in registers from the first blank to the end of the token: that
/// halves the time.
[[gnu::flatten]] bool CTapeReader::ReadTokenDirectly(std::uint32_t &error, TToken &token, bool peek,
                                                     bool skip_white_space) {
    if (token_held_) {
        return DeliverHeld(error, token, peek);
    }
    TOutcome outcome = TOutcome::kEnd;
    {
        CDirectTape tape(*this);
        outcome = ReadAndKeep(tape, error, skip_white_space);
    }
    return Finish(outcome, token, peek);
}

/// In one piece for the same reason. It begins at a cache line, since a token takes a tenth longer at some places else.
[[gnu::flatten, gnu::aligned(64)]] bool CTapeReader::ReadTokenInPlace(std::uint32_t &error, TToken &token) {
    CDirectTape tape(*this);
    CLexer<CDirectTape> lexer(*this, tape);
    if (lexer.Read(error, true) != TOutcome::kToken) {
        return false;
    }
    token.kind = lexer.Kind();
    if (lexer.HasText()) {
        token.length = lexer.Count();
        token.text = tape.Text(token.length);
    }
    return true;
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
    TerminateText();
    return TOutcome::kToken;
}

void CTapeReader::Copy(TStr0_ *target, std::uint32_t from, std::uint32_t to) const {
    if (from > to || from >= size_ || data_ == nullptr) {
        return;
    }
    std::memcpy(target, data_ + from, std::min(to, size_ - 1) - from + std::size_t{1});
}

}  // namespace par_scanner

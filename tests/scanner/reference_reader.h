#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "scanner/tape_reader.h"

/// The rules of the token reader once more, one character at a time and as plainly as they can be put, to compare the
/// fast reader with.
class CReferenceReader {
public:
    CReferenceReader(std::string_view tape, bool skipping) : tape_(tape), skipping_(skipping) {}

    std::uint32_t kind = 0;
    std::string text;
    par_scanner::TPosition position;

    /// As CTapeReader::ReadToken without peek.
    bool Read(std::uint32_t &error) {
        using namespace par_scanner;
        for (;;) {
            if (AtEnd()) {
                return false;
            }
            text.clear();
            const char first = Take();
            if (skipping_ && std::string_view(" \t\r\n").find(first) != std::string_view::npos) {
                continue;
            }
            if (first == '(' && Peek() == '*') {
                Take();
                if (!SkipComment()) {
                    return false;
                }
                continue;
            }
            return ReadAfter(first, error);
        }
    }

private:
    bool AtEnd() const { return position.index >= tape_.size(); }
    int Peek() const { return AtEnd() ? -1 : static_cast<unsigned char>(tape_[position.index]); }
    char Take() {
        const char character = tape_[position.index++];
        position.lineIndex = character == '\n' ? 1 : position.lineIndex + 1;
        position.line += character == '\n' ? 1 : 0;
        return character;
    }
    void Store() { text += Take(); }
    bool Full() const { return text.size() == par_scanner::CTapeReader::kTextSize; }
    bool TakeIf(char wanted) { return Peek() == wanted && (Take(), true); }
    bool Give(std::uint32_t what) {
        kind = what;
        return true;
    }

    bool SkipComment() {
        for (int depth = 1; depth > 0;) {
            if (AtEnd()) {
                return false;
            }
            const char character = Take();
            if (character == '*' && TakeIf(')')) {
                --depth;
            } else if (character == '(' && TakeIf('*')) {
                ++depth;
            }
        }
        return true;
    }

    bool ReadAfter(char first, std::uint32_t &error) {
        using namespace par_scanner;
        constexpr std::string_view kOperators = "+-*/ & ,;  )[]{}^~=#       |?!%\\";  // from kind 4 on
        switch (first) {
            case '\n':
                return Give(kLineEnd);
            case ' ':
                return Give(kBlank);
            case '(':
                return Give(kLeftParenthesis);
            case ':':
                return Give(TakeIf('=') ? kAssign : kColon);
            case '<':
                return Give(TakeIf('>') ? kNotEqual : TakeIf('=') ? kLessEqual : TakeIf('<') ? kShiftLeft : kLess);
            case '>':
                return Give(TakeIf('=') ? kGreaterEqual : TakeIf('>') ? kShiftRight : kGreater);
            case '.':
                if (range_) {
                    range_ = false;
                    return Give(kDotDot);
                }
                return Give(TakeIf('.') ? kDotDot : kDot);
            case '\'':
                return ReadString(error);
            default:
                break;
        }
        if (IsDigit(first)) {
            return ReadNumber(first, error);
        }
        if (const std::size_t at = kOperators.find(first); at != std::string_view::npos) {
            return Give(static_cast<std::uint32_t>(at) + kPlus);
        }
        text = first;
        while (!AtEnd() && !Full() && Peek() > ' ' &&
               std::string_view("\"`|#%&'()*+,-./:;<=>[\\]^{}~").find(static_cast<char>(Peek())) ==
                   std::string_view::npos) {
            Store();
        }
        return Give(kIdentifier);
    }

    static bool IsDigit(int character) { return character >= '0' && character <= '9'; }

    bool ReadString(std::uint32_t &error) {
        for (;;) {
            if (AtEnd()) {
                return false;
            }
            if (TakeIf('\'')) {
                if (Peek() != '\'') {
                    return Give(par_scanner::kString);
                }
            } else if (Peek() == '\r' || Peek() == '\n') {
                error = par_scanner::kLineEndInString;
                return false;
            }
            Store();
            if (Full()) {
                error = par_scanner::kStringTooLong;
                return false;
            }
        }
    }

    void StoreDigits() {
        while (IsDigit(Peek()) && !Full()) {
            Store();
        }
    }
    bool ReadNumber(char first, std::uint32_t &error) {
        text = first;
        StoreDigits();
        if (!Full() && TakeIf('.')) {
            range_ = Peek() == '.';
            if (AtEnd() || range_) {
                return Give(par_scanner::kNumber);
            }
            text += '.';
            StoreDigits();
        }
        if (!Full() && (Peek() == 'E' || Peek() == 'e')) {
            Store();
            if (!Full() && (Peek() == '+' || Peek() == '-')) {
                Store();
            }
            if (Full() || !IsDigit(Peek())) {
                kind = 0;
                error = par_scanner::kMalformedExponent;
                return false;
            }
            StoreDigits();
        }
        return Give(par_scanner::kNumber);
    }

    std::string_view tape_;
    bool skipping_;
    bool range_ = false;
};

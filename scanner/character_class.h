#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "scanner/tape_reader.h"

/// What each of the 256 bytes means to the token reader, as look-up tables.
namespace par_scanner::detail {

/// What begins with a character, beside the token kinds of one character, which are their own codes.
inline constexpr std::uint8_t kStartsIdentifier = 64;
inline constexpr std::uint8_t kStartsNumber = 65;
inline constexpr std::uint8_t kStartsString = 66;
inline constexpr std::uint8_t kStartsParenthesis = 67;
inline constexpr std::uint8_t kStartsColon = 68;
inline constexpr std::uint8_t kStartsLess = 69;
inline constexpr std::uint8_t kStartsGreater = 70;
inline constexpr std::uint8_t kStartsDot = 71;

/// Runs that a character may continue, a bit each.
inline constexpr std::uint8_t kInIdentifier = 1;
inline constexpr std::uint8_t kInNumber = 2;
inline constexpr std::uint8_t kInString = 4;   ///< neither a quote nor a line end
inline constexpr std::uint8_t kInComment = 8;  ///< neither a parenthesis, a star nor a line feed
inline constexpr std::uint8_t kWhiteSpace = 16;

constexpr std::array<std::uint8_t, 256> MakeStarts() {
    std::array<std::uint8_t, 256> starts{};
    starts.fill(kStartsIdentifier);
    constexpr std::string_view kOperators = "!#%&)*+,-/;=?[\\]^{|}~";
    constexpr std::array<TTokenKind, kOperators.size()> kKinds = {
        kExclamation,  kHash,  kPercent,   kAmpersand,   kRightParenthesis,
        kStar,         kPlus,  kComma,     kMinus,       kSlash,
        kSemicolon,    kEqual, kQuestion,  kLeftBracket, kBackslash,
        kRightBracket, kCaret, kLeftBrace, kBar,         kRightBrace,
        kTilde,
    };
    for (std::size_t at = 0; at < kOperators.size(); ++at) {
        starts[static_cast<std::uint8_t>(kOperators[at])] = static_cast<std::uint8_t>(kKinds[at]);
    }
    for (char digit = '0'; digit <= '9'; ++digit) {
        starts[static_cast<std::uint8_t>(digit)] = kStartsNumber;
    }
    starts['\n'] = kLineEnd;
    starts[' '] = kBlank;
    starts['\''] = kStartsString;
    starts['('] = kStartsParenthesis;
    starts[':'] = kStartsColon;
    starts['<'] = kStartsLess;
    starts['>'] = kStartsGreater;
    starts['.'] = kStartsDot;
    return starts;
}

constexpr std::array<std::uint8_t, 256> MakeRuns() {
    std::array<std::uint8_t, 256> runs{};
    constexpr std::string_view kIdentifierStops = "\"`|#%&'()*+,-./:;<=>[\\]^{}~";
    for (std::size_t code = 0; code < runs.size(); ++code) {
        const char character = static_cast<char>(static_cast<std::uint8_t>(code));
        std::uint8_t run = 0;
        if (code > ' ' && kIdentifierStops.find(character) == std::string_view::npos) {
            run |= kInIdentifier;
        }
        if (character >= '0' && character <= '9') {
            run |= kInNumber;
        }
        if (character != '\'' && character != '\r' && character != '\n') {
            run |= kInString;
        }
        if (character != '(' && character != '*' && character != '\n') {
            run |= kInComment;
        }
        if (character == ' ' || character == '\t' || character == '\r' || character == '\n') {
            run |= kWhiteSpace;
        }
        runs[code] = run;
    }
    return runs;
}

inline constexpr std::array<std::uint8_t, 256> kStarts = MakeStarts();
inline constexpr std::array<std::uint8_t, 256> kRuns = MakeRuns();

inline std::uint8_t StartOf(char character) { return kStarts[static_cast<std::uint8_t>(character)]; }
inline bool Is(char character, std::uint8_t run) { return (kRuns[static_cast<std::uint8_t>(character)] & run) != 0; }

}  // namespace par_scanner::detail

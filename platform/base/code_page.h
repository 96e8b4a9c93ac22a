#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/base/export.h"

/// Text of the library is bytes in code page 1250. This header turns it into Unicode and back and folds its letters.
///
/// Every one of the 256 bytes has a character of its own: the five that the code page leaves open (0x81, 0x83, 0x88,
/// 0x90, 0x98) map to the control characters of the same value, so any text survives a round trip.
namespace kq_base {

namespace detail {

/// The Unicode characters of the bytes from 128 up.
inline constexpr std::array<char16_t, 128> kUpperHalf = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021, 0x0088, 0x2030, 0x0160, 0x2039, 0x015A,
    0x0164, 0x017D, 0x0179, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B, 0x00B0, 0x00B1, 0x02DB, 0x0142,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C, 0x0154,
    0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD,
    0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA,
    0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4,
    0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};

constexpr std::array<std::uint16_t, 256> MakeUnicode() {
    std::array<std::uint16_t, 256> characters{};
    for (std::size_t byte = 0; byte < characters.size(); ++byte) {
        characters[byte] = byte < 128 ? static_cast<std::uint16_t>(byte) : std::uint16_t{kUpperHalf[byte - 128]};
    }
    return characters;
}

}  // namespace detail

/// The Unicode character of each byte.
inline constexpr std::array<std::uint16_t, 256> kCodePageToUnicode = detail::MakeUnicode();

namespace detail {

/// The byte of a Unicode character, or -1 if the code page lacks it.
constexpr int FindByte(std::uint32_t character) {
    for (std::size_t byte = 0; byte < kCodePageToUnicode.size(); ++byte) {
        if (kCodePageToUnicode[byte] == character) {
            return static_cast<int>(byte);
        }
    }
    return -1;
}

/// The capital letter of a character of the code page, the character itself if it is no small letter.
constexpr std::uint32_t CapitalOf(std::uint32_t character) {
    const auto within = [character](std::uint32_t first, std::uint32_t last) {
        return character >= first && character <= last;
    };
    if (within('a', 'z') || (within(0xE0, 0xFE) && character != 0xF7)) {
        return character - 0x20;
    }
    if (!within(0x100, 0x17F)) {
        return character;
    }
    // Here a capital comes directly before its small letter; in two stretches the capitals have the odd numbers.
    const std::uint32_t small_parity = within(0x139, 0x148) || within(0x179, 0x17E) ? 0 : 1;
    return character % 2 == small_parity ? character - 1 : character;
}

struct TCaseTables {
    std::array<std::uint8_t, 256> upper{};
    std::array<std::uint8_t, 256> lower{};
};

constexpr TCaseTables MakeCaseTables() {
    TCaseTables tables;
    for (std::size_t byte = 0; byte < 256; ++byte) {
        tables.upper[byte] = tables.lower[byte] = static_cast<std::uint8_t>(byte);
    }
    for (std::size_t byte = 0; byte < 256; ++byte) {
        const std::uint32_t capital = CapitalOf(kCodePageToUnicode[byte]);
        if (capital != kCodePageToUnicode[byte]) {
            const auto upper = static_cast<std::uint8_t>(FindByte(capital));
            tables.upper[byte] = upper;
            tables.lower[upper] = static_cast<std::uint8_t>(byte);
        }
    }
    return tables;
}

}  // namespace detail

/// Each byte's capital letter, accented letters included; a byte without one maps to itself.
inline constexpr std::array<std::uint8_t, 256> kUpperCase = detail::MakeCaseTables().upper;
/// Each byte's small letter; a byte without one maps to itself.
inline constexpr std::array<std::uint8_t, 256> kLowerCase = detail::MakeCaseTables().lower;

inline char ToUpper(char character) { return static_cast<char>(kUpperCase[static_cast<std::uint8_t>(character)]); }
inline char ToLower(char character) { return static_cast<char>(kLowerCase[static_cast<std::uint8_t>(character)]); }

/// The text in capitals.
KQ_API std::string ToUpper(std::string_view text);
/// True if both texts have the same length and letters, whatever their case.
KQ_API bool EqualIgnoringCase(std::string_view left, std::string_view right);

/// Bytes of code page 1250 as UTF-8. Never fails.
KQ_API std::string ToUtf8(std::string_view bytes);
/// UTF-8 as bytes of code page 1250; false if the text isn't UTF-8 or holds a character that the code page lacks.
KQ_API bool FromUtf8(std::string_view utf8, std::string &bytes);

namespace detail {

/// The byte of a letter in a literal of this source.
consteval char EncodeCharacter(char32_t character) {
    const int byte = FindByte(character);
    if (byte < 0) {
        throw "this letter doesn't exist in code page 1250";
    }
    return static_cast<char>(byte);
}

/// A string literal in its source form (UTF-8) and, beside it, in code page 1250.
template <std::size_t Size>
struct TLiteral {
    std::array<char, Size> bytes{};
    std::size_t length = 0;

    // NOLINTNEXTLINE(google-explicit-constructor): a literal operator template converts its literal implicitly.
    consteval TLiteral(const char (&source)[Size]) {
        std::size_t at = 0;
        while (at + 1 < Size) {
            const auto lead = static_cast<std::uint8_t>(source[at]);
            const std::size_t count = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : 3;
            char32_t character = count == 1 ? lead : count == 2 ? lead & 0x1FU : lead & 0x0FU;
            for (std::size_t tail = 1; tail < count; ++tail) {
                character = (character << 6U) | (static_cast<std::uint8_t>(source[at + tail]) & 0x3FU);
            }
            bytes[length++] = EncodeCharacter(character);
            at += count;
        }
    }
};

template <TLiteral Literal>
inline constexpr auto kLiteral = Literal;

}  // namespace detail

inline namespace literals {

/// "řetězec"_cp: the letters of the source, in code page 1250. A letter that the code page lacks doesn't
/// compile.
template <detail::TLiteral Literal>
constexpr std::string_view operator""_cp() {
    return {detail::kLiteral<Literal>.bytes.data(), detail::kLiteral<Literal>.length};
}

}  // namespace literals
}  // namespace kq_base

#include "platform/base/wide_text.h"

#include <algorithm>
#include <cstdint>

#include "platform/base/code_page.h"

namespace kq_base {
namespace {

// The characters of the code page lie in two stretches of Unicode. Each has a table from its first character on.
constexpr char16_t kLettersEnd = 0x2E0;
constexpr char16_t kSignsBegin = 0x2000;
constexpr char16_t kSignsEnd = 0x2130;

struct TBytes {
    std::array<char, kLettersEnd> letters{};
    std::array<char, kSignsEnd - kSignsBegin> signs{};
};

constexpr TBytes MakeBytes() {
    TBytes bytes;
    bytes.letters.fill('?');
    bytes.signs.fill('?');
    for (std::size_t byte = 0; byte < kCodePageToUnicode.size(); ++byte) {
        const std::size_t character = kCodePageToUnicode[byte];
        char &entry = character < kLettersEnd ? bytes.letters[character] : bytes.signs[character - kSignsBegin];
        entry = static_cast<char>(static_cast<std::uint8_t>(byte));
    }
    return bytes;
}

constexpr TBytes kBytes = MakeBytes();

char ToByte(char16_t character) {
    if (character < kLettersEnd) {
        return kBytes.letters[character];
    }
    return character >= kSignsBegin && character < kSignsEnd ? kBytes.signs[character - kSignsBegin] : '?';
}

}  // namespace

void Widen(std::string_view bytes, char16_t *wide) {
    std::transform(bytes.begin(), bytes.end(), wide,
                   [](char byte) { return char16_t{kCodePageToUnicode[static_cast<std::uint8_t>(byte)]}; });
}

void Narrow(std::u16string_view wide, char *bytes) { std::transform(wide.begin(), wide.end(), bytes, ToByte); }

void CopyToBuffer(std::u16string_view text, std::size_t high, char *buffer) {
    if (buffer != nullptr) {
        text = text.substr(0, high);
        Narrow(text, buffer);
        buffer[text.size()] = '\0';
    }
}

}  // namespace kq_base

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/base/bounded_text.h"

/// Text of 16-bit characters beside that of code page 1250, a byte a character, for modules whose texts are wide.
namespace kq_base {

/// Writes as many 16-bit characters as the text has bytes. Nothing is lost.
void Widen(std::string_view bytes, char16_t *wide);
/// Writes as many bytes as the text has 16-bit characters. One that the code page lacks becomes `?`, and so does each
/// half of a character that takes two.
void Narrow(std::u16string_view wide, char *bytes);

/// The text up to its terminator, or its first characters if there is none within the limit.
template <typename TCharacter>
std::basic_string_view<TCharacter> UpToTerminator(const TCharacter *text, std::size_t limit) {
    const std::basic_string_view<TCharacter> room(text, limit);
    return room.substr(0, room.find(TCharacter{0}));
}

/// A zero-terminated text in a room of its own, 8 or 16 bits wide; cut to what the room holds. All after it is zero.
template <typename TCharacter, std::size_t Capacity>
class CLocalText {
public:
    static constexpr std::uint32_t kHigh = Capacity - 1;

    CLocalText() = default;
    explicit CLocalText(std::string_view bytes) {
        bytes = bytes.substr(0, kHigh);
        if constexpr (sizeof(TCharacter) == 1) {
            bytes.copy(characters_.data(), bytes.size());
        } else {
            Widen(bytes, characters_.data());
        }
    }

    TCharacter *Data() { return characters_.data(); }
    /// What the room holds now; never more than kHigh characters.
    std::basic_string_view<TCharacter> View() const { return UpToTerminator(characters_.data(), kHigh); }

private:
    std::array<TCharacter, Capacity> characters_{};
};

/// Room for a text of the model's bound.
template <typename TCharacter>
using TShortText = CLocalText<TCharacter, TText::kBound + 1>;

/// Writes a text of either width to a caller's buffer whose highest valid index is high; cuts silently and always
/// terminates. Does nothing without a buffer.
void CopyToBuffer(std::u16string_view text, std::size_t high, char *buffer);

}  // namespace kq_base

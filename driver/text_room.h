#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "driver/kq_def.h"
#include "driver/value_string.h"
#include "platform/base/dynamic_string.h"
#include "platform/base/wide_text.h"

namespace kq_drv {

/// The room of a proxy in which its strings are on their way to and from the driver, in the width of the driver's
/// texts. Everything in it keeps its size, so that strings of a length that passed before allocate nothing. Only the
/// constructor throws when memory is short; the operations answer false then.
template <typename TCharacter>
class CTextRoom {
public:
    static constexpr std::uint32_t kFirstCapacity = 1024;
    /// Beyond that a driver's wish for room is taken for a mistake.
    static constexpr std::uint32_t kMaximalCapacity = 0x4000000;

    /// The room in which a driver writes: as many characters as the capacity says, and one.
    TCharacter *Data() { return characters_.get(); }
    std::uint32_t Capacity() const { return capacity_; }
    /// Makes room for more characters than before; what was there is gone. False, and nothing has changed, if it
    /// wouldn't be more, or too much, or if memory is short.
    bool Grow(std::uint32_t needed);

    /// Gives a text that the driver wrote to the caller's value. False, and the value is as it was, if memory is short.
    bool Deliver(std::basic_string_view<TCharacter> text, kq_def::TValue *value);

    /// A value that leads the driver of generation 3 to a caller's string, which a terminator follows: to the string
    /// itself or, if the driver is wide, to a copy, one for each of the two values of a query. No string is an empty
    /// one. False if memory is short.
    enum class TRole : std::uint8_t { kIn, kOut };
    bool ForDriver(const TDStringA *string, TRole role, kq_def::TValue &value);

private:
    static constexpr std::uint32_t kStep = 32;

    std::unique_ptr<TCharacter[]> characters_ = std::make_unique<TCharacter[]>(kFirstCapacity + 1);
    std::uint32_t capacity_ = kFirstCapacity;
    TDStringA delivered_;
    std::array<std::u16string, 2> widened_;
};

extern template class CTextRoom<char>;
extern template class CTextRoom<char16_t>;

/// A value that tells the driver of a text: of generation 3 with its count, of the earlier ones without.
template <typename TCharacter>
kq_def::TValue CountedValue(TCharacter *text, std::size_t count) {
    kq_def::TValue value;
    value.tag = kq_def::kTagCountedText;
    value.PutField(kq_def::TValue::kCountAt, static_cast<std::uint32_t>(count));
    value.PutField(kq_def::TValue::kCharactersAt, text);
    return value;
}

template <typename TCharacter>
kq_def::TValue ShortTextValue(TCharacter *text) {
    kq_def::TValue value;
    value.tag = kq_def::kTagShortText;
    value.PutField(kq_def::TValue::kDStringAt, text);
    return value;
}

/// A caller's string for a driver of generation 1 or 2: a copy that is cut to 255 characters.
using kq_base::TShortText;

inline std::string_view ViewOf(const TDStringA *string) {
    return string != nullptr ? string->View() : std::string_view("");
}

}  // namespace kq_drv

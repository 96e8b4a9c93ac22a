#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "driver/channels/dmf_words.h"
#include "driver/kq_drv.h"
#include "tools/print/json_text.h"

/// The bytes that a buffer channel gets.
inline constexpr std::uint32_t kBufferSize = 256;

/// A channel's value in whatever form its type has, with the memory that it needs. Is never moved, since drivers
/// know where a buffer lies.
class CChannelValue {
public:
    /// A type by its word in a driver map; false for any other word.
    bool SetType(std::string_view word);
    /// The value that a text says: true, false, a number in the type's range, or any text (UTF-8). False, with the
    /// reason, for anything else, and for a buffer.
    bool Read(std::string_view text, std::string &reason);

    bool IsBuffer() const { return type_ == kq_def::kTagBuffer; }
    std::string_view TypeWord() const { return kq_drv::TypeWord(type_); }
    void *Buffer() { return buffer_.data(); }

    /// A value to hand to the driver; it leads to this object's memory.
    kq_def::TValue Value();
    /// Takes over what came back from the driver.
    void Take(const kq_def::TValue &value) { scalar_ = value; }

    /// For people: a number, true or false, a text in «», a buffer's first and last bytes.
    std::string Text() const;
    /// A number, a truth value, a text, or a buffer's bytes in hexadecimal digits. A real that is no number is null.
    TJson Json() const;

private:
    std::string BufferDigits(std::size_t from, std::size_t count) const;

    std::uint32_t type_ = 0;
    kq_def::TValue scalar_;
    TDStringA string_;
    std::array<unsigned char, kBufferSize> buffer_{};
};

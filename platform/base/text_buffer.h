#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "platform/base/bounded_text.h"
#include "platform/base/number_text.h"

namespace kq_base {

/// A text of at most 255 characters that is put together on the stack: it allocates nothing and cuts silently at its
/// bound. A NUL byte ends whatever is appended.
class CTextBuffer {
public:
    static constexpr std::size_t kBound = TText::kBound;

    std::string_view View() const { return {characters_.data(), length_}; }
    std::size_t Length() const { return length_; }
    bool IsEmpty() const { return length_ == 0; }
    void Clear() { length_ = 0; }

    void Append(std::string_view text) {
        text = text.substr(0, kBound - length_);
        if (const void *terminator = text.empty() ? nullptr : std::memchr(text.data(), 0, text.size())) {
            text = text.substr(0, static_cast<std::size_t>(static_cast<const char *>(terminator) - text.data()));
        }
        if (!text.empty()) {
            std::memcpy(characters_.data() + length_, text.data(), text.size());
            length_ += text.size();
        }
    }
    void AppendDecimal(std::uint32_t number) { Append(DecimalText(number)); }
    /// Appends blanks until the text has this many characters.
    void PadTo(std::size_t length) {
        while (length_ < length && length_ < kBound) {
            characters_[length_++] = ' ';
        }
    }

private:
    std::array<char, kBound> characters_;
    std::size_t length_ = 0;
};

}  // namespace kq_base

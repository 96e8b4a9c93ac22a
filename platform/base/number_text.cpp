#include "platform/base/number_text.h"

#include <charconv>

namespace kq_base {

bool ParseDecimal(std::string_view text, std::uint32_t &number) {
    std::uint32_t value = 0;
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, 10);
    if (text.empty() || error != std::errc() || stop != end) {
        return false;
    }
    number = value;
    return true;
}

std::string DecimalText(std::uint32_t number) { return std::to_string(number); }

}  // namespace kq_base

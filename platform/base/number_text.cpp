#include "platform/base/number_text.h"

#include <limits>

namespace kq_base {

bool ParseDecimal(std::string_view text, std::uint32_t &number) {
    std::uint64_t value = 0;
    for (const char character : text) {
        const std::uint32_t digit = static_cast<std::uint8_t>(character) - std::uint32_t{'0'};
        value = value * 10 + digit;
        if (digit > 9 || value > std::numeric_limits<std::uint32_t>::max()) {
            return false;
        }
    }
    if (text.empty()) {
        return false;
    }
    number = static_cast<std::uint32_t>(value);
    return true;
}

std::string DecimalText(std::uint32_t number) { return std::to_string(number); }

}  // namespace kq_base

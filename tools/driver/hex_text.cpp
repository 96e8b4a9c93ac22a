#include "tools/driver/hex_text.h"

#include <array>
#include <cstdio>

std::string HexText(std::uint32_t number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(number));
    return text.data();
}

#include "platform/base/code_page.h"

namespace kq_base {

std::string ToUpper(std::string_view text) {
    std::string result(text);
    for (char &character : result) {
        character = ToUpper(character);
    }
    return result;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) {
        return false;
    }
    for (std::size_t at = 0; at < left.size(); ++at) {
        if (ToUpper(left[at]) != ToUpper(right[at])) {
            return false;
        }
    }
    return true;
}

std::string ToUtf8(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const std::uint32_t character = kCodePageToUnicode[static_cast<std::uint8_t>(byte)];
        if (character < 0x80) {
            result += static_cast<char>(character);
        } else if (character < 0x800) {
            result += static_cast<char>(0xC0U | (character >> 6U));
            result += static_cast<char>(0x80U | (character & 0x3FU));
        } else {
            result += static_cast<char>(0xE0U | (character >> 12U));
            result += static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
            result += static_cast<char>(0x80U | (character & 0x3FU));
        }
    }
    return result;
}

bool FromUtf8(std::string_view utf8, std::string &bytes) {
    bytes.clear();
    std::size_t at = 0;
    while (at < utf8.size()) {
        const auto lead = static_cast<std::uint8_t>(utf8[at]);
        const std::size_t count = lead < 0x80 ? 1 : lead >= 0xC2 && lead < 0xE0 ? 2 : (lead & 0xF0U) == 0xE0 ? 3 : 0;
        if (count == 0 || utf8.size() - at < count) {
            return false;
        }
        std::uint32_t character = count == 1 ? lead : count == 2 ? lead & 0x1FU : lead & 0x0FU;
        for (std::size_t tail = 1; tail < count; ++tail) {
            const auto next = static_cast<std::uint8_t>(utf8[at + tail]);
            if ((next & 0xC0U) != 0x80) {
                return false;
            }
            character = (character << 6U) | (next & 0x3FU);
        }
        const int byte = detail::FindByte(character);
        if (byte < 0 || (count == 3 && character < 0x800)) {
            return false;
        }
        bytes += static_cast<char>(byte);
        at += count;
    }
    return true;
}

}  // namespace kq_base

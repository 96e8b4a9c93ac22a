#include "tools/console/terminal_text.h"

std::string TerminalText(std::string_view text) {
    constexpr std::string_view kSecondSet = "\xC2";  // leads U+0080 to U+009F, control characters too
    std::string shown;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto code = static_cast<unsigned char>(text[at]);
        if (code == '\n') {
            shown += "\n      ";
        } else if (text.substr(at, 1) == kSecondSet && at + 1 < text.size() &&
                   static_cast<unsigned char>(text[at + 1]) < 0xA0) {
            shown += ' ';
            ++at;
        } else {
            shown += code < 0x20 || code == 0x7F ? ' ' : text[at];
        }
    }
    return shown;
}

#include "scanner/token.h"

#include <array>

#include "platform/base/bounded_text.h"

namespace par_scanner {

std::string_view TokenKindText(std::uint32_t kind) {
    static constexpr std::array<std::string_view, kDotDot + 1> kTexts = {
        "",  "",  "",  "",  "+", "-",  "*", "/",  ":=", "&",  ".",  ",",  ";", ":", "(", ")", "[",  "]",  "{",
        "}", "^", "~", "=", "#", "<>", "<", "<=", ">",  ">=", "<<", ">>", "|", "?", "!", "%", "\\", "..",
    };
    if (kind == kBlank) {
        return " ";
    }
    return kind < kTexts.size() ? kTexts[kind] : std::string_view();
}

void TokenKindToString(std::uint32_t kind, std::uint32_t high, char *text) {
    kq_base::CopyToBuffer(TokenKindText(kind), high, text);
}

}  // namespace par_scanner

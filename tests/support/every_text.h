#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Every text of up to longest pieces, each piece one of those given, in turn to the visitor.
template <class Visitor>
void ForEveryText(const std::vector<std::string_view> &pieces, std::size_t longest, Visitor visit) {
    std::vector<std::size_t> digits;
    for (;;) {
        std::string text;
        for (const std::size_t digit : digits) {
            text += pieces[digit];
        }
        visit(text);
        std::size_t at = 0;
        while (at < digits.size() && ++digits[at] == pieces.size()) {
            digits[at++] = 0;
        }
        if (at == digits.size()) {
            if (digits.size() == longest) {
                return;
            }
            digits.push_back(0);
        }
    }
}

#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/pieces.h"

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

/// Texts of pieces chosen at random; the same ones in every run.
class CNastyTexts {
public:
    /// The pieces are separated by `|`.
    CNastyTexts(std::string_view pieces, std::uint32_t seed) : pieces_(Pieces(pieces, "|")), random_(seed) {}

    std::string Make(std::size_t count) {
        std::string text;
        while (count-- > 0) {
            text += pieces_[random_() % pieces_.size()];
        }
        return text;
    }
    std::uint32_t Number(std::uint32_t below) { return static_cast<std::uint32_t>(random_() % below); }

private:
    std::vector<std::string> pieces_;
    std::mt19937 random_;
};

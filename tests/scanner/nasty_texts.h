#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/every_text.h"
#include "tests/support/pieces.h"

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

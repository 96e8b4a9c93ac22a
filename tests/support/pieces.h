#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The pieces of a text between its separators.
inline std::vector<std::string> Pieces(std::string_view text, std::string_view separator) {
    std::vector<std::string> pieces;
    for (std::size_t start = 0, end = 0; end != std::string_view::npos; start = end + separator.size()) {
        end = text.find(separator, start);
        pieces.emplace_back(text.substr(start, end - start));
    }
    return pieces;
}

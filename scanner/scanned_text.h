#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "scanner/par_section.h"
#include "scanner/plain_text.h"

namespace par_scanner {

/// What a scanner and its copies share: the text and what was found in it.
struct TScannedText {
    std::unique_ptr<char[]> text;  ///< followed by detail::kMargin line feeds
    std::uint32_t size = 0;
    std::vector<CSection> sections;        ///< in the order of the text
    std::vector<std::uint32_t> odd_lines;  ///< offsets of the lines that are odd or headers
    detail::CPlainValues values;
    std::vector<CKey> keys_read;  ///< room to read keys into, kept from list to list

    std::string_view View() const { return {text.get(), size}; }
    const char *End() const { return text.get() + size; }
    std::uint32_t OffsetOf(const char *character) const { return static_cast<std::uint32_t>(character - text.get()); }
};

}  // namespace par_scanner

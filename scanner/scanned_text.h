#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <vector>

#include "scanner/par_section.h"
#include "scanner/plain_text.h"

namespace par_scanner {

/// Keeps lists of keys until it is destroyed, in blocks that grow with what is kept.
class CKeyStore {
public:
    /// The list's copy.
    const CKey *Keep(const std::vector<CKey> &keys) {
        if (keys.size() > room_) {
            room_ = std::max(std::clamp(kept_, kSmallestBlock, kLargestBlock), keys.size());
            free_ = blocks_.emplace_back(std::make_unique_for_overwrite<CKey[]>(room_)).get();
        }
        CKey *kept = free_;
        free_ = std::copy(keys.begin(), keys.end(), free_);
        room_ -= keys.size();
        kept_ += keys.size();
        return kept;
    }

private:
    static constexpr std::size_t kSmallestBlock = 16;  ///< keys
    static constexpr std::size_t kLargestBlock = 4096;

    std::vector<std::unique_ptr<CKey[]>> blocks_;
    CKey *free_ = nullptr;
    std::size_t room_ = 0;  ///< keys that fit in at free_
    std::size_t kept_ = 0;
};

/// What a scanner and its copies share: the text and what was found in it.
struct TScannedText {
    std::unique_ptr<char[]> text;  ///< followed by detail::kMargin line feeds
    std::uint32_t size = 0;
    std::deque<CSection> sections;         ///< in the order of the text
    std::vector<std::uint32_t> odd_lines;  ///< offsets of the lines that are odd or headers
    detail::CPlainValues values;
    CKeyStore keys;
    std::vector<CKey> room;  ///< to read keys into before they are kept

    std::string_view View() const { return {text.get(), size}; }
    const char *End() const { return text.get() + size; }
    std::uint32_t OffsetOf(const char *character) const { return static_cast<std::uint32_t>(character - text.get()); }
};

}  // namespace par_scanner

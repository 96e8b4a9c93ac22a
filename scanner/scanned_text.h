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
        if (blocks_.empty() || blocks_.back().capacity() - blocks_.back().size() < keys.size()) {
            blocks_.emplace_back().reserve(std::max(std::clamp(kept_, kSmallestBlock, kLargestBlock), keys.size()));
        }
        kept_ += keys.size();
        std::vector<CKey> &block = blocks_.back();
        return block.data() + (block.insert(block.end(), keys.begin(), keys.end()) - block.begin());
    }

private:
    static constexpr std::size_t kSmallestBlock = 16;  ///< keys
    static constexpr std::size_t kLargestBlock = 4096;

    std::vector<std::vector<CKey>> blocks_;  ///< filled up to their capacity, so that no key moves
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

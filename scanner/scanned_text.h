#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "scanner/par_section.h"
#include "scanner/plain_text.h"

namespace par_scanner {

/// The sections of a text, in blocks: none moves when others are added.
class CSectionList {
public:
    std::size_t Size() const { return size_; }
    CSection &operator[](std::size_t index) { return blocks_[index / kBlock][index % kBlock]; }
    CSection &Add() {
        if (size_ % kBlock == 0) {
            blocks_.push_back(std::make_unique<CSection[]>(kBlock));
        }
        return (*this)[size_++];
    }

private:
    static constexpr std::size_t kBlock = 32;  ///< sections

    std::vector<std::unique_ptr<CSection[]>> blocks_;
    std::size_t size_ = 0;
};

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
    CSectionList sections;                 ///< in the order of the text
    std::vector<std::uint32_t> odd_lines;  ///< offsets of the lines that are odd or headers
    detail::CPlainValues values;
    CKeyStore keys;
    std::vector<CKey> room;  ///< to read keys into before they are kept

    std::string_view View() const { return {text.get(), size}; }
    const char *End() const { return text.get() + size; }
    std::uint32_t OffsetOf(const char *character) const { return static_cast<std::uint32_t>(character - text.get()); }
};

}  // namespace par_scanner

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// Where the lines of a text begin, kept while the text changes. A text that only grows at its end costs nothing until
/// somebody asks: whoever asks gives the text as it is, of which only the part not yet seen is looked at. A line ends
/// with LF; lines and their offsets count from 0.
class CTextLines {
public:
    /// The text is another one.
    void Clear();
    /// A piece of the text is replaced by another; `text` is the one before the change.
    void Replace(std::string_view text, std::size_t offset, std::size_t removed, std::string_view inserted);

    std::size_t Count(std::string_view text) const;
    /// The line in which an offset lies, and the offset at which a line begins, which must exist.
    std::size_t LineOf(std::string_view text, std::size_t offset) const;
    std::size_t StartOf(std::string_view text, std::size_t line) const;
    /// The number of characters in a line without its end, which is LF or CR LF.
    std::size_t LengthOf(std::string_view text, std::size_t line) const;

private:
    void Extend(std::string_view text) const;

    // The offsets fit 32 bits since a text does (CTextView::kMaxSize).
    mutable std::vector<std::uint32_t> starts_ = {0};
    mutable std::size_t seen_ = 0;
};

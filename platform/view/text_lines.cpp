#include "platform/view/text_lines.h"

#include <algorithm>

namespace {

void AppendStarts(std::string_view text, std::size_t from, std::size_t base, std::vector<std::uint32_t> &starts) {
    for (std::size_t end = text.find('\n', from); end != std::string_view::npos; end = text.find('\n', end + 1)) {
        starts.push_back(static_cast<std::uint32_t>(base + end + 1));
    }
}

}  // namespace

void CTextLines::Clear() {
    starts_ = {0};
    seen_ = 0;
}

void CTextLines::Extend(std::string_view text) const {
    AppendStarts(text, seen_, 0, starts_);
    seen_ = text.size();
}

void CTextLines::Replace(std::string_view text, std::size_t offset, std::size_t removed, std::string_view inserted) {
    Extend(text);
    const auto first = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const auto last = std::upper_bound(first, starts_.end(), offset + removed);
    // Adding 2^32 minus a number subtracts it.
    const auto shift = static_cast<std::uint32_t>(inserted.size() - removed);
    std::for_each(last, starts_.end(), [shift](std::uint32_t &start) { start += shift; });
    std::vector<std::uint32_t> fresh;
    AppendStarts(inserted, 0, offset, fresh);
    const auto shared = std::min(last - first, static_cast<std::ptrdiff_t>(fresh.size()));
    const auto next = std::copy_n(fresh.begin(), shared, first);
    if (shared < last - first) {
        starts_.erase(next, last);
    } else {
        starts_.insert(next, fresh.begin() + shared, fresh.end());
    }
    seen_ = text.size() - removed + inserted.size();
}

std::size_t CTextLines::Count(std::string_view text) const {
    Extend(text);
    return starts_.size();
}

std::size_t CTextLines::LineOf(std::string_view text, std::size_t offset) const {
    Extend(text);
    return static_cast<std::size_t>(std::upper_bound(starts_.begin(), starts_.end(), offset) - starts_.begin()) - 1;
}

std::size_t CTextLines::StartOf(std::string_view text, std::size_t line) const {
    Extend(text);
    return starts_[line];
}

std::size_t CTextLines::LengthOf(std::string_view text, std::size_t line) const {
    Extend(text);
    if (line + 1 == starts_.size()) {
        return text.size() - starts_[line];
    }
    std::size_t end = starts_[line + 1] - 1;
    if (end > starts_[line] && text[end - 1] == '\r') {
        --end;
    }
    return end - starts_[line];
}

// Find and replace. The search takes time in proportion to the text whatever is looked for (Knuth, Morris and Pratt):
// a person may look for a large selection in a large text.

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/base/code_page.h"
#include "platform/view/text_view.h"

namespace {

bool IsWordCharacter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    constexpr unsigned char kSharpS = 0xDF;  // the one letter without a capital
    return (character >= '0' && character <= '9') || character == '_' || kq_base::kUpperCase[byte] != byte ||
           kq_base::kLowerCase[byte] != byte || byte == kSharpS;
}

class CTextSearch {
public:
    CTextSearch(std::string_view pattern, const CTextView::TFindOptions &options)
        : pattern_(pattern), options_(options), borders_(pattern.size()) {
        std::size_t border = 0;
        for (std::size_t at = 1; at < pattern.size(); ++at) {
            border = Step(border, pattern[at]);
            borders_[at] = border;
        }
    }

    /// Calls visit with the offset of each match from an offset on, also of those that overlap, until it gives false.
    template <typename TVisit>
    void ForEach(std::string_view text, std::size_t from, TVisit visit) const {
        std::size_t matched = 0;
        for (std::size_t at = from; at < text.size(); ++at) {
            matched = Step(matched == pattern_.size() ? borders_[matched - 1] : matched, text[at]);
            const std::size_t start = at + 1 - matched;
            if (matched == pattern_.size() && Counts(text, start) && !visit(start)) {
                return;
            }
        }
    }

private:
    bool Equal(char left, char right) const {
        return left == right || (!options_.match_case && kq_base::ToUpper(left) == kq_base::ToUpper(right));
    }
    /// How many characters of the pattern end at a character, if so many did before it.
    std::size_t Step(std::size_t matched, char character) const {
        while (matched > 0 && !Equal(pattern_[matched], character)) {
            matched = borders_[matched - 1];
        }
        return Equal(pattern_[matched], character) ? matched + 1 : 0;
    }
    bool Counts(std::string_view text, std::size_t start) const {
        const std::size_t end = start + pattern_.size();
        return !options_.whole_word || ((start == 0 || !IsWordCharacter(text[start - 1])) &&
                                        (end == text.size() || !IsWordCharacter(text[end])));
    }

    std::string_view pattern_;
    CTextView::TFindOptions options_;
    std::vector<std::size_t> borders_;
};

std::optional<std::size_t> FindAfter(const CTextSearch &search, std::string_view text, std::size_t from) {
    std::optional<std::size_t> found;
    const auto take_first = [&found](std::size_t start) {
        found = start;
        return false;
    };
    search.ForEach(text, from, take_first);
    if (!found) {
        search.ForEach(text, 0, take_first);
    }
    return found;
}

/// The last match that ends at `limit` or before, otherwise the last one.
std::optional<std::size_t> FindBefore(const CTextSearch &search, std::string_view text, std::size_t size,
                                      std::size_t limit) {
    std::optional<std::size_t> before;
    std::optional<std::size_t> last;
    search.ForEach(text, 0, [&](std::size_t start) {
        last = start;
        if (start + size <= limit) {
            before = start;
        }
        return true;
    });
    return before ? before : last;
}

}  // namespace

bool CTextView::UserFind(std::string_view text, const TFindOptions &options) {
    if (!IsEnabled() || text.empty()) {
        return false;
    }
    const CTextSearch search(text, options);
    const auto found = options.backwards ? FindBefore(search, text_, text.size(), SelectionStart())
                                         : FindAfter(search, text_, SelectionStart() + SelectionLength());
    if (!found) {
        return false;
    }
    MoveCursor(*found, *found + text.size());
    FitCursor();
    return true;
}

std::size_t CTextView::UserReplaceAll(std::string_view text, std::string_view replacement,
                                      const TFindOptions &options) {
    if (!IsEnabled() || text.empty()) {
        return 0;
    }
    const CTextSearch search(text, options);
    std::size_t count = 0;
    std::size_t first = 0;
    std::size_t end = 0;
    const auto for_each_apart = [&](auto visit) {
        end = 0;
        search.ForEach(text_, 0, [&](std::size_t start) {
            if (start >= end) {
                visit(start);
                end = start + text.size();
            }
            return true;
        });
    };
    for_each_apart([&](std::size_t start) {
        first = count == 0 ? start : first;
        ++count;
    });
    const std::size_t kept = text_.size() - count * text.size();
    if (count == 0 || (!replacement.empty() && (MaxSize() - kept) / replacement.size() < count)) {
        return 0;
    }
    std::string fresh;
    fresh.reserve(end - first - count * text.size() + count * replacement.size());
    for_each_apart([&](std::size_t start) {
        fresh += Text().substr(std::max(first, end), start - std::max(first, end));
        fresh += replacement;
    });
    return UserReplaceAt(first, end - first, fresh) ? count : 0;
}

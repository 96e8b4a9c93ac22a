// The cursor is kept as an offset: text is inserted far more often than someone asks for line and column, which are
// counted on demand.

#include "platform/view/text_view.h"

#include <algorithm>
#include <utility>

#include "platform/base/files.h"

namespace {

/// The bytes of one text within the bound; on a system of 32 bits a string's own bound is lower.
std::size_t MaxSize() {
    static const std::size_t kBound = std::min<std::size_t>(std::string().max_size(), CTextView::kMaxSize);
    return kBound;
}

}  // namespace

void CTextView::InsertText(std::string_view text) {
    text = text.substr(0, MaxSize() - text_.size());
    if (text.empty()) {
        return;
    }
    text_.append(text);
    cursor_ = text_.size();
    saved_ = false;
    Changed(TViewChange::kContent);
}

void CTextView::SetText(std::string_view text) {
    text = text.substr(0, MaxSize());
    cursor_ = 0;
    if (text == text_) {
        return;
    }
    text_.assign(text);
    saved_ = false;
    Changed(TViewChange::kContent);
}

void CTextView::GetTextBlock(const char *&data, std::uint32_t &size) const {
    data = text_.data();
    size = static_cast<std::uint32_t>(text_.size());
}

bool CTextView::LoadFromFile(std::string_view path, std::string &error) {
    std::string content;
    if (!kq_base::CDisk::Current().Read(path, content, error)) {
        return false;
    }
    text_ = std::move(content);
    cursor_ = 0;
    saved_ = true;
    Changed(TViewChange::kContent);
    return true;
}

bool CTextView::SaveToFile(std::string_view path, std::string &error) {
    if (!kq_base::CDisk::Current().Save(path, text_, error)) {
        return false;
    }
    saved_ = true;
    return true;
}

void CTextView::SetLineIndex(std::uint32_t line, std::uint32_t column) {
    std::size_t start = 0;
    while (line > 0) {
        const std::size_t end = text_.find('\n', start);
        if (end == std::string::npos) {
            break;
        }
        start = end + 1;
        --line;
    }
    std::size_t end = std::min(text_.find('\n', start), text_.size());
    if (end < text_.size() && end > start && text_[end - 1] == '\r') {
        --end;
    }
    cursor_ = start + std::min<std::size_t>(column, end - start);
    Changed(TViewChange::kCursor);
}

std::uint32_t CTextView::CursorLine() const {
    std::uint32_t line = 0;
    for (std::size_t end = text_.find('\n'); end < cursor_; end = text_.find('\n', end + 1)) {
        ++line;
    }
    return line;
}

std::uint32_t CTextView::CursorColumn() const {
    const std::size_t before = cursor_ == 0 ? std::string::npos : text_.rfind('\n', cursor_ - 1);
    return static_cast<std::uint32_t>(before == std::string::npos ? cursor_ : cursor_ - before - 1);
}

void CTextView::AddColoredId(std::string_view name, std::uint32_t color) {
    colored_ids_.push_back({kq_base::TText(name), color});
    Changed(TViewChange::kColors);
}

void CTextView::ClearColoredIdList() {
    colored_ids_.clear();
    Changed(TViewChange::kColors);
}

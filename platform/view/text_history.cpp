#include "platform/view/text_history.h"

#include <algorithm>
#include <utility>

namespace {

/// The steps may take as many times the text's size, and as many bytes anyway. The last step is always kept.
constexpr std::size_t kMostTexts = 4;
constexpr std::size_t kLeastBound = std::size_t{1} << 20U;

std::size_t CommonPrefix(std::string_view left, std::string_view right) {
    const auto end = left.begin() + static_cast<std::ptrdiff_t>(std::min(left.size(), right.size()));
    return static_cast<std::size_t>(std::mismatch(left.begin(), end, right.begin()).first - left.begin());
}

std::size_t CommonSuffix(std::string_view left, std::string_view right) {
    const auto end = left.rbegin() + static_cast<std::ptrdiff_t>(std::min(left.size(), right.size()));
    return static_cast<std::size_t>(std::mismatch(left.rbegin(), end, right.rbegin()).first - left.rbegin());
}

/// True if a character begins a word, where typing begins a new step.
bool BeginsWord(std::string_view text, std::size_t offset, char character) {
    return character != ' ' && offset > 0 && text[offset - 1] == ' ';
}

}  // namespace

void CTextHistory::Clear() {
    steps_.clear();
    position_ = 0;
    saved_.reset();
    bytes_ = 0;
    before_.reset();
    appended_.reset();
}

void CTextHistory::Keep(bool kept) {
    if (std::exchange(kept_, kept) && !kept) {
        Clear();
    }
}

bool CTextHistory::NoteAppend(std::size_t size) {
    if (!kept_ || before_ || appended_) {
        return false;
    }
    appended_ = size;
    return true;
}

void CTextHistory::NoteReplacement(std::string &&text) {
    if (!kept_ || before_) {
        return;
    }
    before_ = std::move(text);
    if (const auto size = std::exchange(appended_, std::nullopt)) {
        before_->resize(*size);
    }
}

bool CTextHistory::IsProgramStepOpen(std::string_view text) const {
    return appended_ ? *appended_ < text.size() : before_ && *before_ != text;
}

void CTextHistory::FinishProgramStep(std::string_view text) {
    const auto before = std::exchange(before_, std::nullopt);
    const auto appended = std::exchange(appended_, std::nullopt);
    if (appended) {
        if (*appended < text.size()) {
            Append({.offset = *appended, .other = {}, .length = text.size() - *appended, .typed = false}, text.size());
        }
    } else if (before && *before != text) {
        const std::string_view old_text = *before;
        const std::size_t prefix = CommonPrefix(old_text, text);
        const std::size_t suffix = CommonSuffix(old_text.substr(prefix), text.substr(prefix));
        Append({.offset = prefix,
                .other = std::string(old_text.substr(prefix, old_text.size() - suffix - prefix)),
                .length = text.size() - suffix - prefix,
                .typed = false},
               text.size());
    }
}

void CTextHistory::NoteEdit(std::string_view text, std::size_t offset, std::size_t removed, std::string_view inserted,
                            bool typed) {
    if (!kept_ || (typed && Join(text, offset, removed, inserted))) {
        return;
    }
    Append({.offset = offset,
            .other = std::string(text.substr(offset, removed)),
            .length = inserted.size(),
            .typed = typed && !inserted.empty()},
           text.size() - removed + inserted.size());
}

bool CTextHistory::Join(std::string_view text, std::size_t offset, std::size_t removed, std::string_view inserted) {
    if (position_ == 0 || position_ < steps_.size() || IsAtSaved() || removed != 0 || inserted.size() != 1) {
        return false;
    }
    TStep &last = steps_.back();
    if (!last.typed || offset != last.offset + last.length || inserted == "\n" ||
        BeginsWord(text, offset, inserted[0])) {
        return false;
    }
    ++last.length;
    ++bytes_;
    return true;
}

void CTextHistory::Append(TStep step, std::size_t text_size) {
    while (CanStepForward()) {
        bytes_ -= steps_.back().Bytes();
        steps_.pop_back();
    }
    if (saved_ > position_) {
        saved_.reset();
    }
    bytes_ += step.Bytes();
    steps_.push_back(std::move(step));
    ++position_;
    const std::size_t bound = std::max(kLeastBound, text_size * kMostTexts);
    while (bytes_ > bound && steps_.size() > 1) {
        bytes_ -= steps_.front().Bytes();
        steps_.pop_front();
        --position_;
        if (saved_) {
            saved_ = *saved_ == 0 ? std::nullopt : std::optional(*saved_ - 1);
        }
    }
}

CTextHistory::TChange CTextHistory::Swap(TStep &step, std::string_view text) {
    TChange change{.offset = step.offset, .removed = step.length, .inserted = std::move(step.other)};
    step.other = text.substr(step.offset, step.length);
    step.length = change.inserted.size();
    // A step that was gone through is finished.
    step.typed = false;
    return change;
}

CTextHistory::TChange CTextHistory::StepBack(std::string_view text) { return Swap(steps_[--position_], text); }

CTextHistory::TChange CTextHistory::StepForward(std::string_view text) { return Swap(steps_[position_++], text); }

void CTextHistory::MarkSaved() { saved_ = position_; }

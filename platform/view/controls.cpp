#include "platform/view/controls.h"

#include <algorithm>

#include "platform/base/number_text.h"

namespace {

/// What a person can type into a field of one line, also when more is pasted.
std::string_view FirstLine(std::string_view text) {
    return text.substr(0, text.find_first_of(std::string_view("\r\n\0", 3)));
}

}  // namespace

void CComboBox::AppendEntry(std::string_view text) {
    entries_.emplace_back(text);
    Changed(TViewChange::kContent);
}

std::string_view CComboBox::Entry(std::size_t position) const {
    return position == 0 || position > entries_.size() ? std::string_view() : entries_[position - 1].View();
}

void CComboBox::Select(std::size_t position) {
    selected_ = position > entries_.size() ? 0 : position;
    text_ = Entry(selected_);
    Changed(TViewChange::kContent);
}

void CComboBox::SetText(std::string_view text) {
    if (mode_ == TMode::kFreeText) {
        selected_ = 0;
        text_ = text;
        Changed(TViewChange::kContent);
    }
}

bool CComboBox::UserSelect(std::size_t position) {
    if (position == 0 || position > entries_.size()) {
        return false;
    }
    Select(position);
    return true;
}

bool CComboBox::UserType(std::string_view text) {
    SetText(FirstLine(text));
    return mode_ == TMode::kFreeText;
}

CIntegerCountBox::CIntegerCountBox(std::uint32_t value, std::uint32_t from, std::uint32_t to)
    : value_(value), from_(from), to_(to < from || (from == 0 && to == 0) ? UINT32_MAX : to) {}

void CIntegerCountBox::SetValue(std::uint32_t value) {
    value_ = value;
    Changed(TViewChange::kContent);
}

bool CIntegerCountBox::UserSet(std::uint32_t value) {
    if (value < from_ || value > to_) {
        return false;
    }
    SetValue(value);
    return true;
}

bool CIntegerCountBox::UserType(std::string_view text) {
    std::uint32_t number = 0;
    return kq_base::ParseDecimal(text, number) && UserSet(number);
}

bool CIntegerCountBox::UserStepUp() { return value_ < to_ && UserSet(std::max(value_ + 1, from_)); }

bool CIntegerCountBox::UserStepDown() { return value_ > from_ && UserSet(std::min(value_ - 1, to_)); }

void CEditBox::SetText(std::string_view text) {
    text_ = text;
    Changed(TViewChange::kContent);
}

bool CEditBox::UserType(std::string_view text) {
    SetText(FirstLine(text));
    return true;
}

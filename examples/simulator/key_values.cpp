#include "key_values.h"

#include <algorithm>
#include <charconv>

#include "texts.h"

namespace simulator {

bool ReadNumber(std::string_view text, std::uint32_t &number) {
    const char *const end = text.data() + text.size();
    std::uint32_t read = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, read);
    if (error != std::errc() || stop != end) {
        return false;
    }
    number = read;
    return true;
}

CKeyValues::CKeyValues(par_scanner::CParScanner &scanner) {
    std::string_view value;
    std::uint32_t separator = 0;
    for (bool there = scanner.FirstValue(value); there; there = scanner.NextValue(value, separator)) {
        values_.emplace_back(value);
    }
}

bool CKeyValues::Next(std::string_view &value) {
    if (!mistake_.empty() || taken_ == values_.size()) {
        return false;
    }
    value = values_[taken_++];
    return true;
}

void CKeyValues::TakeNumber(std::uint32_t &number, std::uint32_t from, std::uint32_t to) {
    std::string_view value;
    if (!Next(value)) {
        return;
    }
    std::uint32_t read = 0;
    if (ReadNumber(value, read) && read >= from && read <= to) {
        number = read;
        return;
    }
    mistake_.append(texts::kNoNumber).append(std::to_string(from)).append(texts::kUpTo).append(std::to_string(to));
    mistake_.append(": ").append(value);
}

void CKeyValues::TakeWord(std::size_t &index, std::initializer_list<std::string_view> words) {
    std::string_view value;
    if (!Next(value)) {
        return;
    }
    const auto *const found = std::find(words.begin(), words.end(), value);
    if (found != words.end()) {
        index = static_cast<std::size_t>(found - words.begin());
        return;
    }
    mistake_.append(texts::kUnknownWord).append(value);
}

void CKeyValues::TakeText(std::string &text) {
    std::string_view value;
    if (!Next(value)) {
        return;
    }
    const bool quoted = value.size() >= 2 && (value.front() == '\'' || value.front() == '"');
    text = quoted && value.front() == value.back() ? value.substr(1, value.size() - 2) : value;
}

std::string CKeyValues::Mistake() const {
    if (!mistake_.empty() || taken_ == values_.size()) {
        return mistake_;
    }
    return std::string(texts::kTooMany).append(values_[taken_]);
}

}  // namespace simulator

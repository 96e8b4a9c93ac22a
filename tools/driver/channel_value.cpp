#include "tools/driver/channel_value.h"

#include <charconv>
#include <cmath>
#include <type_traits>

#include "driver/value_scalars.h"

namespace {

constexpr std::size_t kShownBytes = 16;

bool ReadScalar(std::string_view text, bool &scalar) {
    scalar = text == "true" || text == "1";
    return scalar || text == "false" || text == "0";
}

template <typename TNumber>
bool ReadScalar(std::string_view text, TNumber &scalar) {
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, scalar);
    return error == std::errc() && stop == end;
}

std::string ScalarText(bool scalar) { return scalar ? "true" : "false"; }

/// The shortest text that leads back to the number.
template <typename TNumber>
std::string ScalarText(TNumber scalar) {
    std::array<char, 64> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), scalar);
    return {text.data(), end};
}

template <typename TScalar>
TJson ScalarJson(TScalar scalar) {
    if constexpr (std::is_same_v<TScalar, float>) {
        double shortest = 0;
        return std::isfinite(scalar) && ReadScalar(ScalarText(scalar), shortest) ? TJson(shortest) : TJson(nullptr);
    } else if constexpr (std::is_same_v<TScalar, double>) {
        return std::isfinite(scalar) ? TJson(scalar) : TJson(nullptr);
    } else {
        return scalar;
    }
}

}  // namespace

bool CChannelValue::SetType(std::string_view word) {
    type_ = kq_drv::TypeOfWord(word);
    return type_ != 0;
}

bool CChannelValue::Read(std::string_view text, std::string &reason) {
    if (type_ == kq_def::kTagDString) {
        if (!kq_base::FromUtf8(text, string_.Text())) {
            reason = "the text isn't UTF-8, or holds a character that code page 1250 lacks";
            return false;
        }
        return true;
    }
    if (IsBuffer()) {
        reason = "buffers can only be read";
        return false;
    }
    bool read = false;
    kq_def::VisitScalarTag(type_, [this, text, &read](auto tag) {
        kq_def::TScalar<tag()> scalar{};
        read = ReadScalar(text, scalar);
        scalar_ = kq_def::ScalarValue<tag()>(scalar);
    });
    if (!read) {
        reason = "\"" + std::string(text) + "\" is no " + std::string(TypeWord());
    }
    return read;
}

kq_def::TValue CChannelValue::Value() {
    if (type_ == kq_def::kTagDString) {
        return kq_def::DStringValue(&string_);
    }
    kq_def::TValue value = scalar_;
    value.tag = type_;
    if (IsBuffer()) {
        value.PutField<void *>(kq_def::TValue::kBufferAt, buffer_.data());
    }
    return value;
}

std::string CChannelValue::Text() const {
    if (type_ == kq_def::kTagDString) {
        return "«" + kq_base::ToUtf8(string_.View()) + "»";
    }
    if (IsBuffer()) {
        return BufferDigits(0, kShownBytes) + " ... " + BufferDigits(kBufferSize - kShownBytes, kShownBytes);
    }
    std::string text;
    kq_def::VisitScalarTag(type_, [this, &text](auto tag) { text = ScalarText(kq_def::ScalarIn<tag()>(scalar_)); });
    return text;
}

TJson CChannelValue::Json() const {
    if (type_ == kq_def::kTagDString) {
        return TextJson(string_.View());
    }
    if (IsBuffer()) {
        return BufferDigits(0, kBufferSize);
    }
    TJson json;
    kq_def::VisitScalarTag(type_, [this, &json](auto tag) { json = ScalarJson(kq_def::ScalarIn<tag()>(scalar_)); });
    return json;
}

std::string CChannelValue::BufferDigits(std::size_t from, std::size_t count) const {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string digits;
    for (std::size_t at = from; at < from + count; ++at) {
        digits += kDigits[buffer_[at] >> 4U];
        digits += kDigits[buffer_[at] & 0x0FU];
    }
    return digits;
}

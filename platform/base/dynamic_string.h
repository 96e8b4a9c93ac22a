#pragma once

#include <string>
#include <string_view>

/// A string of any length, as the exported interfaces pass it: an owner of bytes that gives its data and length.
class TDStringA {
public:
    TDStringA() = default;
    explicit TDStringA(std::string text) : text_(std::move(text)) {}
    explicit TDStringA(std::string_view text) : text_(text) {}
    explicit TDStringA(const char *text) : text_(text) {}

    const char *Data() const { return text_.data(); }
    std::size_t Length() const { return text_.size(); }
    std::string_view View() const { return text_; }
    void Assign(std::string_view text) { text_ = text; }
    /// The text itself, for a caller that fills it.
    std::string &Text() { return text_; }

private:
    std::string text_;
};

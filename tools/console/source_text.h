#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The text of a file under the name that diagnostics give it.
class CSourceText {
public:
    CSourceText() = default;
    CSourceText(std::string name, std::string text) : name_(std::move(name)), text_(std::move(text)) {}

    const std::string &Name() const { return name_; }
    const std::string &Text() const { return text_; }
    /// The characters of a line, counted from 1, without its line end; empty for a line that doesn't exist. The first
    /// call finds all line ends, so that quoting many lines reads the text once.
    std::string_view Line(std::uint32_t line) const;

private:
    std::string name_;
    std::string text_;
    mutable std::vector<std::size_t> line_starts_;
};

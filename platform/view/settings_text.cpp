#include "platform/view/settings_text.h"

#include <charconv>
#include <limits>
#include <optional>
#include <utility>

namespace {

constexpr std::string_view kFirstLine = "; settings";
constexpr std::string_view kLastLine = "; end";

bool IsPlain(char character) {
    return character > ' ' && character < '\x7F' && std::string_view("[]=;%").find(character) == std::string_view::npos;
}

void AppendEscaped(std::string &text, std::string_view word) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    for (std::size_t at = 0; at < word.size(); ++at) {
        const bool inner_blank = word[at] == ' ' && at > 0 && at + 1 < word.size();
        if (inner_blank || IsPlain(word[at])) {
            text += word[at];
        } else {
            const auto byte = static_cast<unsigned char>(word[at]);
            text += {'%', kDigits[byte / 16], kDigits[byte % 16]};
        }
    }
}

/// Nothing if the word isn't as AppendEscaped would write it, or as a person might.
std::optional<std::string> Unescaped(std::string_view word) {
    std::string plain;
    for (std::size_t at = 0; at < word.size(); ++at) {
        if (word[at] != '%') {
            if (word[at] != ' ' && !IsPlain(word[at])) {
                return std::nullopt;
            }
            plain += word[at];
            continue;
        }
        unsigned byte = 0;
        const std::string_view digits = word.substr(at + 1, 2);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (digits.size() != 2 || error != std::errc() || end != digits.data() + digits.size()) {
            return std::nullopt;
        }
        plain += static_cast<char>(byte);
        at += 2;
    }
    return plain;
}

std::optional<std::int64_t> ParseValue(std::string_view digits) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool fits =
        value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::uint32_t>::max();
    if (error != std::errc() || end != digits.data() + digits.size() || !fits) {
        return std::nullopt;
    }
    return value;
}

std::string_view TakeLine(std::string_view &text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

/// Takes a line below a path; `values` are those of the path.
bool ParseLine(std::string_view line, CMemorySettings::TPaths &paths, CMemorySettings::TValues *&values) {
    if (line.empty()) {
        return true;
    }
    if (line.starts_with('[')) {
        const auto path = line.ends_with(']') ? Unescaped(line.substr(1, line.size() - 2)) : std::nullopt;
        values = path ? &paths[*path] : nullptr;
        return values != nullptr;
    }
    const std::size_t sign = line.find('=');
    if (sign == std::string_view::npos || values == nullptr) {
        return false;
    }
    const auto name = Unescaped(line.substr(0, sign));
    const auto value = ParseValue(line.substr(sign + 1));
    if (name && value) {
        (*values)[*name] = *value;
    }
    return name && value;
}

}  // namespace

std::string SettingsText(const CMemorySettings::TPaths &paths) {
    std::string text(kFirstLine);
    text += '\n';
    for (const auto &[path, values] : paths) {
        text += '[';
        AppendEscaped(text, path);
        text += "]\n";
        for (const auto &[name, value] : values) {
            AppendEscaped(text, name);
            text += '=' + std::to_string(value) + '\n';
        }
    }
    text += kLastLine;
    text += '\n';
    return text;
}

bool ParseSettings(std::string_view text, CMemorySettings::TPaths &paths) {
    paths.clear();
    CMemorySettings::TPaths read;
    CMemorySettings::TValues *values = nullptr;
    if (TakeLine(text) != kFirstLine) {
        return false;
    }
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (line == kLastLine) {
            std::erase_if(read, [](const auto &path) { return path.second.empty(); });
            paths = std::move(read);
            return true;
        }
        if (!ParseLine(line, read, values)) {
            return false;
        }
    }
    return false;
}

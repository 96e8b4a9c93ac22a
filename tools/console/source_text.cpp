#include "tools/console/source_text.h"

std::string_view CSourceText::Line(std::uint32_t line) const {
    if (line_starts_.empty()) {
        line_starts_.push_back(0);
        for (std::size_t end = text_.find('\n'); end != std::string::npos; end = text_.find('\n', end + 1)) {
            line_starts_.push_back(end + 1);
        }
    }
    if (line == 0 || line > line_starts_.size()) {
        return {};
    }
    const std::size_t start = line_starts_[line - 1];
    const std::size_t end = line < line_starts_.size() ? line_starts_[line] - 1 : text_.size();
    std::string_view characters = std::string_view(text_).substr(start, end - start);
    if (characters.ends_with('\r')) {
        characters.remove_suffix(1);
    }
    return characters;
}

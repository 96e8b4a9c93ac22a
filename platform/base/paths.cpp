#include "platform/base/paths.h"

#include "platform/base/code_page.h"

namespace kq_base {

namespace {

constexpr std::string_view kSeparators = "/\\";

}  // namespace

std::string JoinPath(std::string_view directory, std::string_view name) {
    std::string path(directory);
    if (!path.empty() && kSeparators.find(path.back()) == std::string_view::npos) {
        path += '/';
    }
    return path.append(name);
}

std::string_view DirectoryPart(std::string_view path) {
    const std::size_t last = path.find_last_of(kSeparators);
    if (last == std::string_view::npos) {
        return {};
    }
    return path.substr(0, last == 0 ? 1 : last);
}

std::string_view FileNamePart(std::string_view path) { return path.substr(path.find_last_of(kSeparators) + 1); }

std::string ChangeExtension(std::string_view path, std::string_view extension) {
    const std::size_t dot = FileNamePart(path).rfind('.');
    if (dot != std::string_view::npos) {
        path.remove_suffix(FileNamePart(path).size() - dot);
    }
    return std::string(path).append(".").append(extension);
}

// After a mismatch only the last star need take one character more, so the work is at most name times pattern.
bool MatchesPattern(std::string_view name, std::string_view pattern) {
    std::size_t at = 0;
    std::size_t in_pattern = 0;
    std::size_t behind_star = std::string_view::npos;
    std::size_t star_end = 0;
    while (at < name.size()) {
        if (in_pattern < pattern.size() && pattern[in_pattern] == '*') {
            behind_star = ++in_pattern;
            star_end = at;
        } else if (in_pattern < pattern.size() &&
                   (pattern[in_pattern] == '?' || ToUpper(pattern[in_pattern]) == ToUpper(name[at]))) {
            ++in_pattern;
            ++at;
        } else if (behind_star != std::string_view::npos) {
            in_pattern = behind_star;
            at = ++star_end;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in_pattern) == std::string_view::npos;
}

}  // namespace kq_base

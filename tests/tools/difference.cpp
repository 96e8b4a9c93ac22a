#include "tests/tools/difference.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace {

constexpr std::ptrdiff_t kLinesAround = 2;

std::vector<std::string> Lines(const std::string &text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

std::string Difference(const std::string &expected, const std::string &actual) {
    if (expected == actual) {
        return "";
    }
    const std::vector<std::string> left = Lines(expected);
    const std::vector<std::string> right = Lines(actual);
    const auto [left_begin, right_begin] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    const auto left_rest = std::make_reverse_iterator(left_begin);
    const auto right_rest = std::make_reverse_iterator(right_begin);
    const auto left_end = std::mismatch(left.rbegin(), left_rest, right.rbegin(), right_rest).first.base();
    const auto right_end = right.end() - (left.end() - left_end);

    std::string text;
    const auto add = [&text](const char *sign, auto from, auto to) {
        std::for_each(from, to, [&](const std::string &line) { text += sign + line + "\n"; });
    };
    add("  ", left_begin - std::min(kLinesAround, left_begin - left.begin()), left_begin);
    add("- ", left_begin, left_end);
    add("+ ", right_begin, right_end);
    add("  ", left_end, left_end + std::min(kLinesAround, left.end() - left_end));
    return text;
}

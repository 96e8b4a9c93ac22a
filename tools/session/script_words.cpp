#include "tools/session/script_words.h"

#include <algorithm>

namespace {

constexpr std::string_view kBlanks = " \t";
/// Letters after a backslash and the characters that they stand for.
constexpr std::string_view kEscapeLetters = "\"\\nrt";
constexpr std::string_view kEscaped = "\"\\\n\r\t";

bool TakeQuoted(std::string_view &line, std::string &word, std::string &mistake) {
    line.remove_prefix(1);
    while (!line.empty() && line.front() != '"') {
        char character = line.front();
        if (character == '\\') {
            const std::size_t letter = line.size() > 1 ? kEscapeLetters.find(line[1]) : std::string_view::npos;
            if (letter == std::string_view::npos) {
                mistake = R"(in quotes a backslash precedes one of " \ n r t)";
                return false;
            }
            character = kEscaped[letter];
            line.remove_prefix(1);
        }
        word += character;
        line.remove_prefix(1);
    }
    if (line.empty()) {
        mistake = "the closing quote is missing";
        return false;
    }
    line.remove_prefix(1);
    if (!line.empty() && kBlanks.find(line.front()) == std::string_view::npos) {
        mistake = "a blank is missing after the closing quote";
        return false;
    }
    return true;
}

}  // namespace

void SkipBlanks(std::string_view &line) { line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size())); }

bool TakeWord(std::string_view &line, std::string &word, std::string &mistake) {
    word.clear();
    SkipBlanks(line);
    if (line.empty()) {
        return false;
    }
    if (line.front() == '"') {
        return TakeQuoted(line, word, mistake);
    }
    word = line.substr(0, line.find_first_of(kBlanks));
    line.remove_prefix(word.size());
    return true;
}

#include "tools/console/diagnostics.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

#include "platform/base/code_page.h"

namespace {

constexpr std::string_view kBold = "\x1b[1m";
constexpr std::string_view kGreen = "\x1b[1;32m";
constexpr std::string_view kPlain = "\x1b[0m";
/// Characters of a source line that are shown at most; of a longer line the part around the mark.
constexpr std::size_t kShownWidth = 160;

struct TKindStyle {
    std::string_view word;
    std::string_view colour;
};

TKindStyle StyleOf(TDiagnosticKind kind) {
    switch (kind) {
        case TDiagnosticKind::kError:
            return {"error", "\x1b[1;31m"};
        case TDiagnosticKind::kWarning:
            return {"warning", "\x1b[1;35m"};
        case TDiagnosticKind::kNote:
            break;
    }
    return {"note", "\x1b[1;36m"};
}

std::string Painted(const TConsole &console, std::string_view text, std::string_view colour) {
    return console.colour ? std::string(colour) + std::string(text) + std::string(kPlain) : std::string(text);
}

/// The characters of a line, from begin up to but not including end, that a mark goes under.
struct TMark {
    std::size_t begin;
    std::size_t end;
};

bool IsWordCharacter(char character) {
    const auto code = static_cast<unsigned char>(character);
    return std::isalnum(code) != 0 || code == '_' || code >= 0x80;
}

TMark FindMark(std::string_view line, std::uint32_t column, TColumn meaning) {
    std::size_t end = std::min<std::size_t>(column - 1, line.size());
    if (meaning == TColumn::kAtText) {
        return {end, end + 1};
    }
    std::string_view separators = " \t\r";
    if (meaning == TColumn::kAfterValue) {
        separators = " \t\r,";
        if (column == 1) {
            end = line.size();  // the value was the last of its line, and the reader has passed the line end too
        }
    }
    const std::size_t last = line.substr(0, end).find_last_not_of(separators);
    if (last == std::string_view::npos) {
        return {end, end + 1};
    }
    const auto belongs = [&](char character) {
        return meaning == TColumn::kAfterToken ? IsWordCharacter(character)
                                               : separators.find(character) == std::string_view::npos;
    };
    std::size_t begin = last;
    while (belongs(line[last]) && begin > 0 && belongs(line[begin - 1])) {
        --begin;
    }
    return {begin, last + 1};
}

/// A line for the terminal: control characters, which would move its cursor, become blanks; tabs stay.
std::string Shown(std::string_view line) {
    std::string shown(line);
    for (char &character : shown) {
        const auto code = static_cast<unsigned char>(character);
        const bool control = kq_base::kCodePageToUnicode[code] < 0x20 ||
                             (kq_base::kCodePageToUnicode[code] >= 0x7F && kq_base::kCodePageToUnicode[code] < 0xA0);
        if (control && character != '\t') {
            character = ' ';
        }
    }
    return kq_base::ToUtf8(shown);
}

/// A line of a text and below it the mark.
std::string MarkedLine(const TConsole &console, std::string_view line, TMark mark) {
    if (line.size() > kShownWidth) {
        const std::size_t start = mark.begin > kShownWidth / 2 ? mark.begin - kShownWidth / 2 : 0;
        line = line.substr(start, kShownWidth);
        mark = {mark.begin - start, std::min(mark.end - start, line.size() + 1)};
    }
    std::string under(line.substr(0, mark.begin));
    std::replace_if(
        under.begin(), under.end(), [](char character) { return character != '\t'; }, ' ');
    const std::string sign = "^" + std::string(mark.end - mark.begin - 1, '~');
    return Shown(line) + "\n" + under + Painted(console, sign, kGreen) + "\n";
}

std::string HeadLine(const TConsole &console, std::string_view position, TDiagnosticKind kind, std::string_view text) {
    const TKindStyle style = StyleOf(kind);
    return Painted(console, std::string(position) + ":", kBold) + " " +
           Painted(console, std::string(style.word) + ":", style.colour) + " " + std::string(text) + "\n";
}

}  // namespace

// Standard error has no buffer, so each diagnostic is put together first and goes out in one piece.
void PrintDiagnostic(TConsole &console, const CSourceText &source, const TDiagnostic &diagnostic) {
    std::string position = source.Name();
    if (diagnostic.line) {
        position += ':' + std::to_string(*diagnostic.line);
        if (diagnostic.column) {
            position += ':' + std::to_string(*diagnostic.column);
        }
    }
    std::string printed = HeadLine(console, position, diagnostic.kind, diagnostic.text);
    if (diagnostic.line && diagnostic.column) {
        const std::string_view line = source.Line(*diagnostic.line);
        if (!line.empty()) {
            printed += MarkedLine(console, line, FindMark(line, *diagnostic.column, diagnostic.meaning));
        }
    }
    console.err << printed;
}

void PrintError(TConsole &console, std::string_view name, std::string_view text) {
    console.err << HeadLine(console, name, TDiagnosticKind::kError, text);
}

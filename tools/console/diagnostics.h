#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tools/console/console.h"
#include "tools/console/source_text.h"

enum class TDiagnosticKind { kError, kWarning, kNote };

/// How the column of a diagnostic lies to what it is about.
enum class TColumn {
    kAtText,       ///< it is the first character of it
    kBehindToken,  ///< the reader stands directly behind a token of the template language
    kBehindValue,  ///< the reader has passed a value and the separator behind it
};

/// Something to tell a person about a file.
struct TDiagnostic {
    TDiagnosticKind kind = TDiagnosticKind::kError;
    std::string text;  ///< UTF-8
    std::optional<std::uint32_t> line = std::nullopt;
    std::optional<std::uint32_t> column = std::nullopt;
    TColumn meaning = TColumn::kAtText;
};

/// Writes `NAME:LINE:COLUMN: error: TEXT` and, where both line and column are known, the line itself with a mark under
/// the place. This is the one way in which the program speaks of what is wrong.
void PrintDiagnostic(TConsole &console, const CSourceText &source, const TDiagnostic &diagnostic);
/// The same about something that isn't a text: a file that can't be read, the command line.
void PrintError(TConsole &console, std::string_view name, std::string_view text);

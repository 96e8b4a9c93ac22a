#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tools/console/console.h"
#include "tools/console/source_text.h"

enum class TDiagnosticKind { kError, kWarning, kNote };

/// How the column of a diagnostic relates to what the diagnostic is about.
enum class TColumn {
    kAtText,      ///< its first character
    kAfterToken,  ///< the character just after it, a token of the template language
    kAfterValue,  ///< the character after it, a value, and after the separator that follows
};

/// A message to a person about a file.
struct TDiagnostic {
    TDiagnosticKind kind = TDiagnosticKind::kError;
    std::string text;  ///< UTF-8
    std::optional<std::uint32_t> line = std::nullopt;
    std::optional<std::uint32_t> column = std::nullopt;
    TColumn meaning = TColumn::kAtText;
};

/// Writes `NAME:LINE:COLUMN: error: TEXT` and, where both line and column are known, the line itself with a mark under
/// that position. All that the program reports as wrong goes through here.
void PrintDiagnostic(TConsole &console, const CSourceText &source, const TDiagnostic &diagnostic);
/// The same about something that isn't a text: a file that can't be read, the command line.
void PrintError(TConsole &console, std::string_view name, std::string_view text);

#pragma once

#include <string>
#include <string_view>

#include "tools/console/console.h"
#include "tools/console/source_text.h"

/// The name that means standard input, and for standard output where a file is written.
inline constexpr std::string_view kStandardInput = "-";

/// Reads a file or standard input as a whole. If that can't be done, the reason is printed and the result is false.
bool ReadSource(TConsole &console, const std::string &name, CSourceText &source);
/// Puts a text into a file. If that fails, the old content stays, the reason is printed and the result is false.
bool SaveText(TConsole &console, const std::string &name, std::string_view text);

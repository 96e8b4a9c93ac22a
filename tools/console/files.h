#pragma once

#include <string>
#include <string_view>

#include "tools/console/console.h"
#include "tools/console/source_text.h"

/// The name that stands for standard input, and for standard output where a file is written.
inline constexpr std::string_view kStandardInput = "-";

/// Reads a file or standard input as a whole. False, with the reason told on the console, if that can't be done.
bool ReadSource(TConsole &console, const std::string &name, CSourceText &source);
/// Puts a text into a file, whose old content stays if that fails; the reason is told on the console then.
bool SaveText(TConsole &console, const std::string &name, std::string_view text);

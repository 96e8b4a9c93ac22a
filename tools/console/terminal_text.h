#pragma once

#include <string>
#include <string_view>

/// A module's text, in UTF-8, for the terminal: one of many lines goes on below its beginning, indented, and other
/// control characters, which would move the cursor, become blanks.
std::string TerminalText(std::string_view text);

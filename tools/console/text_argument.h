#pragma once

#include <string>
#include <string_view>

#include "tools/console/console.h"

/// A text typed at the command line, in the code page of the library. If the code page lacks a character of it, the
/// reason is printed under the name of what was typed and the result is false.
bool ToCodePage(TConsole &console, std::string_view what, std::string_view typed, std::string &text);

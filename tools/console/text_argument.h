#pragma once

#include <string>
#include <string_view>

#include "tools/console/console.h"

/// A text typed at the command line, in the code page of the library. False, with the reason told on the console under
/// the name of what was typed, if the code page lacks a letter of it.
bool ToCodePage(TConsole &console, std::string_view what, std::string_view typed, std::string &text);

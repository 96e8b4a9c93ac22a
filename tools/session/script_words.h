#pragma once

#include <string>
#include <string_view>

/// Takes the next word from the beginning of a line and leaves what follows it. Blanks and tabs separate words; one in
/// double quotes may hold them, and escapes. False at the end of the line, and with a reason for a word that isn't
/// right.
bool TakeWord(std::string_view &line, std::string &word, std::string &mistake);

/// Removes blanks and tabs from the beginning.
void SkipBlanks(std::string_view &line);

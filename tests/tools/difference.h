#pragma once

#include <string>

/// Empty if the texts are equal; otherwise the lines in which they differ, `-` the expected ones and `+` the actual
/// ones, with a line or two around them.
std::string Difference(const std::string &expected, const std::string &actual);

#pragma once

#include <string>

/// Empty if the texts are equal; otherwise the lines in which they differ, `-` what is due and `+` what came, with a
/// line or two around them.
std::string Difference(const std::string &due, const std::string &came);

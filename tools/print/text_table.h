#pragma once

#include <string>
#include <vector>

/// Rows of cells, laid out so that columns are below each other, two blanks apart. The last cell of a row may be of
/// any width and letters; all others are ASCII. All rows have the same number of cells.
std::string TextTable(const std::vector<std::vector<std::string>> &rows);

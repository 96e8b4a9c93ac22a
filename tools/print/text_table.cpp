#include "tools/print/text_table.h"

#include <algorithm>
#include <cstddef>

std::string TextTable(const std::vector<std::vector<std::string>> &rows) {
    std::vector<std::size_t> widths;
    for (const auto &row : rows) {
        widths.resize(row.size() - 1);
        for (std::size_t column = 0; column < widths.size(); ++column) {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    std::string table;
    for (const auto &row : rows) {
        std::string line;
        for (std::size_t column = 0; column < widths.size(); ++column) {
            line += row[column] + std::string(widths[column] + 2 - row[column].size(), ' ');
        }
        line += row.back();
        line.erase(line.find_last_not_of(' ') + 1);
        table += line + "\n";
    }
    return table;
}

#pragma once

#include <cstddef>
#include <vector>

namespace kq_pdt {

/// Widths of the columns of one section's text: 0 is that of the key texts, n that of the nth value. A column that
/// no key raised has the width 0.
class CColumnWidths {
public:
    void Raise(std::size_t column, std::size_t width) {
        if (column >= widths_.size()) {
            widths_.resize(column + 1);
        }
        if (widths_[column] < width) {
            widths_[column] = width;
        }
    }
    std::size_t Width(std::size_t column) const { return column < widths_.size() ? widths_[column] : 0; }

private:
    std::vector<std::size_t> widths_;
};

}  // namespace kq_pdt

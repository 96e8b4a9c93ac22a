#include "desktop/kqconf/line_diff.h"

#include <algorithm>
#include <cstddef>

namespace kq_desktop {

namespace {

using TKind = TDiffLine::TKind;

/// Above so many differences the search for the fewest would take too long.
constexpr int kMostDifferences = 2000;

/// The shortest way from one list of lines to another, step by step from the end: each step keeps, removes or adds a
/// line. Empty if there are too many differences.
class CShortestWay {
public:
    CShortestWay(const QStringList &before, const QStringList &after, qsizetype head, qsizetype tail)
        : before_(before),
          after_(after),
          head_(head),
          rows_(static_cast<int>(before.size() - head - tail)),
          columns_(static_cast<int>(after.size() - head - tail)) {}

    bool Find(std::vector<TKind> &steps) {
        const int most = std::min(rows_ + columns_, kMostDifferences);
        std::vector<int> reach(2 * static_cast<std::size_t>(most) + 3, 0);
        const auto at = [&reach, most](int diagonal) -> int & { return reach[IndexOf(diagonal, most)]; };
        for (int differences = 0; differences <= most; ++differences) {
            trace_.push_back(reach);
            for (int diagonal = -differences; diagonal <= differences; diagonal += 2) {
                int row = ComesFromAbove(at(diagonal - 1), at(diagonal + 1), diagonal, differences)
                              ? at(diagonal + 1)
                              : at(diagonal - 1) + 1;
                while (row < rows_ && row - diagonal < columns_ && row - diagonal >= 0 && Equal(row, row - diagonal)) {
                    ++row;
                }
                at(diagonal) = row;
                if (row >= rows_ && row - diagonal >= columns_) {
                    GoBack(differences, most, steps);
                    return true;
                }
            }
        }
        return false;
    }

private:
    /// Diagonals count from one below the lowest that is reached.
    static std::size_t IndexOf(int diagonal, int most) {
        const int index = diagonal + most + 1;
        return static_cast<std::size_t>(index);
    }

    bool Equal(int row, int column) const { return before_[head_ + row] == after_[head_ + column]; }

    static bool ComesFromAbove(int left, int right, int diagonal, int differences) {
        return diagonal == -differences || (diagonal != differences && left < right);
    }

    void GoBack(int differences, int most, std::vector<TKind> &steps) const {
        int row = rows_;
        int column = columns_;
        for (; differences >= 0; --differences) {
            const std::vector<int> &reach = trace_[static_cast<std::size_t>(differences)];
            const auto at = [&reach, most](int diagonal) { return reach[IndexOf(diagonal, most)]; };
            const int diagonal = row - column;
            const bool above = ComesFromAbove(at(diagonal - 1), at(diagonal + 1), diagonal, differences);
            const int former = above ? diagonal + 1 : diagonal - 1;
            const int former_row = differences == 0 ? 0 : at(former);
            const int former_column = differences == 0 ? 0 : former_row - former;
            while (row > former_row && column > former_column) {
                steps.push_back(TKind::kEqual);
                --row;
                --column;
            }
            if (differences != 0) {
                steps.push_back(above ? TKind::kAdded : TKind::kRemoved);
            }
            row = former_row;
            column = former_column;
        }
        std::reverse(steps.begin(), steps.end());
    }

    const QStringList &before_;
    const QStringList &after_;
    qsizetype head_;
    int rows_;
    int columns_;
    std::vector<std::vector<int>> trace_;
};

}  // namespace

std::vector<TDiffLine> CompareLines(const QStringList &before, const QStringList &after) {
    const qsizetype least = std::min(before.size(), after.size());
    qsizetype head = 0;
    while (head < least && before[head] == after[head]) {
        ++head;
    }
    qsizetype tail = 0;
    while (tail < least - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) {
        ++tail;
    }
    std::vector<TKind> steps;
    if (!CShortestWay(before, after, head, tail).Find(steps)) {
        steps.assign(static_cast<std::size_t>(before.size() - head - tail), TKind::kRemoved);
        steps.insert(steps.end(), static_cast<std::size_t>(after.size() - head - tail), TKind::kAdded);
    }
    steps.insert(steps.begin(), static_cast<std::size_t>(head), TKind::kEqual);
    steps.insert(steps.end(), static_cast<std::size_t>(tail), TKind::kEqual);
    std::vector<TDiffLine> lines;
    lines.reserve(steps.size());
    int from = 0;
    int to = 0;
    for (const TKind kind : steps) {
        TDiffLine line{.kind = kind, .text = {}, .before = 0, .after = 0};
        line.text = kind == TKind::kAdded ? after[to] : before[from];
        if (kind != TKind::kAdded) {
            line.before = ++from;
        }
        if (kind != TKind::kRemoved) {
            line.after = ++to;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

}  // namespace kq_desktop

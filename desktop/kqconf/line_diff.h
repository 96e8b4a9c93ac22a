#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace kq_desktop {

/// A line of the comparison of two texts.
struct TDiffLine {
    enum class TKind { kEqual, kRemoved, kAdded };

    TKind kind = TKind::kEqual;
    QString text;
    int before = 0;  ///< its number in the text before, from 1; 0 for one that was added
    int after = 0;
};

/// Compares two texts line by line, with as few differences as there can be; of texts that have thousands of them, what
/// lies between the first and the last is one difference.
std::vector<TDiffLine> CompareLines(const QStringList &before, const QStringList &after);

}  // namespace kq_desktop

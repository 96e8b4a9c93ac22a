#pragma once

#include <QList>
#include <QPalette>
#include <QTextBlockUserData>
#include <QTextLayout>
#include <unordered_map>

class CTextView;

namespace kq_desktop {

/// What a line's colours are up to date with.
struct CColored : QTextBlockUserData {
    explicit CColored(int in_generation) : generation(in_generation) {}

    int generation;
};

/// Colours of a parameter file's line: section headers, keys, numbers, quoted texts, comments, and the words of the
/// view.
class CTextHighlighter {
public:
    /// Takes over the words and the colours of a view.
    void Read(const CTextView &view);
    QList<QTextLayout::FormatRange> Formats(const QString &text, const QPalette &palette) const;

private:
    std::unordered_map<QString, QColor> words_;  ///< an invalid colour for those without one of their own
    QColor number_;
};

}  // namespace kq_desktop

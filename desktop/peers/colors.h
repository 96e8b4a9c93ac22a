#pragma once

#include <QColor>

namespace kq_desktop {

/// One colour with a share of another one in it, from 0 to 1.
QColor Mix(const QColor &color, const QColor &other, double share);

/// What is to be dim on a page: a share of the text's colour, and more of it where the page is black, since there dim
/// lines and texts aren't seen.
QColor Dim(const QColor &page, const QColor &text, double share);

}  // namespace kq_desktop

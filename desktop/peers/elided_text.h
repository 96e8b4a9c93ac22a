#pragma once

#include <QLabel>
#include <QStatusBar>

namespace kq_desktop {

/// A line of text that ends with an ellipsis where its place is too narrow; the tooltip has all of it.
class CElidedLabel final : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A status line whose message ends with an ellipsis where the window is too narrow; tooltip and accessible name have
/// all of it.
class CElidedStatusBar final : public QStatusBar {
public:
    CElidedStatusBar();

protected:
    void paintEvent(QPaintEvent *event) override;
};

}  // namespace kq_desktop

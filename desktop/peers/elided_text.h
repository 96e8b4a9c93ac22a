#pragma once

#include <QIcon>
#include <QLabel>
#include <QStatusBar>
#include <utility>

namespace kq_desktop {

/// A line of text, with an icon before it if there is one, that ends with an ellipsis where its place is too narrow;
/// the tooltip has all of it.
class CElidedLabel final : public QLabel {
public:
    explicit CElidedLabel(const QString &text, QIcon icon = {}) : QLabel(text), icon_(std::move(icon)) {}

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QIcon icon_;
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

#include "desktop/peers/elided_text.h"

#include <QPainter>
#include <QSizeGrip>
#include <QStyle>
#include <QStyleOption>

namespace kq_desktop {

namespace {

void DrawLine(QWidget &widget, QPainter &painter, const QRect &area, const QString &text) {
    const QString shown = widget.fontMetrics().elidedText(text, Qt::ElideRight, area.width());
    widget.style()->drawItemText(&painter, area, Qt::AlignLeading | Qt::AlignVCenter, widget.palette(),
                                 widget.isEnabled(), shown, widget.foregroundRole());
}

}  // namespace

void CElidedLabel::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    DrawLine(*this, painter, contentsRect().marginsRemoved(QMargins(margin(), 0, margin(), 0)), text());
}

CElidedStatusBar::CElidedStatusBar() {
    connect(this, &QStatusBar::messageChanged, this, [this](const QString &message) {
        setToolTip(message);
        setAccessibleName(message);
    });
}

void CElidedStatusBar::paintEvent(QPaintEvent *event) {
    if (currentMessage().isEmpty()) {
        QStatusBar::paintEvent(event);
        return;
    }
    constexpr int kMargin = 6;
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_PanelStatusBar, &option, &painter, this);
    QRect area = rect().marginsRemoved(QMargins(kMargin, 0, kMargin, 0));
    if (const auto *grip = findChild<QSizeGrip *>(); grip != nullptr && grip->isVisible()) {
        area.setRight(grip->geometry().left() - 1);
    }
    DrawLine(*this, painter, area, currentMessage());
}

}  // namespace kq_desktop

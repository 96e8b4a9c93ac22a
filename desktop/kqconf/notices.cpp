#include "desktop/kqconf/notices.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/peers/icons.h"

namespace kq_desktop {

void CNotices::Hide(const QString &key) {
    if (QFrame *bar = bars_.take(key)) {
        bar->hide();
        bar->deleteLater();
    }
}

QList<QWidget *> CNotices::FirstButtons() const {
    QList<QWidget *> buttons;
    for (const QFrame *bar : bars_) {
        buttons.append(bar->findChild<QPushButton *>());
    }
    return buttons;
}

void CNotices::Show(const QString &key, const QString &text, const QList<TButton> &buttons) {
    Hide(key);
    auto *bar = new QFrame;
    bar->setObjectName(QStringLiteral("notice-") + key);
    bar->setAccessibleName(text);
    bar->setStyleSheet(QStringLiteral("QFrame#notice-%1 { background: rgba(224, 155, 0, 40); border: none; "
                                      "border-bottom: 1px solid rgba(224, 155, 0, 130); }")
                           .arg(key));
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(8, 4, 6, 4);
    auto *icon = new QLabel;
    icon->setPixmap(LoadIcon(QStringLiteral("warning")).pixmap(18, 18));
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    row->addWidget(icon);
    row->addWidget(label, 1);
    for (const TButton &button : buttons) {
        auto *shown = new QPushButton(button.text);
        // The action may take the bar away.
        QObject::connect(shown, &QPushButton::clicked, bar, [action = button.action] { action(); });
        row->addWidget(shown);
    }
    auto *dismiss = new QToolButton;
    dismiss->setIcon(LoadIcon(QStringLiteral("dismiss")));
    dismiss->setAutoRaise(true);
    dismiss->setToolTip(QStringLiteral("Skrýt"));
    dismiss->setAccessibleName(QStringLiteral("Skrýt upozornění"));
    QObject::connect(dismiss, &QToolButton::clicked, bar, [this, key] { Hide(key); });
    row->addWidget(dismiss);
    place_.addWidget(bar);
    bars_.insert(key, bar);
}

}  // namespace kq_desktop

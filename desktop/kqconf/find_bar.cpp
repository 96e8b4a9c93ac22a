#include "desktop/kqconf/find_bar.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

#include "desktop/peers/icons.h"

namespace kq_desktop {

namespace {

QToolButton *MakeButton(const char *icon, const QString &tip) {
    auto *button = new QToolButton;
    button->setIcon(LoadIcon(QLatin1String(icon)));
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    return button;
}

}  // namespace

CFindBar::CFindBar(TActions actions)
    : actions_(std::move(actions)),
      text_(new QLineEdit),
      replacement_(new QLineEdit),
      replace_row_(new QWidget),
      match_case_(new QCheckBox(QStringLiteral("Rozlišovat ve&likost"))),
      whole_word_(new QCheckBox(QStringLiteral("&Celá slova"))),
      answer_(new QLabel) {
    setFrameShape(NoFrame);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(8, 3, 6, 3);
    rows->setSpacing(3);
    auto *row = new QHBoxLayout;
    text_->setPlaceholderText(QStringLiteral("Najít"));
    text_->setAccessibleName(QStringLiteral("Hledaný text"));
    text_->setMaximumWidth(320);
    QToolButton *previous = MakeButton("previous", QStringLiteral("Předchozí (Shift+F3)"));
    QToolButton *next = MakeButton("next", QStringLiteral("Další (F3)"));
    QToolButton *close = MakeButton("dismiss", QStringLiteral("Zavřít (Esc)"));
    row->addWidget(text_, 1);
    row->addWidget(previous);
    row->addWidget(next);
    row->addWidget(match_case_);
    row->addWidget(whole_word_);
    row->addWidget(answer_, 1);
    row->addWidget(close);
    rows->addLayout(row);
    auto *second = new QHBoxLayout(replace_row_);
    second->setContentsMargins(0, 0, 0, 0);
    replacement_->setPlaceholderText(QStringLiteral("Nahradit textem"));
    replacement_->setAccessibleName(QStringLiteral("Nový text"));
    replacement_->setMaximumWidth(320);
    auto *replace = new QPushButton(QStringLiteral("Na&hradit"));
    auto *all = new QPushButton(QStringLiteral("Nahradit vš&e"));
    second->addWidget(replacement_, 1);
    second->addWidget(replace);
    second->addWidget(all);
    second->addStretch(1);
    rows->addWidget(replace_row_);
    setTabOrder(text_, replacement_);
    connect(previous, &QToolButton::clicked, this, [this] { Find(true); });
    connect(next, &QToolButton::clicked, this, [this] { Find(false); });
    connect(close, &QToolButton::clicked, this, [this] { Close(); });
    connect(replace, &QPushButton::clicked, this, [this] { Replace(); });
    connect(all, &QPushButton::clicked, this, [this] { ReplaceAll(); });
    hide();
}

CTextView::TFindOptions CFindBar::Options(bool backwards) const {
    return {.match_case = match_case_->isChecked(), .whole_word = whole_word_->isChecked(), .backwards = backwards};
}

void CFindBar::Open(bool on_text, bool replace) {
    match_case_->setVisible(on_text);
    whole_word_->setVisible(on_text);
    replace_row_->setVisible(on_text && replace);
    Say({}, false);
    show();
    text_->setFocus(Qt::ShortcutFocusReason);
    text_->selectAll();
}

void CFindBar::Find(bool backwards) {
    if (text_->text().isEmpty()) {
        return;
    }
    const bool found = actions_.find(text_->text(), Options(backwards));
    Say(found ? QString() : QStringLiteral("Nenalezeno"), !found);
}

void CFindBar::Replace() {
    actions_.replace(text_->text(), replacement_->text(), Options(false));
    Find(false);
}

void CFindBar::ReplaceAll() {
    const std::size_t count = actions_.replace_all(text_->text(), replacement_->text(), Options(false));
    Say(QStringLiteral("Nahrazeno: %1").arg(count), count == 0);
}

void CFindBar::Say(const QString &text, bool bad) {
    answer_->setText(text);
    answer_->setStyleSheet(bad ? QStringLiteral("color: #d64545") : QString());
}

void CFindBar::Close() {
    hide();
    actions_.closed();
}

void CFindBar::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape) {
        Close();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (replacement_->hasFocus()) {
            Replace();
        } else {
            Find((event->modifiers() & Qt::ShiftModifier) != 0);
        }
    } else {
        QFrame::keyPressEvent(event);
    }
}

}  // namespace kq_desktop

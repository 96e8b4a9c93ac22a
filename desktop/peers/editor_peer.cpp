#include "desktop/peers/editor_peer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTimer>

#include "desktop/peers/sheet_peer.h"

namespace kq_desktop {

CEditorPeer::~CEditorPeer() {
    if (Widget() == nullptr) {
        return;
    }
    // The sheet takes the keyboard again before Qt looks for somebody who does.
    const bool had_focus = Widget()->hasFocus() || Widget()->isAncestorOf(QApplication::focusWidget());
    QWidget *sheet = Widget()->parentWidget() != nullptr ? Widget()->parentWidget()->parentWidget() : nullptr;
    if (had_focus && sheet != nullptr) {
        Widget()->removeEventFilter(this);
        sheet->setFocus(Qt::OtherFocusReason);
    }
}

void CEditorPeer::SetEditor(QWidget *editor, QLineEdit *line) {
    line_ = line;
    editor->setAutoFillBackground(true);
    editor->installEventFilter(this);
    if (line != nullptr && line != editor) {
        line->installEventFilter(this);
    }
    if (line != nullptr) {
        // The view has taken the first line of what was pasted.
        QObject::connect(line, &QLineEdit::textChanged, line, [line](const QString &text) {
            const auto end = text.indexOf(QRegularExpression(QStringLiteral("[\r\n]")));
            if (end >= 0) {
                line->setText(text.left(end));
            }
        });
    }
    SetWidget(editor);
}

CSheetPeer *CEditorPeer::Sheet() const { return static_cast<CSheetPeer *>(Of(view_.Parent())); }

void CEditorPeer::Begin(const QString &typed) {
    if (line_ == nullptr) {
        return;
    }
    line_->selectAll();
    if (!typed.isEmpty()) {
        line_->insert(typed);
    }
}

void CEditorPeer::CommitSoon() {
    QTimer::singleShot(0, this, [this] {
        if (CSheetPeer *sheet = Sheet()) {
            sheet->CommitEditor(0);
        }
    });
}

void CEditorPeer::CancelSoon() {
    QTimer::singleShot(0, this, [this] {
        if (CSheetPeer *sheet = Sheet()) {
            sheet->CancelEditor();
        }
    });
}

bool CEditorPeer::HandleKey(int key, Qt::KeyboardModifiers modifiers) {
    CSheetPeer *sheet = Sheet();
    if (sheet == nullptr) {
        return false;
    }
    switch (key) {
        case Qt::Key_Escape:
            sheet->CancelEditor();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if ((modifiers & Qt::ControlModifier) != 0) {
                return false;
            }
            if (MayCommit()) {
                sheet->CommitEditor(0);
            }
            return true;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            if (MayCommit()) {
                sheet->CommitEditor(key == Qt::Key_Tab ? 1 : -1);
            }
            return true;
        default:
            return false;
    }
}

bool CEditorPeer::eventFilter(QObject * /*watched*/, QEvent *event) {
    if (event->type() == QEvent::KeyPress && !IsListOpen()) {
        const auto *key = static_cast<QKeyEvent *>(event);
        return HandleKey(key->key(), key->modifiers());
    }
    if (event->type() == QEvent::ShortcutOverride) {
        // These keys are the editor's, whatever commands have them elsewhere.
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Delete) {
            event->accept();
        }
        return false;
    }
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        const bool stays = reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason ||
                           reason == Qt::MenuBarFocusReason || IsListOpen();
        const QWidget *now = QApplication::focusWidget();
        if (!stays && Widget() != nullptr && now != Widget() && !Widget()->isAncestorOf(now)) {
            if (CSheetPeer *sheet = Sheet()) {
                sheet->IsAddingRow() ? CancelSoon() : CommitSoon();
            }
        }
    }
    return false;
}

}  // namespace kq_desktop

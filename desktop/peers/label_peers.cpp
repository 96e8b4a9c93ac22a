#include "desktop/peers/label_peers.h"

#include <QApplication>
#include <QPushButton>
#include <QToolTip>

#include "desktop/peers/elided_text.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

CStaticTextPeer::CStaticTextPeer(CStaticText &view, CPeerAdvice &advice) : CQtPeer(advice), view_(view) {
    auto *label = new CElidedLabel(ToQt(view.Text()));
    label->setTextFormat(Qt::PlainText);
    label->setMargin(4);
    if (view.Parent() == nullptr || view.Parent()->ModalOwner() == nullptr) {
        // A long text doesn't make the window wider.
        label->setToolTip(label->text());
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    }
    SetWidget(label);
}

void CStaticTextPeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kContent) {
        const QString text = ToQt(view_.Text());
        static_cast<CElidedLabel *>(Widget())->setText(text);
        Widget()->setToolTip(text);
    }
}

CButtonPeer::CButtonPeer(CButton &view, CPeerAdvice &advice) : CQtPeer(advice) {
    auto *button = new QPushButton(ToQt(view.Text()));
    button->setEnabled(view.IsEnabled());
    QObject::connect(button, &QPushButton::clicked, button, [&view] { view.UserPress(); });
    SetWidget(button);
}

CBubblePeer::CBubblePeer(CBubble &view, CPeerAdvice &advice) : CQtPeer(advice) {
    // Where the editor lies is known to Qt: the cell that is edited has the keyboard.
    if (const QWidget *editor = QApplication::focusWidget()) {
        QToolTip::showText(editor->mapToGlobal(QPoint(0, editor->height())), ToQt(view.Text()).toHtmlEscaped());
    }
}

CBubblePeer::~CBubblePeer() { QToolTip::hideText(); }

}  // namespace kq_desktop

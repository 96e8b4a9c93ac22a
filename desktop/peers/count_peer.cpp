#include "desktop/peers/count_peer.h"

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QToolTip>

#include "desktop/peers/text.h"

namespace kq_desktop {

/// Steps are the view's; numbers of 32 bits without a sign don't fit Qt's own box.
class CCountPeer::CSpin final : public QAbstractSpinBox {
public:
    explicit CSpin(CIntegerCountBox &view) : view_(view) {}

    QLineEdit &Line() const { return *lineEdit(); }
    void stepBy(int steps) override {
        for (; steps > 0 && view_.UserStepUp(); --steps) {
        }
        for (; steps < 0 && view_.UserStepDown(); ++steps) {
        }
        selectAll();
    }
    QValidator::State validate(QString & /*input*/, int & /*position*/) const override {
        return QValidator::Acceptable;
    }

protected:
    StepEnabled stepEnabled() const override {
        return (view_.Value() < view_.To() ? StepUpEnabled : StepNone) |
               (view_.Value() > view_.From() ? StepDownEnabled : StepNone);
    }

private:
    CIntegerCountBox &view_;
};

CCountPeer::CCountPeer(CIntegerCountBox &view, CPeerAdvice &advice)
    : CEditorPeer(view, advice), view_(view), before_(view.Value()) {
    auto *spin = new CSpin(view);
    SetEditor(spin, &spin->Line());
    ShowValue();
    QObject::connect(&spin->Line(), &QLineEdit::textChanged, spin, [this](const QString &text) { Typed(text); });
}

CCountPeer::CSpin *CCountPeer::Spin() const { return static_cast<CSpin *>(Widget()); }

void CCountPeer::ShowValue() {
    const CSyncing syncing(typing_);
    Spin()->Line().setText(QString::number(view_.Value()));
}

void CCountPeer::Typed(const QString &text) {
    if (typing_) {
        return;
    }
    const CSyncing syncing(typing_);
    good_ = view_.UserType(FromQt(text));
    if (!good_ && view_.Value() != before_) {
        view_.SetValue(before_);
    }
    QPalette palette;
    if (!good_) {
        palette.setColor(QPalette::Text, QColor(0xC6, 0x28, 0x28));
    }
    Spin()->Line().setPalette(palette);
}

bool CCountPeer::MayCommit() {
    if (!good_) {
        QToolTip::showText(Spin()->mapToGlobal(QPoint(0, Spin()->height())),
                           QStringLiteral("Zadejte číslo od %1 do %2.").arg(view_.From()).arg(view_.To()), Spin());
    }
    return good_;
}

void CCountPeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kContent && !typing_) {
        good_ = true;
        ShowValue();
    }
}

}  // namespace kq_desktop

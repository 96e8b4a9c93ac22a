#include "desktop/peers/message_boxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "desktop/peers/text.h"

namespace kq_desktop {

namespace {

QMessageBox::Icon IconOf(TBoxIcon icon) {
    switch (icon) {
        case TBoxIcon::kStop:
            return QMessageBox::Critical;
        case TBoxIcon::kQuestionMark:
            return QMessageBox::Question;
        case TBoxIcon::kInfo:
            break;
    }
    return QMessageBox::Information;
}

/// The first line that isn't empty is the text, what follows explains it.
void SetLines(QMessageBox &shown, const TMessageBox &box) {
    QStringList lines;
    for (const std::string &line : box.lines) {
        if (!line.empty()) {
            lines.append(ToQt(line));
        }
    }
    shown.setTextFormat(Qt::PlainText);
    shown.setText(lines.isEmpty() ? ToQt(box.title) : lines.takeFirst());
    shown.setInformativeText(lines.join(QLatin1Char('\n')));
}

TBoxAnswer Answer(const TMessageBox &box) {
    QMessageBox shown(QApplication::activeWindow());
    shown.setWindowTitle(ToQt(box.title));
    shown.setIcon(IconOf(box.icon));
    SetLines(shown, box);
    if (box.buttons == TBoxButtons::kOk) {
        shown.addButton(QStringLiteral("&OK"), QMessageBox::AcceptRole);
        shown.exec();
        return TBoxAnswer::kOk;
    }
    QPushButton *yes = shown.addButton(QStringLiteral("&Ano"), QMessageBox::YesRole);
    QPushButton *no = shown.addButton(QStringLiteral("&Ne"), QMessageBox::NoRole);
    QPushButton *cancel = nullptr;
    if (box.buttons == TBoxButtons::kYesNoCancel) {
        cancel = shown.addButton(QStringLiteral("&Zrušit"), QMessageBox::RejectRole);
    }
    shown.setDefaultButton(yes);
    shown.setEscapeButton(cancel != nullptr ? cancel : no);
    shown.exec();
    if (shown.clickedButton() == yes) {
        return TBoxAnswer::kYes;
    }
    return cancel == nullptr || shown.clickedButton() == no ? TBoxAnswer::kNo : TBoxAnswer::kCancel;
}

}  // namespace

CMessageBoxes::CMessageBoxes() : former_(SetMessageBoxHandler(Answer)) {}

CMessageBoxes::~CMessageBoxes() { SetMessageBoxHandler(std::move(former_)); }

}  // namespace kq_desktop

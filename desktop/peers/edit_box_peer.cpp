#include "desktop/peers/edit_box_peer.h"

#include <QLineEdit>

#include "desktop/peers/text.h"

namespace kq_desktop {

CEditBoxPeer::CEditBoxPeer(CEditBox &view, CPeerAdvice &advice) : CEditorPeer(view, advice) {
    auto *line = new QLineEdit(ToQt(view.Text()));
    line->setMaxLength(static_cast<int>(kq_base::TText::kBound));
    QObject::connect(line, &QLineEdit::textChanged, line,
                     [&view](const QString &text) { view.UserType(FromQt(text)); });
    SetEditor(line, line);
}

}  // namespace kq_desktop

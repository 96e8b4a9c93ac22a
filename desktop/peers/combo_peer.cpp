#include "desktop/peers/combo_peer.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <functional>
#include <utility>

#include "desktop/peers/sheet_peer.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

class CComboPeer::CCombo final : public QComboBox {
public:
    explicit CCombo(std::function<void(bool)> list_shown) : list_shown_(std::move(list_shown)) {}

    void showPopup() override {
        QComboBox::showPopup();
        list_shown_(true);
    }
    void hidePopup() override {
        const bool was_open = view()->isVisible();
        QComboBox::hidePopup();
        if (was_open) {
            list_shown_(false);
        }
    }
    /// The peer ends now.
    void Detach() {
        list_shown_ = [](bool) {};
    }
    /// A person typed a letter that begins an entry.
    void FindTyped(const QString &typed) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, typed);
        keyPressEvent(&press);
    }

private:
    std::function<void(bool)> list_shown_;
};

CComboPeer::CComboPeer(CComboBox &view, CPeerAdvice &advice) : CEditorPeer(view, advice), view_(view) {
    auto *combo = new CCombo([this](bool shown) {
        if (shown) {
            from_list_ = true;
        } else if (Sheet() != nullptr && Sheet()->IsAddingRow()) {
            // A choice comes before this; without one nothing is added.
            CancelSoon();
        }
    });
    const bool free = view.Mode() == CComboBox::TMode::kFreeText;
    combo->setEditable(free);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setMaxVisibleItems(16);
    for (std::size_t entry = 1; entry <= view.EntryCount(); ++entry) {
        combo->addItem(ToQt(view.Entry(entry)));
    }
    combo->setCurrentIndex(static_cast<int>(view.Selected()) - 1);
    if (free) {
        combo->setCompleter(nullptr);
        combo->lineEdit()->setMaxLength(static_cast<int>(kq_base::TText::kBound));
        combo->lineEdit()->setText(ToQt(view.Text()));
        QObject::connect(combo->lineEdit(), &QLineEdit::textEdited, combo,
                         [&view](const QString &text) { view.UserType(FromQt(text)); });
    }
    QObject::connect(combo, &QComboBox::activated, combo, [this](int index) { Chosen(index); });
    SetEditor(combo, combo->lineEdit());
}

CComboPeer::~CComboPeer() {
    if (Combo() != nullptr) {
        // Its list may be open still, and is closed when the widget goes.
        Combo()->Detach();
    }
}

CComboPeer::CCombo *CComboPeer::Combo() const { return static_cast<CCombo *>(Widget()); }

void CComboPeer::Begin(const QString &typed) {
    if (Combo()->lineEdit() == nullptr) {
        if (!typed.isEmpty()) {
            Combo()->FindTyped(typed);
        }
        return;
    }
    CEditorPeer::Begin({});
    if (!typed.isEmpty()) {
        Combo()->lineEdit()->insert(typed);
        view_.UserType(FromQt(Combo()->lineEdit()->text()));
    }
}

void CComboPeer::OpenList() { Combo()->showPopup(); }

bool CComboPeer::IsListOpen() const { return Combo() != nullptr && Combo()->view()->isVisible(); }

void CComboPeer::Chosen(int index) {
    view_.UserSelect(static_cast<std::size_t>(index) + 1);
    if (std::exchange(from_list_, false) && Combo()->lineEdit() == nullptr) {
        if (CSheetPeer *sheet = Sheet()) {
            sheet->CommitEditor(0);
        }
    }
}

}  // namespace kq_desktop

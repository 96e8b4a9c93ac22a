#pragma once

#include <QFrame>
#include <functional>

#include "platform/view/text_view.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace kq_desktop {

/// The bar to find and replace. It knows what is to be found, others know where.
class CFindBar final : public QFrame {
public:
    struct TActions {
        std::function<bool(const QString &text, const CTextView::TFindOptions &options)> find;
        /// Replaces the found text, if it is selected.
        std::function<void(const QString &text, const QString &replacement, const CTextView::TFindOptions &options)>
            replace;
        std::function<std::size_t(const QString &text, const QString &replacement,
                                  const CTextView::TFindOptions &options)>
            replace_all;
        std::function<void()> closed;
    };

    explicit CFindBar(TActions actions);

    /// Comes up; the sheet has no cases, no words and nothing to replace.
    void Open(bool on_text, bool replace);
    void Find(bool backwards);
    void Close();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    CTextView::TFindOptions Options(bool backwards) const;
    void Replace();
    void ReplaceAll();
    void Say(const QString &text, bool bad);

    TActions actions_;
    QLineEdit *text_;
    QLineEdit *replacement_;
    QWidget *replace_row_;
    QCheckBox *match_case_;
    QCheckBox *whole_word_;
    QLabel *answer_;
};

}  // namespace kq_desktop

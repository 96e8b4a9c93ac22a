#pragma once

#include <QObject>

#include "desktop/peers/qt_peer.h"

class QLineEdit;

namespace kq_desktop {

class CSheetPeer;

/// What the editors of a sheet's cells have in common: Enter, Tab and leaving commit, Esc cancels. What a person enters
/// goes to the view at once, so whoever commits takes it.
class CEditorPeer : public CQtPeer, public QObject {
public:
    ~CEditorPeer() override;
    CEditorPeer(const CEditorPeer &) = delete;
    CEditorPeer &operator=(const CEditorPeer &) = delete;

    /// The editor came up; a text that was typed replaces the cell's, otherwise all of it is selected.
    virtual void Begin(const QString &typed);
    /// Opens the list of choices, where there is one.
    virtual void OpenList() {}

protected:
    explicit CEditorPeer(CView &view, CPeerAdvice &advice) : CQtPeer(advice), view_(view) {}

    /// The editor's widget, and the line in it where text is typed; null without one.
    void SetEditor(QWidget *editor, QLineEdit *line);
    /// False keeps the editor open for a person who wants to leave it by a key.
    virtual bool MayCommit() { return true; }
    /// The sheet that the editor lies in.
    CSheetPeer *Sheet() const;
    /// Ends the editor once the present event has been handled.
    void CommitSoon();
    void CancelSoon();
    /// A list of choices is open: the keyboard is there, and still here.
    virtual bool IsListOpen() const { return false; }

private:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool HandleKey(int key, Qt::KeyboardModifiers modifiers);

    CView &view_;
    QPointer<QLineEdit> line_;
};

}  // namespace kq_desktop

#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QWidget>
#include <functional>
#include <memory>

#include "desktop/kqconf/driver_session.h"
#include "desktop/kqconf/window_advice.h"
#include "desktop/peers/event_source.h"
#include "desktop/peers/message_boxes.h"
#include "desktop/peers/peer_factory.h"
#include "platform/view/settings.h"

class QMainWindow;
class QTreeView;
class QPlainTextEdit;

/// Makes Qt show everything on a screen of that size, which nobody sees; `scale` is 2 for a display of 200 %. Before
/// the application is made. The folder has to last as long as that.
void UseScreenOf(const QString &folder, int width, int height, int scale);

/// A person at the window: opens an example's copy, presses keys, clicks, and looks. After each thing all that follows
/// from it has happened.
class CPerson {
public:
    CPerson();
    ~CPerson();
    CPerson(const CPerson &) = delete;
    CPerson &operator=(const CPerson &) = delete;

    /// Copies a folder of files and opens one of them, with files of other names where these are given.
    bool Open(const QString &folder, const QString &file, const QString &pdt = {}, const QString &dmf = {});
    /// Opens one of the copied files anew.
    bool Reopen(const QString &file);
    void End();
    /// Runs the window's own loop until something is true, for at most some seconds.
    void RunUntil(const std::function<bool()> &done);
    /// Runs the window's own loop until the person ends it. Gives what is to be opened next.
    kq_desktop::TNamedFiles Run() { return session_->Run(); }
    /// Asks the window to close and lets it run; true if it ended. Otherwise the window is up still.
    bool CloseAndRun();

    CConfiguratorWindow &Window() { return session_->Window(); }
    kq_desktop::CSessionFrame &Frame() { return session_->Frame(); }
    QMainWindow &Main() const;
    QTreeView &Sheet() const;
    QTreeView &Channels() const;
    QPlainTextEdit &Text() const;
    QString Path(const QString &name) const { return copies_.filePath(name); }
    QString FileText(const QString &name) const;

    void Settle();
    /// Presses keys in the widget that has the keyboard.
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Type(const QString &text);
    /// Clicks a cell of the sheet: the text in its first column names the row.
    bool ClickCell(QTreeView &tree, const QString &row, int column);
    /// The answers of the next message boxes, by the text on their buttons; without one a box is closed.
    void Answer(const QStringList &buttons) { answers_ = buttons; }
    const QStringList &Boxes() const { return boxes_; }
    /// A picture of the window and of the lists and boxes over it.
    void Shoot(const QString &path);
    /// Takes a picture of a step of a test into the folder KQ_PICTURES, if there is one.
    void Look(const QString &name);
    QWidget *Focus() const;

private:
    bool Show(const QString &file, const QString &pdt, const QString &dmf);
    void AnswerBox();

    QTemporaryDir copies_;
    CMemorySettings settings_;
    CSettingsStore *former_settings_;
    kq_desktop::CWindowAdvice advice_;
    kq_desktop::CQtPeerFactory factory_{advice_};
    kq_desktop::CQtEventSource events_;
    kq_desktop::CMessageBoxes message_boxes_;
    std::unique_ptr<kq_desktop::CDriverSession> session_;
    int pictures_ = 0;
    QStringList answers_;
    QStringList boxes_;
    QTimer box_timer_;
};
